#include "output.h"

#include <iomanip>
#include <sstream>

#include "caret.h"
#include "echo.h"

namespace lytreq {

Json reportJson(const Report& report) {
  Json object;
  object["input"] = report.input;
  if (report.line > 0) object["line"] = report.line;
  if (report.request) object["request"] = *report.request;
  if (report.valid) {
    object["peer"] = report.peer;
    object["valid"] = *report.valid;
    if (!*report.valid) object["message"] = report.message;
    if (report.minimalPeer >= 1 && report.minimalPeer <= 3) {
      object["minimalPeer"] = report.minimalPeer;
    } else {
      object["minimalPeer"] = nullptr;
    }
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
    if (report.fault->where) {
      const Span span = *report.fault->where;
      object["errorStart"] = characterCount(report.input, 0, span.start);
      object["errorLength"] = characterCount(report.input, span.start, span.start + span.length);
    }
  }
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
  if (report.line > 0) {
    err << "line " << report.line << ": ";
  } else {
    err << "lytreq: ";
  }
  err << report.fault->message << '\n';
  if (report.fault->where) {
    const Echo echo = echoRequest(report.input, *report.fault->where);
    err << "  " << echo.line << '\n';
    err << "  " << echo.marker << '\n';
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
  }
  out.flush();
  err.flush();
}

}  // namespace lytreq
