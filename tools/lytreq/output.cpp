#include "output.h"

#include <algorithm>
#include <iomanip>
#include <sstream>

#include "echo.h"
#include "explain.h"
#include "utf8.h"

namespace lytreq {

namespace {

// A place of the request as a place in the JSON "input".
Span placeIn(const Utf8Text& input, std::size_t start, std::size_t length) {
  const std::size_t begin = input.place(start);
  return Span{begin, input.place(start + length) - begin};
}

void placeJson(Json& object, const std::optional<Span>& where, const Utf8Text& input) {
  if (!where) return;
  const Span place = placeIn(input, where->start, where->length);
  object["errorStart"] = place.start;
  object["errorLength"] = place.length;
}

Json diagnosticsJson(const std::vector<Diagnostic>& diagnostics, const Utf8Text& input) {
  Json list = Json::array();
  for (const Diagnostic& diagnostic : diagnostics) {
    Json item;
    item["code"] = diagnostic.code;
    item["severity"] = std::string(lytFilterParser::severityName(diagnostic.severity));
    item["message"] = diagnostic.message;
    const Span place = placeIn(input, diagnostic.start, diagnostic.length);
    item["start"] = place.start;
    item["length"] = place.length;
    list.push_back(item);
  }
  return list;
}

Json minimalPeerJson(int peer) { return peer >= 1 && peer <= 3 ? Json(peer) : Json(nullptr); }

Json peersJson(const std::vector<PeerVerdict>& verdicts, const Utf8Text& input) {
  Json list = Json::array();
  for (const PeerVerdict& verdict : verdicts) {
    Json item;
    item["peer"] = verdict.peer;
    item["valid"] = verdict.valid;
    if (!verdict.valid) item["message"] = verdict.message;
    placeJson(item, verdict.where, input);
    item["warnings"] = diagnosticsJson(verdict.losses, input);
    list.push_back(item);
  }
  return list;
}

// The start of a message about the report: "lytreq: " for a request given
// as argument, "FILE:LINE:COLUMN: " in batch input (COLUMN in bytes from 1,
// left out when the place is not known); then the severity, which a
// request given as argument names only for a diagnostic.
std::string prefix(const Report& report, const std::optional<Span>& where, std::string_view severity) {
  if (report.line <= 0) return "lytreq: " + (severity.empty() ? std::string() : std::string(severity) + ": ");
  std::string text = shown(report.file) + ':' + std::to_string(report.line) + ':';
  if (where) text += std::to_string(std::min(where->start, report.input.size()) + 1) + ':';
  return text + ' ' + std::string(severity.empty() ? "error" : severity) + ": ";
}

// The request with the marker under `where`.
void writeEcho(const EchoText& echoText, Span where, std::ostream& err) {
  const Echo echo = echoText.echo(where);
  err << "  " << echo.line << '\n';
  err << "  " << echo.marker << '\n';
}

// The message line of a fault.
void writeFaultLine(const Report& report, std::ostream& err) {
  err << prefix(report, report.fault->where, {});
  writeShown(err, report.fault->message);
  err << '\n';
}

}  // namespace

Json reportJson(const Report& report) {
  const Utf8Text input(report.input);
  Json object;
  object["input"] = input.text();  // the text's copy, kept apart: the places still read it
  if (report.line > 0) object["line"] = report.line;
  if (report.request) object["request"] = *report.request;
  if (report.explanation) object.update(*report.explanation);
  if (report.valid) {
    object["peer"] = report.peer;
    object["valid"] = *report.valid;
    if (!*report.valid) {
      object["message"] = report.message;
      placeJson(object, report.where, input);
    }
    object["minimalPeer"] = minimalPeerJson(report.minimalPeer);
  }
  if (report.peers) {
    object["peers"] = peersJson(*report.peers, input);
    object["minimalPeer"] = minimalPeerJson(report.minimalPeer);
  }
  if (report.columns) {
    Json columns = Json::array();
    for (const Column& column : *report.columns) {
      Json item;
      item["number"] = column.number;
      item["name"] = column.name;
      item["role"] = column.role.empty() ? Json(nullptr) : Json(column.role);
      item["type"] = column.type.empty() ? Json(nullptr) : Json(column.type);
      columns.push_back(item);
    }
    object["columns"] = columns;
  }
  if (report.names) object["names"] = *report.names;
  if (report.fault) {
    object["error"] = report.fault->message;
    placeJson(object, report.fault->where, input);
    object["suggestions"] = report.fault->suggestions;
  }
  object["warnings"] = diagnosticsJson(report.diagnostics(), input);
  return object;
}

std::string jsonLine(const Json& value) { return value.dump(-1, ' ', false, Json::error_handler_t::replace); }

void writeText(const Report& report, std::ostream& out) {
  if (report.fault) {
    // In batch input every line gets its verdict; alone, the message says it.
    if (report.verdict && report.line > 0) out << "error: " << shown(report.fault->message) << '\n';
    return;
  }
  if (report.request) out << *report.request << '\n';
  if (report.explanation) {
    writeExplanation(report, out);
    return;
  }
  if (report.peers) {
    for (const PeerVerdict& verdict : *report.peers) {
      out << "peer " << verdict.peer << ": " << (verdict.valid ? "valid" : "invalid: " + shown(verdict.message))
          << '\n';
    }
  }
  if (report.valid) {
    if (*report.valid) {
      out << "valid";
    } else {
      out << "invalid: " << shown(report.message);
    }
    out << "; minimal peer: ";
    if (report.minimalPeer >= 1 && report.minimalPeer <= 3) {
      out << report.minimalPeer;
    } else {
      out << "none";
    }
    out << '\n';
  }
  if (report.columns) {
    for (const Column& column : *report.columns) {
      out << std::setw(2) << column.number << "  ";
      if (column.role.empty()) {
        out << column.name << '\n';
        continue;
      }
      out << std::left << std::setw(20) << column.name << "  " << std::setw(5) << column.role << std::right << "  "
          << column.type << '\n';
    }
  }
  if (report.names) {
    for (const std::string& name : *report.names) out << name << '\n';
  }
}

void writeFault(const Report& report, std::ostream& err) {
  if (!report.fault) return;
  writeFaultLine(report, err);
  if (report.fault->where) writeEcho(EchoText(report.input), *report.fault->where, err);
  const std::vector<std::string>& suggestions = report.fault->suggestions;
  if (suggestions.empty()) return;
  // Worded as for a mistyped option of lytreq.
  err << "Did you mean: ";
  for (std::size_t i = 0; i < suggestions.size(); ++i) err << (i > 0 ? ", " : "") << shown(suggestions[i]);
  err << '\n';
}

void writeDiagnostics(const Report& report, std::ostream& err) {
  const std::vector<Diagnostic> diagnostics = report.diagnostics();
  if (diagnostics.empty()) return;
  const EchoText echoText(report.input);  // one pass over the request for all its findings
  for (const Diagnostic& diagnostic : diagnostics) {
    const Span where{diagnostic.start, diagnostic.length};
    err << prefix(report, where, lytFilterParser::severityName(diagnostic.severity));
    writeShown(err, diagnostic.message);
    err << " [" << diagnostic.code << "]\n";
    writeEcho(echoText, where, err);
  }
}

namespace {

// The text of the report with "N:" before each line.
void writeNumberedText(const Report& report, std::ostream& out) {
  std::ostringstream text;
  writeText(report, text);
  const std::string number = std::to_string(std::max(report.line, 1)) + ':';
  std::istringstream lines(text.str());
  std::string line;
  while (std::getline(lines, line)) out << number << line << '\n';
}

}  // namespace

ReportWriter::ReportWriter(WriteOptions options, std::ostream& out, std::ostream& err)
    : options_(options), out_(out), err_(err) {}

void ReportWriter::write(const Report& report) {
  if (options_.json) {
    out_ << jsonLine(reportJson(report)) << '\n';
    if (report.fault && report.line > 0) {
      out_.flush();
      writeFaultLine(report, err_);
    }
  } else if (options_.lineNumbers) {
    // Every line carries its request's number: no separator is needed.
    writeNumberedText(report, out_);
  } else if (options_.separate) {
    std::ostringstream text;
    writeText(report, text);
    if (!text.str().empty()) {
      if (wrote_) out_ << '\n';
      out_ << text.str();
      wrote_ = true;
    }
  } else {
    writeText(report, out_);
    // One line per request line: paste(1) can put the input beside it.
    if (report.fault && report.oneLine && report.line > 0) out_ << '\n';
  }
  if (!options_.json && (report.fault || !report.diagnostics().empty())) {
    // What goes to standard error stands after the result it is about, also
    // where both streams reach one terminal.
    out_.flush();
    writeFault(report, err_);
    writeDiagnostics(report, err_);
    err_.flush();
  }
}

}  // namespace lytreq
