// Where requests come from: one argument, or lines of a file or of standard
// input; and the map file of resolved names.
#ifndef LYTREQ_INPUT_H
#define LYTREQ_INPUT_H

#include <functional>
#include <istream>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "commands.h"

namespace lytreq {

// A fault in how the tool was called (exit status 2).
class UsageError : public std::runtime_error {
 public:
  explicit UsageError(const std::string& message) : std::runtime_error(message) {}
};

// One request and the line it was read from (0 for an argument).
struct Request {
  std::string text;
  int line = 0;
  std::string_view file;  // batch input: the file as given, "<stdin>" for standard input
};

// The name of standard input in messages about its lines.
constexpr const char* kStandardInputName = "<stdin>";

// Where a subcommand takes its requests from.
struct Source {
  std::vector<std::string> words;   // the REQUEST argument(s), joined by blanks
  std::optional<std::string> file;  // --file; "-" is standard input
};

// Calls `handle` for every request of `source`: the joined words, or, when
// --file is given or the words are missing or "-", every line of the file or
// of `in` that is neither blank nor a comment ("#" first); a byte order mark
// before the first line is skipped. Throws UsageError for a file that cannot
// be read (a directory, say; a closed standard input), for both a request
// and --file, and for words of which one holds a blank while there are
// others: several whole requests, which joining would merge into one.
void forEachRequest(const Source& source, std::istream& in, const std::function<void(const Request&)>& handle);

// Reads lines "name resolved"; blank lines and "#" comments are skipped.
// Throws UsageError for a file that cannot be read, a line that is not two
// words, a resolved name with a bracket, or a name given twice.
NameMap readNameMap(const std::string& path);

// True when forEachRequest reads standard input.
bool readsStandardInput(const Source& source);

// True for a line forEachRequest skips.
bool isSkippedLine(const std::string& line);

}  // namespace lytreq

#endif
