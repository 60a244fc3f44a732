// Checks of the diagnostics shared by the fuzz targets: every function runs
// on every input, every place lies inside its text, every code is one of
// the documented codes with its severity, and what the diagnosing functions
// say the library returns is what it returns.
#ifndef LYTFILTERPARSER_FUZZ_FUZZDIAGNOSTICS_H
#define LYTFILTERPARSER_FUZZ_FUZZDIAGNOSTICS_H

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "FuzzCommon.h"
#include "lytFilterParser/detail/TokenSequence.h"
#include "lytFilterParser/request/LegacyTranslator.h"
#include "lytFilterParser/request/Record.h"

namespace fuzz {

inline void checkPlace(const std::string& text, std::size_t start, std::size_t length, const std::string& what) {
  if (start > text.size() || length > text.size() - start) {
    failure("a place lies outside its text",
            what + " at " + std::to_string(start) + "+" + std::to_string(length) + "\n" + text);
  }
}

inline void checkDiagnostics(const std::string& text, const std::vector<lytFilterParser::Diagnostic>& found) {
  for (const lytFilterParser::Diagnostic& diagnostic : found) {
    checkPlace(text, diagnostic.start, diagnostic.length, diagnostic.code);
    const lytFilterParser::DiagnosticCode* code = lytFilterParser::findDiagnosticCode(diagnostic.code);
    if (code == nullptr) failure("an undocumented diagnostic code", diagnostic.code + "\n" + text);
    if (code->severity != diagnostic.severity)
      failure("a diagnostic with another severity than its code's", diagnostic.code);
  }
}

inline void checkRefusal(const std::string& text, const std::optional<lytFilterParser::Refusal>& refusal,
                         const std::string& error) {
  if (!refusal) {
    if (!error.empty()) failure("a refused text has no refusal", text + "\n" + error);
    return;
  }
  if (refusal->message != error)
    failure("a refusal with another message than the library's", refusal->message + "\n" + error);
  checkPlace(text, refusal->start, refusal->length, refusal->message);
  if (refusal->suggestions.size() > 3) failure("more than three suggestions", text);
}

inline void checkSpan(const std::string& text, lytFilterParser::Span span, const char* what) {
  checkPlace(text, span.start, span.length, what);
}

// Every place the reader records lies inside the text, and every index of
// the record points into it.
inline void checkRecord(const std::string& text) {
  using namespace lytFilterParser::detail;
  Reading reading;
  allowMessage([&] { reading = readText(text, true, Keep::RequestAndRecord); });
  checkSpan(text, reading.at, "the place of a fault");
  const Record& record = reading.record;
  // Reading for the record alone (lint) takes and refuses the same texts, with a record of the same shape.
  Reading alone;
  allowMessage([&] { alone = readText(text, true, Keep::Record); });
  if (alone.accepted != reading.accepted || alone.fault != reading.fault || alone.at.start != reading.at.start ||
      alone.record.expected != record.expected || alone.record.nodes.size() != record.nodes.size() ||
      alone.record.words.size() != record.words.size() || alone.record.values.size() != record.values.size()) {
    failure("the record alone differs from the request's reading", text);
  }
  const auto words = [&](std::uint32_t first, std::uint32_t count, const char* what) {
    if (first > record.words.size() || count > record.words.size() - first)
      failure("recorded words beyond the record", what);
  };
  for (const RecordWord& word : record.words) checkSpan(text, word.span, "a recorded word");
  for (const FilterNode& node : record.nodes) {
    checkSpan(text, node.whole, "a filter");
    checkSpan(text, node.head, "a filter's head");
    checkSpan(text, node.negation, "a negation");
    words(node.firstWord, node.wordCount, "a filter's names");
    if (node.end > record.nodes.size()) failure("a filter's descendants beyond the record", text);
  }
  for (const FilterOption& option : record.filterOptions) {
    checkSpan(text, option.option, "a -f");
    checkSpan(text, option.op, "an operator");
    checkSpan(text, option.whole, "a filter option");
  }
  for (const RecordColumns* columns : {&record.keys, &record.values}) {
    for (const RecordColumn& column : *columns) {
      checkSpan(text, column.option, "a column option");
      checkSpan(text, column.type, "a column type");
      checkSpan(text, column.whole, "a column");
      words(column.firstWord, column.wordCount, "a column's words");
    }
  }
  for (const SortSetting& sort : record.sorts) {
    checkSpan(text, sort.option, "a sort");
    checkSpan(text, sort.type, "a sort type");
    words(sort.firstWord, sort.wordCount, "a sort's words");
  }
  checkSpan(text, record.vlName, "a virtual link name");
  for (const DataTypeOption& option : record.dataTypes) {
    checkSpan(text, option.option, "a -t");
    checkSpan(text, option.type, "a data type");
  }
}

// Every place the legacy translator records lies inside the line.
inline void checkTrace(const std::string& line) {
  using namespace lytFilterParser::detail;
  TextTokens tokens(line);
  WordTokens out;
  std::string fault;
  LegacyTrace trace;
  allowMessage([&] { translateLegacy(tokens, out, fault, &trace); });
  checkSpan(line, trace.faultAt, "the place of a translation's fault");
  for (const LegacyEvent& event : trace.events) checkSpan(line, event.span, "a translation's event");
}

// Request text: lint, fidelity for every peer version, the refusal, and
// validation for every peer version of a request read afresh.
inline void checkRequestDiagnostics(const std::string& text) {
  checkRecord(text);
  checkDiagnostics(text, lytFilterParser::lint(text));
  std::string error;
  std::unique_ptr<LYTKovaRequest> request;
  allowMessage([&] { request.reset(LYTKovaRequest::getLYTKovaRequest(text, error)); });
  checkRefusal(text, lytFilterParser::readRefusal(text), request ? std::string() : error);
  for (int version = -1; version <= 4; ++version) {
    allowMessage([&] { checkDiagnostics(text, lytFilterParser::fidelity(text, TavVersion(version))); });
    std::unique_ptr<LYTKovaRequest> fresh;
    allowMessage([&] { fresh.reset(LYTKovaRequest::getLYTKovaRequest(text, error)); });
    auto* network = dynamic_cast<NetworkKovaRequest*>(fresh.get());
    if (network == nullptr) continue;
    std::string message;
    bool valid = false;
    if (!allowMessage([&] { valid = network->isValid(TavVersion(version), message); })) continue;
    std::optional<lytFilterParser::Refusal> refusal;
    if (!allowMessage([&] { refusal = lytFilterParser::validate(text, *network, TavVersion(version)); })) {
      failure("validate throws where isValid does not", text);
    }
    checkRefusal(text, refusal, valid ? std::string() : message);
  }
}

// A legacy line: convert with diagnostics for every peer version gives what
// convert gives.
inline void checkConversionDiagnostics(const std::string& line) {
  checkTrace(line);
  for (int version = -1; version <= 4; ++version) {
    std::string error;
    std::string converted;
    if (!allowMessage([&] { converted = LYTKovaRequest::convert(line, TavVersion(version), error); })) continue;
    lytFilterParser::Conversion conversion;
    if (!allowMessage([&] { conversion = lytFilterParser::convertWithDiagnostics(line, TavVersion(version)); })) {
      failure("convert with diagnostics throws where convert does not", line);
    }
    if (conversion.request != converted) failure("convert with diagnostics returns another request", line);
    checkRefusal(line, conversion.refusal, error);
    checkDiagnostics(line, conversion.diagnostics);
  }
}

}  // namespace fuzz

#endif
