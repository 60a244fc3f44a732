// Comparison driver: runs every input of a file through the library's public
// interface and writes what comes back, one output per line, so that two
// builds of the library can be compared byte for byte (scripts/compare.sh).
//
// Input: one input per line, "KIND<TAB>TEXT", where TEXT is escaped as
// written by generate.py (\\ \t \n \r \xNN) and KIND is
//   R  request text in the current syntax (also "vl ..." end-to-end lines),
//   L  legacy command line.
// Inputs are numbered from 1 by their line in the file.
//
// Output: for every input a fixed sequence of lines "N<TAB>LABEL<TAB>VALUE".
// Strings are written in double quotes with control characters, quotes and
// backslashes escaped, so one output is always one line; a thrown message is
// written as <thrown> "MESSAGE". The whole output of one input is written
// and flushed at once, so after a crash the file ends with the last
// complete input and the caller can go on with --from.
//
// Only the public interface that the library has always had is used here:
// the entry points, the requests' virtual operations, validation, column
// mapping, copies, and the equality of entity and interface lists; no
// internal headers, nothing from the detail namespace, no accessors that
// might come and go. The same source is compiled against both builds.
//
// The diagnostics (lint, fidelity, validate, readRefusal,
// convertWithDiagnostics) are written on lines of their own whose label
// starts with "diag.": each finding as code, severity, start and length
// (their messages are for people and may change). compare.sh holds the
// library's outputs to 0 differences and counts the diagnostic ones by code.
//
// Usage: lfp-compare-driver INPUT [--from N]   (output on stdout, counts on stderr)

#include <lytFilterParser/lytFilterParser.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <fstream>
#include <iostream>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace {

const char* const kUntouched = "<untouched>";

// ---------------------------------------------------------------------------
// Text helpers
// ---------------------------------------------------------------------------

