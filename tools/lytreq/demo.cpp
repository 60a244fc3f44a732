#include "demo.h"

#include <functional>
#include <sstream>
#include <string>
#include <vector>

#include "commands.h"
#include "keywords.h"
#include "output.h"

namespace lytreq {

namespace {

struct Step {
  std::string options;  // what stands between the subcommand and the request
  std::string request;
  std::function<Report(const std::string&)> run;
};

struct Topic {
  const char* heading;
  const char* explanation;
  const char* command;
  std::vector<Step> steps;
};

const NameMap& demoMap() {
  static const NameMap kMap = {{"gw1", "10.0.0.1"}, {"gw2", "10.0.0.2"}, {"web1", "10.1.0.1"}, {"web2", "10.1.0.2"}};
  return kMap;
}

std::vector<Topic> topics() {
  auto parse = [](const std::string& text) { return parseCommand(text, std::nullopt); };
  auto parseFor = [](int peer) { return [peer](const std::string& text) { return parseCommand(text, peer); }; };
  auto check = [](int peer) { return [peer](const std::string& text) { return checkCommand(text, peer); }; };
  auto convert = [](const std::string& text) { return convertCommand(text, 2); };
  auto columns = [](const std::string& text) { return columnsCommand(text, 3); };
  auto names = [](const std::string& text) { return namesCommand(text); };
  auto resolve = [](const std::string& text) { return resolveCommand(text, demoMap()); };

  return {
      {"Read a request and write it back",
       "A network request selects traffic (-f), groups it by key columns (-k), measures it with\n"
       "value columns (-v) and sorts the rows (-s). The library writes every item followed by one\n"
       "blank, so doubled and trailing blanks are part of what it writes.",
       "parse",
       {{"", "-f src 10.0.0.1 -k svc -v wb acc=rate -s top", parse},
        {"", "-f or [ -f src 10.0.0.1 -f dst 10.0.0.2 ] -k svc -v pkt -v wb sort=bottom", parse},
        {"", "-f src 10.0.0.1 -f svc not http -k src -v wb", parse},
        {"", "vl link7 -t application", parse}}},
      {"Write a request for an older peer",
       "Peers 1 and 2 read the legacy option syntax; --peer N writes the request for them.",
       "parse",
       {{"--peer 2 ", "-f src 10.0.0.1 -k src -v conn acc=new", parseFor(2)}}},
      {"Check a request",
       "A peer serves only some requests. check says whether peer N (default 3) accepts the\n"
       "request, and which is the oldest peer that does.",
       "check",
       {{"", "-k src -v wb", check(3)},
        {"--peer 1 ", "-k src -v wb -v pkt", check(1)},
        {"", "-k url -v wb", check(3)}}},
      {"Convert a legacy command line",
       "A command line of the legacy syntax (peer 2 unless --peer 1) in the current syntax.",
       "convert",
       {{"", "-g topsrc -y b", convert}, {"", "-filter [ and [[src 1 [10.0.0.1 ]]]] -a a -y c -g topdst", convert}}},
      {"Query-interface columns",
       "Each key and value column is fetched through a column of the query interface's catalogue.",
       "columns",
       {{"", "-k src -k svc -v wb -v pkt", columns}}},
      {"Module names",
       "The names of source, destination, ip and tunnel filters and of key entities, in walk order.",
       "names",
       {{"", "-f src gw1 gw2 -k dst web1 web2 -v wb", names}}},
      {"Resolved names",
       "resolve sets the resolved name of every module name from a map file; here names.map holds\n"
       "  gw1 10.0.0.1\n"
       "  gw2 10.0.0.2\n"
       "  web1 10.1.0.1\n"
       "  web2 10.1.0.2",
       "resolve",
       {{"--map names.map ", "-f src gw1 gw2 -k dst web1 web2 -v wb", resolve}}},
      {"When the library rejects a request",
       "The message goes to standard error with a marker under the token where reading stopped\n"
       "(a single ^ past the end when the request ended too early); the exit status is 1.",
       "parse",
       {{"", "-f src 10.0.0.1 -x -k svc -v wb", parse},
        {"", "-f srcip 10.0.0.1 -k svc -v wb", parse},
        {"", "-f and [ -f src 10.0.0.1 -k svc -v wb", parse},
        {"", "-k svc -v wb acc=rates", parse},
        {"", "-k svc -v wb -s", parse}}},
  };
}

// The first lines of `lytreq keywords`, shown as what `| head` leaves.
void writeKeywordsStep(std::ostream& out) {
  const int kLines = 12;
  out << "\n== Everything a request may hold\n\n"
         "keywords lists every word with its meaning, then the column catalogues.\n\n"
         "$ lytreq keywords | head -n "
      << kLines << '\n';
  std::ostringstream all;
  writeKeywords(all);
  std::istringstream lines(all.str());
  std::string line;
  for (int i = 0; i < kLines && std::getline(lines, line); ++i) out << line << '\n';
}

}  // namespace

void runDemo(bool json, std::ostream& out) {
  if (json) {
    for (const Topic& topic : topics()) {
      for (const Step& step : topic.steps) out << jsonLine(reportJson(step.run(step.request))) << '\n';
    }
    return;
  }
  out << "lytreq demo: what the lytFilterParser library does with a few requests.\n"
         "Each step shows a command and what it prints; `lytreq <subcommand> --help` tells more.\n";
  for (const Topic& topic : topics()) {
    out << "\n== " << topic.heading << "\n\n" << topic.explanation << "\n\n";
    for (const Step& step : topic.steps) {
      out << "$ lytreq " << topic.command << ' ' << step.options << '\'' << step.request << "'\n";
      const Report report = step.run(step.request);
      writeText(report, out);
      writeFault(report, out);
      writeDiagnostics(report, out);
    }
  }
  writeKeywordsStep(out);
}

}  // namespace lytreq
