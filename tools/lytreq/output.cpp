#include "output.h"

#include <iomanip>
#include <sstream>

#include "caret.h"
#include "echo.h"
#include "explain.h"

namespace lytreq {

namespace {

void placeJson(Json& object, const std::optional<Span>& where) {
  if (!where) return;
  object["errorStart"] = where->start;
  object["errorLength"] = where->length;
}

Json diagnosticsJson(const std::vector<Diagnostic>& diagnostics) {
  Json list = Json::array();
  for (const Diagnostic& diagnostic : diagnostics) {
    Json item;
    item["code"] = diagnostic.code;
    item["severity"] = std::string(lytFilterParser::severityName(diagnostic.severity));
    item["message"] = diagnostic.message;
    item["start"] = diagnostic.start;
    item["length"] = diagnostic.length;
    list.push_back(item);
  }
  return list;
}

Json minimalPeerJson(int peer) { return peer >= 1 && peer <= 3 ? Json(peer) : Json(nullptr); }

Json peersJson(const std::vector<PeerVerdict>& verdicts) {
  Json list = Json::array();
  for (const PeerVerdict& verdict : verdicts) {
    Json item;
    item["peer"] = verdict.peer;
    item["valid"] = verdict.valid;
    if (!verdict.valid) item["message"] = verdict.message;
    placeJson(item, verdict.where);
    item["warnings"] = diagnosticsJson(verdict.losses);
    list.push_back(item);
  }
  return list;
}

// The prefix of a message about the report: "line N: " in batch input.
std::string prefix(const Report& report) {
  return report.line > 0 ? "line " + std::to_string(report.line) + ": " : std::string("lytreq: ");
}

// The request with the marker under `where`.
void writeEcho(const Report& report, Span where, std::ostream& err) {
  const Echo echo = echoRequest(report.input, where);
  err << "  " << echo.line << '\n';
  err << "  " << echo.marker << '\n';
}

}  // namespace

Json reportJson(const Report& report) {
  Json object;
  object["input"] = report.input;
  if (report.line > 0) object["line"] = report.line;
  if (report.request) object["request"] = *report.request;
  if (report.explanation) object.update(*report.explanation);
  if (report.valid) {
    object["peer"] = report.peer;
    object["valid"] = *report.valid;
    if (!*report.valid) {
      object["message"] = report.message;
      placeJson(object, report.where);
    }
    object["minimalPeer"] = minimalPeerJson(report.minimalPeer);
  }
  if (report.peers) {
    object["peers"] = peersJson(*report.peers);
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
    placeJson(object, report.fault->where);
    object["suggestions"] = report.fault->suggestions;
  }
  object["warnings"] = diagnosticsJson(report.diagnostics());
  return object;
}

std::string jsonLine(const Json& value) { return value.dump(-1, ' ', false, Json::error_handler_t::replace); }

void writeText(const Report& report, std::ostream& out) {
  if (report.fault) {
    // In batch input every line gets its verdict; alone, the message says it.
    if (report.verdict && report.line > 0) out << "error: " << report.fault->message << '\n';
    return;
  }
  if (report.request) out << *report.request << '\n';
  if (report.explanation) {
    writeExplanation(report, out);
    return;
  }
  if (report.peers) {
    for (const PeerVerdict& verdict : *report.peers) {
      out << "peer " << verdict.peer << ": " << (verdict.valid ? "valid" : "invalid: " + verdict.message) << '\n';
    }
  }
  if (report.valid) {
    if (*report.valid) {
      out << "valid";
    } else {
      out << "invalid: " << report.message;
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
  err << prefix(report) << report.fault->message << '\n';
  if (report.fault->where) writeEcho(report, *report.fault->where, err);
  const std::vector<std::string>& suggestions = report.fault->suggestions;
  if (suggestions.empty()) return;
  // Worded as for a mistyped option of lytreq.
  err << "Did you mean: ";
  for (std::size_t i = 0; i < suggestions.size(); ++i) err << (i > 0 ? ", " : "") << suggestions[i];
  err << '\n';
}

void writeDiagnostics(const Report& report, std::ostream& err) {
  for (const Diagnostic& diagnostic : report.diagnostics()) {
    err << prefix(report) << lytFilterParser::severityName(diagnostic.severity) << ": " << diagnostic.message << " ["
        << diagnostic.code << "]\n";
    writeEcho(report, Span{diagnostic.start, diagnostic.length}, err);
  }
}

// The text of the report with "N:" before each line.
void writeNumberedText(const Report& report, std::ostream& out) {
  std::ostringstream text;
  writeText(report, text);
  std::istringstream lines(text.str());
  std::string line;
  while (std::getline(lines, line)) out << report.line << ':' << line << '\n';
}

void writeReport(const Report& report, bool json, bool lineNumbers, std::ostream& out, std::ostream& err) {
  if (json) {
    out << jsonLine(reportJson(report)) << '\n';
    if (report.fault && report.line > 0) err << "line " << report.line << ": " << report.fault->message << '\n';
  } else {
    if (lineNumbers && report.line > 0) {
      writeNumberedText(report, out);
    } else {
      writeText(report, out);
    }
    writeFault(report, err);
    writeDiagnostics(report, err);
  }
  out.flush();
  err.flush();
}

}  // namespace lytreq
