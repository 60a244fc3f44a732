// The subcommands that work on one request at a time. Each takes the request
// text and gives a Report; output.h writes reports as text or JSON.
#ifndef LYTREQ_COMMANDS_H
#define LYTREQ_COMMANDS_H

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "json.h"
#include "lytFilterParser/request/NetworkKovaRequest.h"
#include "reading.h"

namespace lytreq {

// One query-interface column of a request.
struct Column {
  int number = 0;    // 1-based catalogue position
  std::string name;  // catalogue name
  std::string role;  // "key" or "value"; empty when the column stands for no column of the request
  std::string type;  // value-type keyword; empty as for role
};

// What one peer makes of a request: its verdict and, when it accepts the
// request, what the text written for it loses (fidelity).
struct PeerVerdict {
  int peer = 3;
  bool valid = false;
  std::string message;        // why the peer refuses the request
  std::optional<Span> where;  // the item that made it refuse, bytes of the request
  std::vector<Diagnostic> losses;
};

// What a subcommand found out about one request. Only the fields the
// subcommand fills are written.
struct Report {
  std::string_view input;  // the request text, which outlives the report
  int line = 0;            // line number in batch input; 0 for a request given as argument
  std::string_view file;   // batch input: the file as given to --file, "<stdin>" for standard input

  // A subcommand whose result is one line (parse, convert, resolve): in
  // batch input a refused request leaves an empty line in its place.
  bool oneLine = false;

  std::optional<std::string> request;  // the request as text (parse, convert, resolve)

  bool verdict = false;       // check: a verdict is written for every request
  std::optional<bool> valid;  // check
  int peer = 3;
  std::string message;        // why the check refused the request
  int minimalPeer = 4;        // 1..3, 4 when no peer accepts the request
  std::optional<Span> where;  // the item that made the check refuse

  std::optional<std::vector<PeerVerdict>> peers;  // check --peer all, explain: peers 1 to 3
  std::optional<Json> explanation;                // explain: the request as a tree (explain.h)

  std::optional<std::vector<Column>> columns;     // columns
  std::optional<std::vector<std::string>> names;  // names

  std::optional<Fault> fault;  // the request could not be read or processed

  // What the library noticed beyond accepting or refusing: lint of the
  // request, what a conversion skipped, what the text for --peer loses.
  // Places in bytes of `input`.
  std::vector<Diagnostic> warnings;

  // A request the library refused: unreadable, not valid for the peer, or
  // (check --peer all) valid for none.
  bool rejected() const;
  // The diagnostics shown as warnings and notes, in order: `warnings`, then
  // each peer's losses for check --peer all (explain shows them as its result).
  std::vector<Diagnostic> diagnostics() const;
  // Drops every diagnostic diagnostics() would give.
  void dropDiagnostics();
};

// The query-interface columns of `request` for `peer`, in the order
// getKovaColumns gives them. Throws the library's message when the columns
// cannot be mapped.
std::vector<Column> queryColumns(const NetworkKovaRequest& request, int peer);

// Resolved names by module name, read from a map file.
typedef std::map<std::string, std::string> NameMap;

// Each subcommand runs the library's diagnostics (lint, fidelity) only with
// `diagnose`: without, the report has no warnings and costs what the
// library's own reading and checking do.

// The request as the library writes it: dump(), or, with a peer, the
// request checked for it (which completes it) and dump(peer), with what
// that text loses; a peer that cannot serve the request refuses it.
Report parseCommand(const std::string& text, std::optional<int> peer, bool diagnose = true);
// Validation for `peer` and the oldest peer that accepts the request, with
// what the text for the peer loses.
// Without `placed` the refusal has no place (text output shows none).
Report checkCommand(const std::string& text, int peer, bool diagnose = true, bool placed = true);
// Validation for every peer, 1 to 3.
Report checkAllCommand(const std::string& text, bool diagnose = true);
// The request as a tree with every default, its columns and every peer's
// verdict with its losses (which are looked for in any case).
Report explainCommand(const std::string& text, bool diagnose = true);
// A legacy command line for `peer` (1 or 2) in the current syntax.
Report convertCommand(const std::string& text, int peer);
// The query-interface columns for `peer` (1 to 3).
Report columnsCommand(const std::string& text, int peer, bool diagnose = true);
// The module names, in walk order.
Report namesCommand(const std::string& text, bool diagnose = true);
// The request with the resolved names of `map` set.
Report resolveCommand(const std::string& text, const NameMap& map, bool diagnose = true);

}  // namespace lytreq

#endif
