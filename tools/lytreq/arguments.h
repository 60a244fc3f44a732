// The options of lytreq, each declared once (kToolOptions: the parser, the
// help, the completion and the suggestions read it), and the one pass the
// arguments go through before the option parser: the subcommand found
// (global options may stand before it) and the words of a request, many of
// which start with "-", moved behind a "--". The option parser (CLI11)
// reads the rest: values, their checks, help and version.
#ifndef LYTREQ_ARGUMENTS_H
#define LYTREQ_ARGUMENTS_H

#include <string>
#include <vector>

namespace lytreq {

// The value of --peer that asks for every peer.
constexpr const char* kAllPeers = "all";

// What the arrangement needs to know of a subcommand.
struct CommandShape {
  const char* name;
  bool takesRequests;  // REQUEST words, --file, -n, --strict, --no-warnings
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

// What follows an option of lytreq.
enum class OptionValue { None, File, Number };

// Which subcommands take an option: Help and Version are the tool's own,
// taken with any subcommand or none.
enum class Taker { Requests, Peer, Map, Json, Help, Version };

// Each option of lytreq, for the parser to bind.
enum class OptionId { Json, LineNumber, File, Strict, NoWarnings, Peer, Map, Help, Version };

// One option of lytreq.
struct ToolOption {
  OptionId id;
  const char* name;       // "--file"
  const char* shortName;  // "-n", or nullptr
  OptionValue value;
  Taker taker;
  const char* help;  // nullptr where each subcommand says its own (--json, --peer)
};

// Every option of lytreq, in the order the help lists them.
const std::vector<ToolOption>& toolOptionTable();

// True when `command` takes the options of `taker`.
bool takes(const CommandShape& command, Taker taker);

// `args` (args[0] the program) as [program, subcommand, options..., "--",
// words...]: the options of the subcommand, wherever they stood, in order
// and as given, then the request words in order (the one plain argument
// of a subcommand that takes one, without "--"). A call that names no
// subcommand is returned as it is when it asks for help or the version.
// Throws ArgumentError for an unknown subcommand or option (with the
// nearest one suggested), an option of another subcommand, --file given
// twice, and words given to a subcommand that takes none (or its argument
// missing or doubled).
std::vector<std::string> arrangeArguments(const std::vector<std::string>& args,
                                          const std::vector<CommandShape>& commands);

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
