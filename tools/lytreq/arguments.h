// The arguments of lytreq, sorted before the option parser sees them: the
// subcommand found (global options may stand before it), every option checked
// against what that subcommand takes, and the words of a request, many of
// which start with "-", moved behind a "--".
#ifndef LYTREQ_ARGUMENTS_H
#define LYTREQ_ARGUMENTS_H

#include <string>
#include <vector>

namespace lytreq {

// The value of --peer that asks for every peer.
constexpr const char* kAllPeers = "all";

// What the sorting needs to know of a subcommand.
struct CommandShape {
  const char* name;
  bool takesRequests;  // REQUEST words, --file, -n
  bool takesPeer;
  bool takesAllPeers;  // --peer all
  bool takesMap;
  bool takesJson;
  bool legacyRequests;   // its requests are legacy command lines
  const char* argument;  // the name of its one plain argument (completion's SHELL), or nullptr
};

// A call lytreq cannot make sense of. `command` is the subcommand it was
// meant for, empty when none was found; `hints` are further lines (a
// suggestion, the list of subcommands).
struct ArgumentError {
  std::string message;
  std::string command;
  std::vector<std::string> hints;
};

// `args` (args[0] the program) as [program, subcommand, options..., "--",
// words...]: the options of the subcommand, wherever they stood, then the
// request words in order. A call that names no subcommand is returned as it
// is when it asks for help or the version. Throws ArgumentError for an
// unknown subcommand or option, an option of another subcommand, an option
// without its value, a --peer that is not a number (nor "all" where the
// subcommand takes it), or words given to a subcommand that takes none.
std::vector<std::string> arrangeArguments(const std::vector<std::string>& args,
                                          const std::vector<CommandShape>& commands);

// What follows an option of lytreq.
enum class OptionValue { None, File, Number };

struct ToolOptionName {
  std::string name;  // "--file", "-n" ...
  OptionValue value;
};

// The options `command` takes, long and short names; every option for
// nullptr (they may stand before the subcommand).
std::vector<ToolOptionName> toolOptions(const CommandShape* command);

// The candidate nearest to `word` when it is a near miss: the same but for
// case, or at most a third of its letters wrong (one at least); leading
// dashes are not compared. Empty when none is that near.
std::string nearestWord(const std::string& word, const std::vector<std::string>& candidates);

}  // namespace lytreq

#endif