int hexValue(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

// Undoes the escaping of generate.py. False for a malformed escape.
bool unescape(const std::string& in, std::size_t from, std::string& out) {
  out.clear();
  out.reserve(in.size() - from);
  for (std::size_t i = from; i < in.size(); ++i) {
    char c = in[i];
    if (c != '\\') {
      out += c;
      continue;
    }
    if (++i >= in.size()) return false;
    switch (in[i]) {
      case '\\': out += '\\'; break;
      case 't': out += '\t'; break;
      case 'n': out += '\n'; break;
      case 'r': out += '\r'; break;
      case 'x': {
        if (i + 2 >= in.size()) return false;
        int hi = hexValue(in[i + 1]);
        int lo = hexValue(in[i + 2]);
        if (hi < 0 || lo < 0) return false;
        out += static_cast<char>(hi * 16 + lo);
        i += 2;
        break;
      }
      default: return false;
    }
  }
  return true;
}

// Appends `text` in double quotes; control characters, DEL, '"' and '\'
// are escaped, other bytes (UTF-8 or not) are written as they are.
void appendQuoted(std::string& out, const std::string& text) {
  static const char hex[] = "0123456789abcdef";
  out += '"';
  for (unsigned char c : text) {
    switch (c) {
      case '\\': out += "\\\\"; break;
      case '"': out += "\\\""; break;
      case '\t': out += "\\t"; break;
      case '\n': out += "\\n"; break;
      case '\r': out += "\\r"; break;
      default:
        if (c < 0x20 || c == 0x7f) {
          out += "\\x";
          out += hex[c >> 4];
          out += hex[c & 15];
        } else {
          out += static_cast<char>(c);
        }
    }
  }
  out += '"';
}

std::string quoted(const std::string& text) {
  std::string out;
  appendQuoted(out, text);
  return out;
}

std::string quotedList(const strList& list) {
  std::string out = "[" + std::to_string(list.size()) + "]";
  for (const std::string& s : list) {
    out += ' ';
    appendQuoted(out, s);
  }
  return out;
}

template <class Vector>
std::string numbers(const Vector& v) {
  std::string out = "[" + std::to_string(v.size()) + "]";
  for (const auto& x : v) {
    out += ' ';
    out += std::to_string(x);
  }
  return out;
}

std::string quotedStrings(const std::vector<std::string>& v) {
  std::string out = "[" + std::to_string(v.size()) + "]";
  for (const std::string& s : v) {
    out += ' ';
    appendQuoted(out, s);
  }
  return out;
}

const char* boolText(bool b) { return b ? "true" : "false"; }

std::string versionLabel(const char* base, int v) { return std::string(base) + "(" + std::to_string(v) + ")"; }

// ---------------------------------------------------------------------------
// Output of one input
// ---------------------------------------------------------------------------

struct Counts {
  long inputs = 0;
  long lines = 0;
  long thrown = 0;
  long requestsRead = 0;
  long validForCurrent = 0;
  long legacyConverted = 0;
};

class Output {
 public:
  explicit Output(Counts& counts) : counts(counts) {}

  void start(long number) {
    prefix = std::to_string(number);
    prefix += '\t';
  }

  void line(const std::string& label, const std::string& value) {
    buffer += prefix;
    buffer += label;
    buffer += '\t';
    buffer += value;
    buffer += '\n';
    ++counts.lines;
  }

  // Runs `f`, which returns the text to write, and writes a message that
  // leaves it instead. Every call into the library goes through here.
  template <class F>
  void attempt(const std::string& label, F&& f) {
    try {
      std::string value = f();
      line(label, value);
    } catch (const std::string& message) {
      ++counts.thrown;
      line(label, "<thrown> " + quoted(message));
    } catch (const std::exception& e) {
      line(label, "<exception> " + quoted(e.what()));
    } catch (...) {
      line(label, "<unknown exception>");
    }
  }

  void flush() {
    std::fwrite(buffer.data(), 1, buffer.size(), stdout);
    std::fflush(stdout);
    buffer.clear();
  }

  Counts& counts;

 private:
  std::string prefix;
  std::string buffer;
};

// ---------------------------------------------------------------------------
// Requests
// ---------------------------------------------------------------------------

void writeTokens(Output& out, const std::string& text) {
  out.attempt("tokens", [&] {
    strList tokens;
    tokens.push_back("<kept>");  // the tokenizer appends to what the list holds
    LYTKovaRequest::fillFilterList(tokens, text);
    return quotedList(tokens);
  });
}

// Equality of entity lists and of interface lists (order and multiplicity
// are not looked at), and the order of interface items, over lists made of
// the input's first tokens: as read, reversed, sorted, and with the first
// token doubled in place of the last. Short lists keep the run fast also
// for a library whose equality is quadratic.
void compareLists(Output& out, const std::string& text) {
  const std::size_t kMaxItems = 48;
  strList tokens;
  LYTKovaRequest::fillFilterList(tokens, text);
  if (tokens.size() > kMaxItems) tokens.resize(kMaxItems);
  strList reversed(tokens.rbegin(), tokens.rend());
  strList sorted(tokens);
  sorted.sort();
  strList doubled(tokens);
  if (!doubled.empty()) {
    doubled.pop_back();
    doubled.push_front(tokens.front());
  }
  strList* const lists[] = {&tokens, &reversed, &sorted, &doubled};
  const int pairs[][2] = {{0, 0}, {0, 1}, {1, 0}, {0, 2}, {0, 3}, {3, 0}, {1, 3}};

  out.attempt("equal.entities", [&] {
    std::vector<TavEntityArray> arrays;
    for (strList* list : lists) arrays.emplace_back(*list);
    std::string bits;
    for (const auto& p : pairs) bits += arrays[p[0]] == arrays[p[1]] ? '1' : '0';
    // The same through content filters, which compare type, negation and entities.
    ContentFilter plain(static_cast<TavValType>(1), false, arrays[0]);
    ContentFilter turned(static_cast<TavValType>(1), false, arrays[1]);
    ContentFilter negated(static_cast<TavValType>(1), true, arrays[1]);
    ContentFilter otherType(static_cast<TavValType>(2), false, arrays[0]);
    bits += ' ';
    bits += plain == turned ? '1' : '0';
    bits += plain == negated ? '1' : '0';
    bits += plain == otherType ? '1' : '0';
    return bits;
  });

  out.attempt("equal.interfaces", [&] {
    std::vector<InterfaceInfoList> infoLists;
    std::vector<InterfaceInfo> items;  // the tokens as read, for their order
    for (strList* list : lists) {
      InterfaceInfoList infoList;
      for (strIter cur = list->begin(); cur != list->end(); ++cur) {
        InterfaceInfo item(*list, cur);
        if (list == &tokens) items.push_back(item);
        infoList.push_back(item);
      }
      infoLists.push_back(infoList);
    }
    std::string bits;
    for (const auto& p : pairs) bits += infoLists[p[0]] == infoLists[p[1]] ? '1' : '0';
    bits += ' ';
    for (std::size_t i = 0; i + 1 < items.size(); ++i) {
      bits += items[i] < items[i + 1] ? '<' : items[i + 1] < items[i] ? '>' : items[i] == items[i + 1] ? '=' : '~';
    }
    return bits;
  });
}

// ---------------------------------------------------------------------------
// Diagnostics
// ---------------------------------------------------------------------------

std::string findings(const std::vector<lytFilterParser::Diagnostic>& found) {
  std::string out = "[" + std::to_string(found.size()) + "]";
  for (const lytFilterParser::Diagnostic& d : found) {
    out += ' ' + d.code + ' ' + std::string(lytFilterParser::severityName(d.severity)) + ' ' + std::to_string(d.start) +
           '+' + std::to_string(d.length);
  }
  return out;
}

std::string refusalText(const std::optional<lytFilterParser::Refusal>& refusal, bool suggestions) {
  if (!refusal) return "<none>";
  std::string out =
      quoted(refusal->message) + " " + std::to_string(refusal->start) + "+" + std::to_string(refusal->length);
  if (suggestions) out += " " + quotedStrings(refusal->suggestions);
  return out;
}

void diagnoseRequest(Output& out, const std::string& text, LYTKovaRequest* request) {
  out.attempt("diag.lint", [&] { return findings(lytFilterParser::lint(text)); });
  for (int peer = 1; peer <= 3; ++peer) {
    out.attempt(versionLabel("diag.fidelity", peer),
                [&] { return findings(lytFilterParser::fidelity(text, static_cast<TavVersion>(peer))); });
  }
  out.attempt("diag.refusal", [&] { return refusalText(lytFilterParser::readRefusal(text), true); });
  auto* network = dynamic_cast<NetworkKovaRequest*>(request);
  if (network == nullptr) return;
  for (int peer = 1; peer <= 3; ++peer) {
    NetworkKovaRequest copy(*network);
    out.attempt(versionLabel("diag.validate", peer), [&] {
      return refusalText(lytFilterParser::validate(text, copy, static_cast<TavVersion>(peer)), false);
    });
  }
}

void diagnoseLegacy(Output& out, const std::string& text) {
  for (int peer = 1; peer <= 2; ++peer) {
    out.attempt(versionLabel("diag.convert", peer), [&] {
      const lytFilterParser::Conversion conversion =
          lytFilterParser::convertWithDiagnostics(text, static_cast<TavVersion>(peer));
      return quoted(conversion.request) + " " + refusalText(conversion.refusal, true) + " " +
             findings(conversion.diagnostics);
    });
  }
}

std::string withError(const std::string& value, const std::string& error) { return value + " error " + quoted(error); }

void inspectNetwork(Output& out, NetworkKovaRequest& request) {
  // Validation completes the request in place: every check on a fresh copy.
  for (int v = -1; v <= 4; ++v) {
    NetworkKovaRequest copy(request);
    std::string error = kUntouched;
    const std::string label = versionLabel("valid", v);
    out.attempt(label, [&] {
      bool ok = copy.isValid(static_cast<TavVersion>(v), error);
      if (ok && v == 3) ++out.counts.validForCurrent;
      return withError(boolText(ok), error);
    });
    out.attempt(label + ".dump", [&] { return quoted(copy.dump()); });
  }
  {
    NetworkKovaRequest copy(request);
    std::string error = kUntouched;
    out.attempt("valid", [&] { return withError(boolText(copy.isValid(error)), error); });
  }
  {
    NetworkKovaRequest copy(request);
    std::string error = kUntouched;
    out.attempt("minver", [&] { return withError(std::to_string(copy.getMinimalValidVersion(error)), error); });
    out.attempt("minver.dump", [&] { return quoted(copy.dump()) + " legacy " + quoted(copy.dump(TavVersion(1))); });
  }

  std::vector<std::string> columns;
  out.attempt("columns", [&] {
    columns = request.getKovaColumns();
    return quotedStrings(columns);
  });
  for (int v = 0; v <= 4; ++v) {
    out.attempt(versionLabel("columns", v),
                [&] { return numbers(request.getKovaColumns(static_cast<TavVersion>(v))); });
  }
  // The catalogue positions handed back, reversed, must find their columns
  // again; one position fewer must be refused.
  std::vector<int> positions;
  for (const std::string& c : columns) positions.push_back(std::atoi(c.c_str()) - 1);
  out.attempt("map", [&] {
    std::vector<int> given(positions.rbegin(), positions.rend());
    bool ok = request.mapKovaColumn(given);
    return std::string(boolText(ok)) + " " + numbers(given);
  });
  out.attempt("map.short", [&] {
    std::vector<int> given(positions);
    if (!given.empty()) given.pop_back();
    bool ok = request.mapKovaColumn(given);
    return std::string(boolText(ok)) + " " + numbers(given);
  });
  out.attempt("map.catalogue", [&] {
    std::vector<DravoColumnDefinition> definitions;
    definitions.push_back(DravoColumnDefinition{"time"});
    for (int p : positions) {
      const char* name = lytFilterParser::getKovaColumnName(p);
      definitions.push_back(DravoColumnDefinition{name ? name : "<none>"});
    }
    definitions.push_back(DravoColumnDefinition{"messageID"});
    return numbers(lytFilterParser::mapKovaColumn(definitions.data(), static_cast<unsigned>(definitions.size())));
  });
  out.attempt("dynamic", [&] { return std::string(boolText(request.isDynamic())); });

  // Module-name substitution: the names collected, each replaced by "R"+name;
  // then one wrong name in the middle, then a list one name short.
  strList names;
  bool haveNames = false;
  out.attempt("rename.names", [&] {
    names = request.getModuleNames();
    haveNames = true;
    return quotedList(names);
  });
  if (haveNames) {
    {
      NetworkKovaRequest copy(request);
      strList oldNames(names);
      strList newNames;
      for (const std::string& n : names) newNames.push_back("R" + n);
      out.attempt("rename", [&] { return std::string(boolText(copy.setModuleNames(oldNames, newNames))); });
      out.attempt("rename.dump", [&] { return quoted(copy.dump()) + " legacy " + quoted(copy.dump(TavVersion(2))); });
      out.attempt("rename.after", [&] { return quotedList(copy.getModuleNames()); });
    }
    if (!names.empty()) {
      NetworkKovaRequest copy(request);
      strList oldNames(names);
      auto middle = oldNames.begin();
      std::advance(middle, oldNames.size() / 2);
      *middle += "~";
      strList newNames;
      for (const std::string& n : names) newNames.push_back("W" + n);
      out.attempt("rename.wrong", [&] { return std::string(boolText(copy.setModuleNames(oldNames, newNames))); });
      out.attempt("rename.wrong.dump", [&] { return quoted(copy.dump()); });

      NetworkKovaRequest shortCopy(request);
      strList shortOld(names);
      shortOld.pop_back();
      strList shortNew(shortOld);
      out.attempt("rename.short", [&] { return std::string(boolText(shortCopy.setModuleNames(shortOld, shortNew))); });
    }
  }

  out.attempt("assign", [&] {
    strList none;
    NetworkKovaRequest target(none);
    target = request;
    return quoted(target.dump());
  });
}

void inspectVirtualLink(Output& out, E2EKovaRequest& request) {
  out.attempt("vl", [&] {
    return quoted(request.getVLName()) + " " + quoted(request.dumpVLName()) + " " +
           std::to_string(static_cast<int>(request.getDataType())) + " " + quoted(request.dumpDataType());
  });
  out.attempt("vl.rename", [&] {
    strList none, alsoNone, one{"x"}, other{"y"};
    E2EKovaRequest copy(request);
    bool empty = copy.setModuleNames(none, alsoNone);
    bool nonEmpty = copy.setModuleNames(one, other);
    return std::string(boolText(empty)) + " " + boolText(nonEmpty) + " " + quoted(copy.dump());
  });
}

// The object the factory handed back, through every operation.
void inspectRequest(Output& out, LYTKovaRequest& request) {
  out.attempt("dump", [&] { return quoted(request.dump()); });
  for (int v = -1; v <= 4; ++v) {
    out.attempt(versionLabel("dump", v), [&] { return quoted(request.dump(static_cast<TavVersion>(v))); });
  }
  out.attempt("names", [&] { return quotedList(request.getModuleNames()); });

  if (auto* network = dynamic_cast<NetworkKovaRequest*>(&request)) {
    // The legacy text written for peer 2 read back by the legacy converter.
    out.attempt("legacy.back", [&] {
      std::string error = kUntouched;
      std::string result = LYTKovaRequest::convert(request.dump(TavVersion(2)), TavVersion(2), error);
      return withError(quoted(result), error);
    });
    inspectNetwork(out, *network);
  } else if (auto* link = dynamic_cast<E2EKovaRequest*>(&request)) {
    inspectVirtualLink(out, *link);
  } else {
    out.line("kind", "<unknown request class>");
  }
}

void runRequest(Output& out, const std::string& text) {
  writeTokens(out, text);
  compareLists(out, text);

  std::string error = kUntouched;
  std::unique_ptr<LYTKovaRequest> request;
  out.attempt("read", [&] {
    request.reset(LYTKovaRequest::getLYTKovaRequest(text, error));
    if (!request) return std::string("<null>");
    ++out.counts.requestsRead;
    if (dynamic_cast<NetworkKovaRequest*>(request.get())) return std::string("network");
    if (dynamic_cast<E2EKovaRequest*>(request.get())) return std::string("vl");
    return std::string("<unknown request class>");
  });
  out.line("read.error", quoted(error));
  diagnoseRequest(out, text, request.get());
  if (request) inspectRequest(out, *request);

  // The same text through the constructors that take a token list.
  out.attempt("list", [&] {
    strList tokens;
    LYTKovaRequest::fillFilterList(tokens, text);
    if (!tokens.empty() && tokens.front() == "vl") {
      tokens.pop_front();
      E2EKovaRequest link(tokens);
      return "vl " + quoted(link.dump());
    }
    NetworkKovaRequest network(tokens);
    return "network " + quoted(network.dump());
  });
}

void runLegacy(Output& out, const std::string& text) {
  writeTokens(out, text);
  compareLists(out, text);

  for (int v = -1; v <= 4; ++v) {
    std::string error = kUntouched;
    const std::string label = versionLabel("convert", v);
    out.attempt(label, [&] { return quoted(LYTKovaRequest::convert(text, static_cast<TavVersion>(v), error)); });
    out.line(label + ".error", quoted(error));
  }
  {
    std::string error = kUntouched;
    out.attempt("convert", [&] {
      std::string result = LYTKovaRequest::convert(text, error);
      if (!result.empty()) ++out.counts.legacyConverted;
      return quoted(result);
    });
    out.line("convert.error", quoted(error));
  }

  std::unique_ptr<NetworkKovaRequest> forPeer2;
  for (int v = -1; v <= 4; ++v) {
    out.attempt(versionLabel("legacy", v), [&] {
      strList tokens;
      LYTKovaRequest::fillFilterList(tokens, text);
      std::unique_ptr<NetworkKovaRequest> request(new NetworkKovaRequest(tokens, static_cast<TavVersion>(v)));
      std::string text = quoted(request->dump());
      if (v == 2) forPeer2 = std::move(request);
      return text;
    });
  }
  diagnoseLegacy(out, text);
  // What the legacy reader built, through every operation of a request.
  if (forPeer2) inspectRequest(out, *forPeer2);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2 && !(argc == 4 && std::strcmp(argv[2], "--from") == 0)) {
    std::fprintf(stderr, "usage: %s INPUT [--from N]\n", argv[0]);
    return 2;
  }
  const long from = argc == 4 ? std::atol(argv[3]) : 1;

  std::ifstream input(argv[1], std::ios::binary);
  if (!input) {
    std::fprintf(stderr, "%s: cannot read %s\n", argv[0], argv[1]);
    return 2;
  }
  static char outBuffer[1 << 16];
  std::setvbuf(stdout, outBuffer, _IOFBF, sizeof outBuffer);

  Counts counts;
  Output out(counts);
  std::string line;
  std::string text;
  long number = 0;
  while (std::getline(input, line)) {
    ++number;
    if (number < from) continue;
    ++counts.inputs;
    out.start(number);
    if (line.size() < 2 || line[1] != '\t' || !unescape(line, 2, text)) {
      out.line("input", "<malformed input line>");
    } else if (line[0] == 'R') {
      runRequest(out, text);
    } else if (line[0] == 'L') {
      runLegacy(out, text);
    } else {
      out.line("input", "<unknown kind>");
    }
    out.flush();
  }
  std::fprintf(stderr,
               "driver: %ld inputs, %ld outputs, %ld thrown, %ld requests read, %ld valid for peer 3, "
               "%ld legacy lines converted\n",
               counts.inputs, counts.lines, counts.thrown, counts.requestsRead, counts.validForCurrent,
               counts.legacyConverted);
  return 0;
}
