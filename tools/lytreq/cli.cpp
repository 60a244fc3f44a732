#include "cli.h"

#include <cerrno>
#include <charconv>
#include <cstring>
#include <functional>
#include <iterator>
#include <optional>

#include <CLI/CLI.hpp>

#include "arguments.h"
#include "commands.h"
#include "completion.h"
#include "demo.h"
#include "echo.h"
#include "input.h"
#include "keywords.h"
#include "lytFilterParser/LibraryVersion.h"
#include "output.h"

namespace lytreq {

namespace {

const char* const kRequestHelp = "The request; \"-\" or none: read requests from standard input";
const char* const kJsonHelp = "Write one JSON object per request";
const char* const kShellHelp = "bash or zsh";

// The part of every request-taking subcommand's footer before its examples.
const char* const kRequestNote =
    "A REQUEST that starts with \"-\" is the request, not an option of lytreq; words are\n"
    "joined into one request, but several quoted requests are refused (use --file).\n"
    "Batch input (standard input or --file): one request per line; blank lines and lines\n"
    "starting with \"#\" are skipped; a rejected line is reported as\n"
    "\"FILE:LINE:COLUMN: error: ...\" on standard error (<stdin> for standard input, COLUMN\n"
    "in bytes) and the other lines go on; -n puts the input line number before each line\n"
    "of a result.\n"
    "Warnings and notes of the library go to standard error after the result, as\n"
    "\"lytreq: warning: MESSAGE [CODE]\" (\"FILE:LINE:COLUMN: warning: ...\" in batch input) with\n"
    "the request and a marker under the place; --strict makes a warning exit with status 1,\n"
    "--no-warnings hides them and skips the work of finding them.\n"
    "Exit status: 0 all requests succeeded, 1 one was rejected, 2 usage error.\n"
    "\n";

// What the command line gave the subcommand that runs.
struct Given {
  Source source;
  std::string file;  // --file, taken only when it was given
  bool json = false;
  bool lineNumbers = false;
  bool strict = false;
  bool noWarnings = false;
  std::string peerText;  // --peer as given: a number, or "all" where taken
  int peer = 0;
  bool peerGiven = false;  // parse writes for a peer only when asked to
  bool allPeers = false;   // --peer all
  std::string map;
  std::string shell;  // completion's argument
};

// Where a subcommand reads and writes.
struct Streams {
  std::istream& in;
  std::ostream& out;
  std::ostream& err;
  bool inputIsTerminal;
};

// The --peer option of a subcommand: its help, range and default.
struct PeerOption {
  const char* help;
  int low;
  int high;
  int fallback;
  bool showDefault;  // false where no --peer means something else than the default peer
  bool all;          // takes "all": every peer, 1 to 3
};

// One subcommand: what its help says, which options it takes, and what runs it.
struct Subcommand {
  const char* name;
  const char* description;
  const char* footer;    // for a request-taking subcommand, the note on requests goes before "Examples:"
  bool takesRequests;    // REQUEST, --file, -n and --json "per request"; else only --json
  const char* jsonHelp;  // nullptr: no --json
  std::optional<PeerOption> peer;
  bool takesMap;         // resolve's --map
  bool severalLines;     // a request's text output may take several lines: requests are set apart
  bool legacy;           // its requests are legacy command lines
  const char* argument;  // the name of its one plain argument, or nullptr
  int (*run)(const Given& given, Streams& io);
};

// What the arrangement of the arguments and the completion know of `row`.
CommandShape shapeOf(const Subcommand& row) {
  return CommandShape{row.name,     row.takesRequests,       row.peer.has_value(), row.peer && row.peer->all,
                      row.takesMap, row.jsonHelp != nullptr, row.legacy,           row.argument};
}

// Runs `command` on every request of `given` and writes the reports.
int runRequests(const Given& given, Streams& io, bool severalLines,
                const std::function<Report(const std::string&)>& command) {
  if (io.inputIsTerminal && readsStandardInput(given.source)) {
    io.err << "lytreq: reading requests from standard input, one per line (end with Ctrl-D)\n";
  }
  bool rejected = false;
  ReportWriter writer(WriteOptions{given.json, given.lineNumbers, severalLines}, io.out, io.err);
  forEachRequest(given.source, io.in, [&](const Request& request) {
    Report report = command(request.text);
    report.line = request.line;
    report.file = request.file;
    if (given.noWarnings) report.dropDiagnostics();
    writer.write(report);
    if (report.rejected()) rejected = true;
    for (const Diagnostic& diagnostic : report.diagnostics()) {
      if (given.strict && diagnostic.severity == lytFilterParser::Severity::Warning) rejected = true;
    }
  });
  return rejected ? EXIT_REJECTED : EXIT_OK;
}

int runParse(const Given& given, Streams& io) {
  std::optional<int> peer;
  if (given.peerGiven) peer = given.peer;
  const bool diagnose = !given.noWarnings;
  return runRequests(given, io, false, [&](const std::string& text) { return parseCommand(text, peer, diagnose); });
}

int runCheck(const Given& given, Streams& io) {
  const bool diagnose = !given.noWarnings;
  if (given.allPeers) {
    return runRequests(given, io, false, [&](const std::string& text) { return checkAllCommand(text, diagnose); });
  }
  return runRequests(given, io, false,
                     [&](const std::string& text) { return checkCommand(text, given.peer, diagnose, given.json); });
}

int runConvert(const Given& given, Streams& io) {
  return runRequests(given, io, false, [&](const std::string& text) { return convertCommand(text, given.peer); });
}

int runExplain(const Given& given, Streams& io) {
  const bool diagnose = !given.noWarnings;
  return runRequests(given, io, true, [&](const std::string& text) { return explainCommand(text, diagnose); });
}

int runColumns(const Given& given, Streams& io) {
  const bool diagnose = !given.noWarnings;
  return runRequests(given, io, true,
                     [&](const std::string& text) { return columnsCommand(text, given.peer, diagnose); });
}

int runNames(const Given& given, Streams& io) {
  const bool diagnose = !given.noWarnings;
  return runRequests(given, io, true, [&](const std::string& text) { return namesCommand(text, diagnose); });
}

int runResolve(const Given& given, Streams& io) {
  const NameMap map = readNameMap(given.map);
  const bool diagnose = !given.noWarnings;
  return runRequests(given, io, false, [&](const std::string& text) { return resolveCommand(text, map, diagnose); });
}

int runKeywords(const Given& given, Streams& io) {
  if (given.json) {
    io.out << jsonLine(keywordsJson()) << '\n';
  } else {
    writeKeywords(io.out);
  }
  return EXIT_OK;
}

int runDemoCommand(const Given& given, Streams& io) {
  runDemo(given.json, io.out);
  return EXIT_OK;
}

std::vector<CommandShape> shapes();

int runCompletion(const Given& given, Streams& io) {
  writeCompletion(given.shell, shapes(), io.out);
  return EXIT_OK;
}

const Subcommand kSubcommands[] = {
    {"parse", "Read a request and write it as the library writes it",
     "Examples:\n"
     "  lytreq parse '-f src 10.0.0.1 -k svc -v wb acc=rate -s top'\n"
     "  lytreq parse --peer 2 '-f src 10.0.0.1 -k src -v conn acc=new'\n"
     "  lytreq parse 'vl link7 -t application'\n"
     "  lytreq parse --json --file requests.txt",
     true, kJsonHelp,
     PeerOption{"Check the request for peer N (1-3) and write it for that peer; 1 and 2: legacy syntax", 1, 3,
                TAV_VERSION_CURRENT, false, false},
     false, false, false, nullptr, runParse},
    {"check", "Check a network request for a peer, and find the oldest peer that accepts it",
     "Prints \"valid\" or \"invalid: MESSAGE\", then the oldest peer that accepts the request\n"
     "(\"minimal peer: N\"; \"none\" when no peer does); what the text for the peer loses is\n"
     "warned about. --peer all prints \"peer N: valid\" or \"peer N: invalid: MESSAGE\" for peers\n"
     "1 to 3 (rejected when none accepts it). Only network requests can be checked; in batch\n"
     "input, a request that cannot be checked gives \"error: MESSAGE\".\n"
     "\n"
     "Examples:\n"
     "  lytreq check '-k src -v wb'\n"
     "  lytreq check --peer 1 '-k src -v wb -v pkt'\n"
     "  lytreq check --peer all '-f interface eth0 -k src -v wb'\n"
     "  printf '%s\\n' '-k src -v wb' '-k url -v wb' | lytreq check --json",
     true, kJsonHelp, PeerOption{"Peer version (0-3), or all: peers 1 to 3", 0, 3, TAV_VERSION_CURRENT, true, true},
     false, false, false, nullptr, runCheck},
    {"explain", "Show a request as a tree with every default, its columns, and what each peer makes of it",
     "Prints the request as read, one item per line, each level two blanks further in: the\n"
     "filter with its operators, each key and value column with its accumulation mode, its\n"
     "options and its query-interface column, and the sort with its index and updates; then\n"
     "\"peer N: valid\" or \"peer N: invalid: MESSAGE\" for peers 1 to 3, with what the text for\n"
     "each peer that accepts the request loses. In batch input an empty line sets the\n"
     "requests apart.\n"
     "\n"
     "Examples:\n"
     "  lytreq explain '-f interface eth0 -k src -v wb'\n"
     "  lytreq explain --json 'vl link7'",
     true, kJsonHelp, std::nullopt, false, true, false, nullptr, runExplain},
    {"convert", "Convert a legacy command line to the current syntax",
     "Examples:\n"
     "  lytreq convert '-g topsrc -y b'\n"
     "  lytreq convert '-filter [ and [[src 1 [10.0.0.1 ]]]] -a a -y c -g topdst'",
     true, kJsonHelp, PeerOption{"Legacy peer version (1 or 2)", 1, 2, TAV_VERSION_LEGACY_2, true, false}, false, false,
     true, nullptr, runConvert},
    {"columns", "List the query-interface columns of a network request",
     "Prints, per column in request order: catalogue number, catalogue name, role (key or\n"
     "value) and value type. Peer 3 maps every column; peers 1 and 2 only the first key and\n"
     "the first value. In batch input an empty line sets the requests apart.\n"
     "\n"
     "Examples:\n"
     "  lytreq columns '-k src -k svc -v wb -v pkt'\n"
     "  lytreq columns --peer 2 '-k src -v conn acc=new'",
     true, kJsonHelp, PeerOption{"Peer version (1-3)", 1, 3, TAV_VERSION_CURRENT, true, false}, false, true, false,
     nullptr, runColumns},
    {"names", "List the module names a request refers to, one per line",
     "In batch input an empty line sets the requests apart.\n"
     "\n"
     "Examples:\n"
     "  lytreq names '-f src gw1 gw2 -k dst web1 web2 -v wb'\n"
     "  lytreq names --json --file requests.txt",
     true, kJsonHelp, std::nullopt, false, true, false, nullptr, runNames},
    {"resolve", "Set resolved module names from a map file and write the request",
     "The map file holds lines \"name resolved\"; blank lines and lines starting with \"#\" are\n"
     "skipped. A resolved name may not hold a blank or a bracket. A module name of the request\n"
     "that the map lacks rejects the request.\n"
     "\n"
     "Examples:\n"
     "  printf 'gw1 10.0.0.1\\ngw2 10.0.0.2\\n' > names.map\n"
     "  lytreq resolve --map names.map '-f src gw1 gw2 -k svc -v wb'",
     true, kJsonHelp, std::nullopt, true, false, false, nullptr, runResolve},
    {"keywords", "List the words of the request syntax and the column catalogues",
     "Examples:\n"
     "  lytreq keywords\n"
     "  lytreq keywords --json",
     false, "Write one JSON object", std::nullopt, false, false, false, nullptr, runKeywords},
    {"demo", "Run the subcommands on built-in sample requests",
     "Examples:\n"
     "  lytreq demo\n"
     "  lytreq demo --json",
     false, "Write the reports as JSON objects", std::nullopt, false, false, false, nullptr, runDemoCommand},
    {"completion", "Print the shell completion script for bash or zsh",
     "Examples:\n"
     "  source <(lytreq completion bash)\n"
     "  lytreq completion zsh > ~/.zsh/functions/_lytreq",
     false, nullptr, std::nullopt, false, false, false, "SHELL", runCompletion},
};

// The footer of a request-taking subcommand: its own text, the note on
// requests and batch input, then its examples.
std::string requestFooter(const char* text) {
  std::string result(text);
  result.insert(result.find("Examples:"), kRequestNote);
  return result;
}

// The --peer value `value`: a number in the row's range, or "all" where the
// subcommand takes it; the message for anything else.
std::string checkPeer(const PeerOption& peer, const std::string& value) {
  if (peer.all && value == kAllPeers) return std::string();
  int number = 0;
  const char* end = value.data() + value.size();
  const auto read = std::from_chars(value.data(), end, number);
  if (value.empty() || read.ec != std::errc() || read.ptr != end) {
    return value + " is not a number" + (peer.all ? std::string(" nor ") + kAllPeers : std::string());
  }
  return CLI::Range(peer.low, peer.high)(const_cast<std::string&>(value));
}

// Declares the option `option` of kToolOptions on `command`, bound to `given`.
void addOption(CLI::App* command, const Subcommand& row, const ToolOption& option, Given& given) {
  std::string names = option.name;
  if (option.shortName != nullptr) names = std::string(option.shortName) + "," + names;
  switch (option.id) {
    case OptionId::Json: command->add_flag(names, given.json, row.jsonHelp); return;
    case OptionId::LineNumber: command->add_flag(names, given.lineNumbers, option.help); return;
    case OptionId::Strict: command->add_flag(names, given.strict, option.help); return;
    case OptionId::NoWarnings: command->add_flag(names, given.noWarnings, option.help); return;
    case OptionId::File: command->add_option(names, given.file, option.help)->type_name("FILE"); return;
    case OptionId::Map: command->add_option(names, given.map, option.help)->required()->type_name("FILE"); return;
    case OptionId::Peer: {
      const PeerOption peer = *row.peer;
      given.peer = peer.fallback;
      given.peerText = std::to_string(peer.fallback);
      CLI::Option* added =
          command->add_option(names, given.peerText, peer.help)
              ->check(CLI::Validator([peer](std::string& value) { return checkPeer(peer, value); }, ""));
      added->type_name(peer.all ? "N|all" : "N");
      if (peer.showDefault) added->capture_default_str();
      return;
    }
    case OptionId::Help:
    case OptionId::Version: return;  // the app's own
  }
}

// Adds `row` to `app`, its options (those of kToolOptions it takes) writing into `given`.
CLI::App* addSubcommand(CLI::App& app, const Subcommand& row, Given& given) {
  CLI::App* command = app.add_subcommand(row.name, row.description);
  if (row.takesRequests) command->add_option("REQUEST", given.source.words, kRequestHelp);
  const CommandShape shape = shapeOf(row);
  for (const ToolOption& option : toolOptionTable()) {
    if (takes(shape, option.taker)) addOption(command, row, option, given);
  }
  if (row.argument != nullptr) command->add_option(row.argument, given.shell, kShellHelp)->required();
  command->footer(row.takesRequests ? requestFooter(row.footer) : std::string(row.footer));
  return command;
}

void describe(CLI::App& app) {
  app.require_subcommand(1);
  app.set_version_flag("--version", std::string("lytreq ") + LFP_LIBRARY_VERSION_STRING);
  app.get_formatter()->column_width(28);
  app.footer(
      "Global options (--json, --peer ...) may also stand before the subcommand.\n"
      "Exit status: 0 when every request succeeded, 1 when the library rejected one, 2 for a usage\n"
      "error or a failure to read or write.\n"
      "\n"
      "Examples:\n"
      "  lytreq demo\n"
      "  lytreq parse '-f src 10.0.0.1 -k svc -v wb acc=rate -s top'\n"
      "  lytreq check --peer 1 '-k src -v wb -v pkt'\n"
      "  lytreq explain '-f src 10.0.0.1 -k svc -v wb'\n"
      "  lytreq convert '-g topsrc -y b'\n"
      "  lytreq <subcommand> --help");
}

// Runs the subcommand; faults that concern the whole call end it.
int dispatch(const Subcommand& row, CLI::App* command, Given& given, Streams& io) {
  if (row.takesRequests && command->count("--file") > 0) given.source.file = given.file;
  given.peerGiven = row.peer && command->count("--peer") > 0;
  given.allPeers = row.peer && given.peerText == kAllPeers;
  if (row.peer && !given.allPeers) given.peer = std::stoi(given.peerText);
  try {
    return row.run(given, io);
  } catch (const UsageError& error) {
    io.err << "lytreq: " << shown(error.what()) << '\n';
    return EXIT_USAGE;
  } catch (const std::string& message) {
    // A library fault outside the calls that report them per request.
    io.err << "lytreq: " << shown(message) << '\n';
    return EXIT_REJECTED;
  } catch (const std::exception& error) {
    io.err << "lytreq: " << shown(error.what()) << '\n';
    return EXIT_REJECTED;
  }
}

// A call that lytreq cannot make: the message, hints, and where help is.
int usageError(std::ostream& err, const std::string& message, const std::string& command,
               const std::vector<std::string>& hints) {
  err << "lytreq: " << shown(message) << '\n';
  for (const std::string& hint : hints) err << shown(hint) << '\n';
  err << "Try 'lytreq " << (command.empty() ? "" : command + " ") << "--help' for more information.\n";
  return EXIT_USAGE;
}

// Like cat and jq: what could not be written is an error, not a success.
// The reason is the one the failed write left in errno (run() clears it first).
int checkWritten(int status, std::ostream& out, std::ostream& err) {
  out.flush();
  if (out) return status;
  err << "lytreq: cannot write standard output";
  if (errno != 0) err << ": " << std::strerror(errno);
  err << '\n';
  return EXIT_USAGE;
}

std::vector<CommandShape> shapes() {
  std::vector<CommandShape> result;
  for (const Subcommand& row : kSubcommands) result.push_back(shapeOf(row));
  return result;
}

}  // namespace

int run(std::vector<std::string> args, std::istream& in, std::ostream& out, std::ostream& err, bool inputIsTerminal) {
  CLI::App app{
      "Reads, checks, writes and converts monitoring-view requests with the lytFilterParser library.\n"
      "Subcommands that take a REQUEST also read requests from standard input, one per line,\n"
      "when REQUEST is \"-\" or missing, or from --file.",
      "lytreq"};
  describe(app);
  errno = 0;
  const std::size_t count = std::size(kSubcommands);
  std::vector<Given> given(count);  // sized once: the options keep pointers into it
  std::vector<CLI::App*> commands;
  for (std::size_t i = 0; i < count; ++i) commands.push_back(addSubcommand(app, kSubcommands[i], given[i]));

  try {
    args = arrangeArguments(args, shapes());
  } catch (const ArgumentError& error) {
    return usageError(err, error.message, error.command, error.hints);
  }
  std::vector<std::string> reversed(args.rbegin(), args.rend() - 1);
  try {
    app.parse(reversed);
  } catch (const CLI::ParseError& error) {
    if (error.get_exit_code() == 0) return checkWritten(app.exit(error, out, err), out, err);  // --help, --version
    return usageError(err, error.what(), args.size() > 1 ? args[1] : std::string(), {});
  }

  Streams io{in, out, err, inputIsTerminal};
  for (std::size_t i = 0; i < count; ++i) {
    if (commands[i]->parsed()) return checkWritten(dispatch(kSubcommands[i], commands[i], given[i], io), out, err);
  }
  return EXIT_USAGE;
}

}  // namespace lytreq
