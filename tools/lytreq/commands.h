// The subcommands that work on one request at a time. Each takes the request
// text and gives a Report; output.h writes reports as text or JSON.
#ifndef LYTREQ_COMMANDS_H
#define LYTREQ_COMMANDS_H

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "reading.h"

namespace lytreq {

// One query-interface column of a request.
struct Column {
  int number = 0;    // 1-based catalogue position
  std::string name;  // catalogue name
  std::string role;  // "key" or "value"; empty when the column stands for no column of the request
  std::string type;  // value-type keyword; empty as for role
};

// What a subcommand found out about one request. Only the fields the
// subcommand fills are written.
struct Report {
  std::string input;
  int line = 0;  // line number in batch input; 0 for a request given as argument

  std::optional<std::string> request;  // the request as text (parse, convert, resolve)

  bool verdict = false;        // check: a verdict is written for every request
  std::optional<bool> valid;  // check
  int peer = 3;
  std::string message;        // why the check refused the request
  int minimalPeer = 4;        // 1..3, 4 when no peer accepts the request

  std::optional<std::vector<Column>> columns;   // columns
  std::optional<std::vector<std::string>> names;  // names

  std::optional<Fault> fault;  // the request could not be read or processed

  // A request the library refused: unreadable, or not valid for the peer.
  bool rejected() const { return fault.has_value() || (valid.has_value() && !*valid); }
};

// Resolved names by module name, read from a map file.
typedef std::map<std::string, std::string> NameMap;

// The request as the library writes it: dump(), or dump(peer) with a peer.
Report parseCommand(const std::string& text, std::optional<int> peer);
// Validation for `peer` and the oldest peer that accepts the request.
Report checkCommand(const std::string& text, int peer);
// A legacy command line for `peer` (1 or 2) in the current syntax.
Report convertCommand(const std::string& text, int peer);
// The query-interface columns for `peer` (1 to 3).
Report columnsCommand(const std::string& text, int peer);
// The module names, in walk order.
Report namesCommand(const std::string& text);
// The request with the resolved names of `map` set.
Report resolveCommand(const std::string& text, const NameMap& map);

}  // namespace lytreq

#endif
