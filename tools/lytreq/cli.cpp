#include "cli.h"

#include <functional>
#include <optional>

#include <CLI/CLI.hpp>

#include "commands.h"
#include "demo.h"
#include "input.h"
#include "keywords.h"
#include "lytFilterParser/LibraryVersion.h"
#include "output.h"

namespace lytreq {

namespace {

const char* const kValueOptions[] = {"--peer", "--file", "--map"};
const char* const kFlagOptions[] = {"--json", "--help", "-h", "--version"};

bool isValueOption(const std::string& arg) {
  for (const char* option : kValueOptions) {
    if (arg == option) return true;
  }
  return false;
}

bool isToolOption(const std::string& arg) {
  if (isValueOption(arg)) return true;
  for (const char* option : kFlagOptions) {
    if (arg == option) return true;
  }
  for (const char* option : kValueOptions) {
    if (arg.rfind(std::string(option) + "=", 0) == 0) return true;
  }
  return false;
}

// Runs `command` on every request of `source` and writes the reports.
int runRequests(const Source& source, bool json, std::istream& in, std::ostream& out, std::ostream& err,
                const std::function<Report(const std::string&)>& command) {
  bool rejected = false;
  forEachRequest(source, in, [&](const Request& request) {
    Report report = command(request.text);
    report.line = request.line;
    writeReport(report, json, out, err);
    if (report.rejected()) rejected = true;
  });
  return rejected ? EXIT_REJECTED : EXIT_OK;
}

const char* const kRequestHelp = "The request; \"-\" or none: read requests from standard input";
const char* const kFileHelp = "Read requests from FILE (\"-\": standard input), one per line";
const char* const kJsonHelp = "Write one JSON object per request";

// The part of every request-taking subcommand's footer before its examples.
const char* const kRequestNote =
    "A REQUEST that starts with \"-\" is the request, not an option of lytreq.\n"
    "Batch input (standard input or --file): one request per line; blank lines and lines\n"
    "starting with \"#\" are skipped; a rejected line is reported as \"line N: ...\" on\n"
    "standard error and the other lines go on.\n"
    "Exit status: 0 all requests succeeded, 1 one was rejected, 2 usage error.\n"
    "\n";

struct RequestOptions {
  Source source;
  std::string file;
  bool json = false;
};

void addRequestOptions(CLI::App* command, RequestOptions& options) {
  command->add_option("REQUEST", options.source.words, kRequestHelp);
  command->add_option("--file", options.file, kFileHelp)->type_name("FILE");
  command->add_flag("--json", options.json, kJsonHelp);
}

// The footer of a request-taking subcommand: its own text, the note on
// requests and batch input, then its examples.
std::string footer(const char* text) {
  std::string result(text);
  result.insert(result.find("Examples:"), kRequestNote);
  return result;
}

Source sourceOf(CLI::App* command, RequestOptions& options) {
  Source source = options.source;
  if (command->count("--file") > 0) source.file = options.file;
  return source;
}

}  // namespace

std::vector<std::string> separateRequestArguments(const std::vector<std::string>& args) {
  std::vector<std::string> kept;
  std::vector<std::string> moved;
  bool subcommandSeen = false;
  std::size_t i = 0;
  if (!args.empty()) kept.push_back(args[i++]);
  while (i < args.size()) {
    const std::string& arg = args[i];
    if (arg == "--") break;
    if (isValueOption(arg)) {
      kept.push_back(arg);
      if (i + 1 < args.size()) kept.push_back(args[i + 1]);
      i += 2;
      continue;
    }
    const bool option = isToolOption(arg) || arg.rfind("--", 0) == 0;
    if (!subcommandSeen || option) {
      // Before the subcommand everything stays; an unknown "--word" is left
      // for the option parser to refuse.
      if (!option && (arg.empty() || arg[0] != '-')) subcommandSeen = true;
      kept.push_back(arg);
    } else {
      // A word of the request, "-" included.
      moved.push_back(arg);
    }
    ++i;
  }
  const bool hadSeparator = i < args.size();
  if (!moved.empty() || hadSeparator) kept.emplace_back("--");
  kept.insert(kept.end(), moved.begin(), moved.end());
  if (hadSeparator) kept.insert(kept.end(), args.begin() + static_cast<std::ptrdiff_t>(i) + 1, args.end());
  return kept;
}

int run(std::vector<std::string> args, std::istream& in, std::ostream& out, std::ostream& err) {
  CLI::App app{
      "Reads, checks, writes and converts monitoring-view requests with the lytFilterParser library.\n"
      "Subcommands that take a REQUEST also read requests from standard input, one per line,\n"
      "when REQUEST is \"-\" or missing, or from --file.",
      "lytreq"};
  app.require_subcommand(1);
  app.set_version_flag("--version", std::string("lytreq ") + LFP_LIBRARY_VERSION_STRING);
  app.get_formatter()->column_width(28);
  app.footer(
      "Exit status: 0 when every request succeeded, 1 when the library rejected one, 2 for a usage error.\n"
      "\n"
      "Examples:\n"
      "  lytreq demo\n"
      "  lytreq parse '-f src 10.0.0.1 -k svc -v wb acc=rate -s top'\n"
      "  lytreq check --peer 1 '-k src -v wb -v pkt'\n"
      "  lytreq convert '-g topsrc -y b'\n"
      "  lytreq <subcommand> --help");

  // parse
  RequestOptions parseOptions;
  int parsePeer = TAV_VERSION_CURRENT;
  CLI::App* parse = app.add_subcommand("parse", "Read a request and write it as the library writes it");
  addRequestOptions(parse, parseOptions);
  parse->add_option("--peer", parsePeer, "Write for peer N (0-3); 1 and 2: legacy syntax")
      ->check(CLI::Range(0, 3))
      ->type_name("N");
  parse->footer(footer(
      "Examples:\n"
      "  lytreq parse '-f src 10.0.0.1 -k svc -v wb acc=rate -s top'\n"
      "  lytreq parse --peer 2 '-f src 10.0.0.1 -k src -v conn acc=new'\n"
      "  lytreq parse 'vl link7 -t application'\n"
      "  lytreq parse --json --file requests.txt"));

  // check
  RequestOptions checkOptions;
  int checkPeer = TAV_VERSION_CURRENT;
  CLI::App* check = app.add_subcommand(
      "check", "Check a network request for a peer, and find the oldest peer that accepts it");
  addRequestOptions(check, checkOptions);
  check->add_option("--peer", checkPeer, "Peer version (0-3)")->check(CLI::Range(0, 3))->type_name("N")->capture_default_str();
  check->footer(footer(
      "Prints \"valid\" or \"invalid: MESSAGE\", then the oldest peer that accepts the request\n"
      "(\"minimal peer: N\"; \"none\" when no peer does). Only network requests can be checked.\n"
      "\n"
      "Examples:\n"
      "  lytreq check '-k src -v wb'\n"
      "  lytreq check --peer 1 '-k src -v wb -v pkt'\n"
      "  printf '%s\\n' '-k src -v wb' '-k url -v wb' | lytreq check --json"));

  // convert
  RequestOptions convertOptions;
  int convertPeer = TAV_VERSION_LEGACY_2;
  CLI::App* convert = app.add_subcommand("convert", "Convert a legacy command line to the current syntax");
  addRequestOptions(convert, convertOptions);
  convert->add_option("--peer", convertPeer, "Legacy peer version (1 or 2)")
      ->check(CLI::Range(1, 2))
      ->type_name("N")
      ->capture_default_str();
  convert->footer(footer(
      "Examples:\n"
      "  lytreq convert '-g topsrc -y b'\n"
      "  lytreq convert '-filter [ and [[src 1 [10.0.0.1 ]]]] -a a -y c -g topdst'"));

  // columns
  RequestOptions columnsOptions;
  int columnsPeer = TAV_VERSION_CURRENT;
  CLI::App* columns = app.add_subcommand(
      "columns", "List the query-interface columns of a network request");
  addRequestOptions(columns, columnsOptions);
  columns->add_option("--peer", columnsPeer, "Peer version (1-3)")
      ->check(CLI::Range(1, 3))
      ->type_name("N")
      ->capture_default_str();
  columns->footer(footer(
      "Prints, per column in request order: catalogue number, catalogue name, role (key or\n"
      "value) and value type. Peer 3 maps every column; peers 1 and 2 only the first key and\n"
      "the first value.\n"
      "\n"
      "Examples:\n"
      "  lytreq columns '-k src -k svc -v wb -v pkt'\n"
      "  lytreq columns --peer 2 '-k src -v conn acc=new'"));

  // names
  RequestOptions namesOptions;
  CLI::App* names = app.add_subcommand("names", "List the module names a request refers to, one per line");
  addRequestOptions(names, namesOptions);
  names->footer(footer(
      "Examples:\n"
      "  lytreq names '-f src gw1 gw2 -k dst web1 web2 -v wb'\n"
      "  lytreq names --json --file requests.txt"));

  // resolve
  RequestOptions resolveOptions;
  std::string mapFile;
  CLI::App* resolve = app.add_subcommand("resolve", "Set resolved module names from a map file and write the request");
  addRequestOptions(resolve, resolveOptions);
  resolve
      ->add_option("--map", mapFile,
                   "Map file: lines \"name resolved\"")
      ->required()
      ->type_name("FILE");
  resolve->footer(footer(
      "The map file holds lines \"name resolved\"; blank lines and lines starting with \"#\" are\n"
      "skipped. A module name of the request that the map lacks rejects the request.\n"
      "\n"
      "Examples:\n"
      "  printf 'gw1 10.0.0.1\\ngw2 10.0.0.2\\n' > names.map\n"
      "  lytreq resolve --map names.map '-f src gw1 gw2 -k svc -v wb'"));

  // keywords
  bool keywordsJsonOutput = false;
  CLI::App* keywords = app.add_subcommand(
      "keywords", "List the words of the request syntax and the column catalogues");
  keywords->add_flag("--json", keywordsJsonOutput, "Write one JSON object");
  keywords->footer(
      "Examples:\n"
      "  lytreq keywords\n"
      "  lytreq keywords --json");

  // demo
  bool demoJson = false;
  CLI::App* demo = app.add_subcommand("demo", "Run the subcommands on built-in sample requests");
  demo->add_flag("--json", demoJson, "Write the reports as JSON objects");
  demo->footer(
      "Examples:\n"
      "  lytreq demo\n"
      "  lytreq demo --json");

  args = separateRequestArguments(args);
  std::vector<std::string> reversed(args.rbegin(), args.rend() - 1);
  try {
    app.parse(reversed);
  } catch (const CLI::ParseError& error) {
    const int status = app.exit(error, out, err);
    return status == 0 ? EXIT_OK : EXIT_USAGE;
  }

  try {
    if (parse->parsed()) {
      std::optional<int> peer;
      if (parse->count("--peer") > 0) peer = parsePeer;
      return runRequests(sourceOf(parse, parseOptions), parseOptions.json, in, out, err,
                         [&](const std::string& text) { return parseCommand(text, peer); });
    }
    if (check->parsed()) {
      return runRequests(sourceOf(check, checkOptions), checkOptions.json, in, out, err,
                         [&](const std::string& text) { return checkCommand(text, checkPeer); });
    }
    if (convert->parsed()) {
      return runRequests(sourceOf(convert, convertOptions), convertOptions.json, in, out, err,
                         [&](const std::string& text) { return convertCommand(text, convertPeer); });
    }
    if (columns->parsed()) {
      return runRequests(sourceOf(columns, columnsOptions), columnsOptions.json, in, out, err,
                         [&](const std::string& text) { return columnsCommand(text, columnsPeer); });
    }
    if (names->parsed()) {
      return runRequests(sourceOf(names, namesOptions), namesOptions.json, in, out, err,
                         [&](const std::string& text) { return namesCommand(text); });
    }
    if (resolve->parsed()) {
      const NameMap map = readNameMap(mapFile);
      return runRequests(sourceOf(resolve, resolveOptions), resolveOptions.json, in, out, err,
                         [&](const std::string& text) { return resolveCommand(text, map); });
    }
    if (keywords->parsed()) {
      if (keywordsJsonOutput) {
        out << jsonLine(keywordsJson()) << '\n';
      } else {
        writeKeywords(out);
      }
      return EXIT_OK;
    }
    if (demo->parsed()) {
      runDemo(demoJson, out);
      return EXIT_OK;
    }
  } catch (const UsageError& error) {
    err << "lytreq: " << error.what() << '\n';
    return EXIT_USAGE;
  } catch (const std::string& message) {
    // A library fault outside the calls that report them per request.
    err << "lytreq: " << message << '\n';
    return EXIT_REJECTED;
  } catch (const std::exception& error) {
    err << "lytreq: " << error.what() << '\n';
    return EXIT_REJECTED;
  }
  return EXIT_USAGE;
}

}  // namespace lytreq
