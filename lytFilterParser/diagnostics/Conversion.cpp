#include "lytFilterParser/diagnostics/Conversion.h"

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <utility>

#include "lytFilterParser/detail/Text.h"
#include "lytFilterParser/detail/TokenSequence.h"
#include "lytFilterParser/diagnostics/DiagnosticTable.h"
#include "lytFilterParser/diagnostics/Reading.h"
#include "lytFilterParser/request/LegacyTranslator.h"
#include "lytFilterParser/request/NetworkKovaRequest.h"
#include "lytFilterParser/request/Reader.h"
#include "lytFilterParser/vocab/LegacySyntax.h"

namespace lytFilterParser {
namespace detail {
namespace {

bool isLegacy(TavVersion peer) { return peer == TAV_VERSION_LEGACY_1 || peer == TAV_VERSION_LEGACY_2; }

// A legacy option as the translation knows one: by the token's first two characters.
bool isLegacyOption(std::string_view token, LegacyOption option) {
  return token.size() >= 2 && token[0] == '-' && token[1] == option;
}

// The words of a line and which of them the translation skipped.
struct Line {
  std::string_view text;
  std::vector<Span> words;
  std::vector<bool> skipped;

  std::string_view word(std::size_t i) const { return text.substr(words[i].start, words[i].length); }
  bool is(std::size_t i, char c) const { return i < words.size() && isChar(word(i), c); }
};

// The index of the word `word` (a view into the line), or the number of
// words when it is none of them.
std::size_t indexOf(const Line& line, std::string_view word) {
  if (!inText(line.text, word)) return line.words.size();
  const std::size_t start = static_cast<std::size_t>(word.data() - line.text.data());
  const auto found = std::lower_bound(line.words.begin(), line.words.end(), start,
                                      [](const Span& span, std::size_t at) { return span.start < at; });
  return found != line.words.end() && found->start == start ? static_cast<std::size_t>(found - line.words.begin())
                                                             : line.words.size();
}

Line lineOf(std::string_view text, const LegacyTrace& trace) {
  Line line{text, {}, {}};
  const TextTokens tokens(text);
  for (TextTokens::iterator at = tokens.begin(); at != tokens.end(); ++at) line.words.push_back(tokenSpan(text, tokens, at));
  line.skipped.assign(line.words.size(), false);
  for (const std::string_view skipped : trace.skipped) {
    const std::size_t i = indexOf(line, skipped);
    if (i < line.words.size()) line.skipped[i] = true;
  }
  return line;
}

// The words the legacy writer writes and the reader passes over: "-filter",
// the brackets, the operator of the filter list, the letter after "-a".
bool writtenAndSkipped(const Line& line, std::size_t i) {
  const std::string_view word = line.word(i);
  if (isChar(word, kOpenBracket) || isChar(word, kCloseBracket) || word == legacyOptionWord(LEGACY_FILTER)) return true;
  if (i > 0 && isLegacyOption(line.word(i - 1), LEGACY_AGGREGATE)) {
    for (const Word<int>& letter : legacyAggregates()) {
      if (letter.code < 0 && word == letter.text) return true;
    }
  }
  return false;
}

// The last word of the bracketed group whose "[" is word `open`, among
// the skipped words.
std::size_t groupEnd(const Line& line, std::size_t open) {
  int depth = 0;
  std::size_t i = open;
  for (; i < line.words.size() && line.skipped[i]; ++i) {
    depth += line.is(i, kOpenBracket) ? 1 : line.is(i, kCloseBracket) ? -1 : 0;
    if (depth == 0) return i;
  }
  return i - 1;
}

void skippedWords(const Line& line, Findings& found) {
  for (std::size_t i = 0; i < line.words.size(); ++i) {
    if (!line.skipped[i]) continue;
    const std::string_view word = line.word(i);
    const FilterOperator* op = codeOf<FilterOperator>(kFilterOperators, word);
    if (op != nullptr && i >= 2 && line.is(i - 1, kOpenBracket) && line.word(i - 2) == legacyOptionWord(LEGACY_FILTER)) {
      if (*op != FILTER_AND) {
        found.add(Code::OperatorChanged, line.words[i],
                  quoted(word) + " is skipped: the legacy filters are joined by " +
                      quoted(wordOf<FilterOperator>(kFilterOperators, FILTER_AND)));
      }
      continue;
    }
    if (writtenAndSkipped(line, i)) continue;
    if (i > 0 && line.skipped[i - 1] && line.is(i - 1, kOpenBracket)) {
      const std::size_t end = groupEnd(line, i - 1);
      const Span group = cover(line.words[i - 1], line.words[end]);
      found.add(Code::FilterDropped, group,
                quoted(line.text.substr(group.start, group.length)) +
                    " is not read: its first word names no legacy filter, and the converted request has no filter for it");
      i = end;
      continue;
    }
    std::size_t last = i;
    while (last + 1 < line.words.size() && line.skipped[last + 1] && !writtenAndSkipped(line, last + 1)) ++last;
    const Span run = cover(line.words[i], line.words[last]);
    found.add(Code::WordSkipped, run,
              quoted(line.text.substr(run.start, run.length)) + (last > i ? " are" : " is") +
                  " no legacy syntax and the conversion skips " + (last > i ? "them" : "it"));
    i = last;
  }
}

// Whether "-a" reads `argument` as its connection-id letter.
bool takesConnId(std::string_view argument) {
  for (const Word<int>& letter : legacyAggregates()) {
    if (letter.code >= 0 && firstChar(argument) == letter.text[0]) return true;
  }
  return false;
}

// Options written with more characters, and "-y" and "-a" arguments of
// more than their letter: the translation reads the first characters only.
void longerWords(const Line& line, Findings& found) {
  for (std::size_t i = 0; i < line.words.size(); ++i) {
    const std::string_view word = line.word(i);
    const bool value = isLegacyOption(word, LEGACY_VALUE), group = isLegacyOption(word, LEGACY_GROUP);
    const bool aggregate = isLegacyOption(word, LEGACY_AGGREGATE);
    if (!value && !group && !aggregate) continue;
    const std::string_view option = word.substr(0, 2);
    if (word.size() > 2) found.add(Code::WordMisread, line.words[i], quoted(word) + " is read as " + quoted(option));
    if (i + 1 == line.words.size()) return;
    const std::string_view argument = line.word(i + 1);
    if (!group && argument.size() > 1 && (value ? legacyValueRead(argument[0]) != nullptr : takesConnId(argument))) {
      found.add(Code::WordMisread, line.words[i + 1],
                quoted(argument) + " is read as " + quoted(std::string(option) + " " + std::string(argument.substr(0, 1))) +
                    ": only its first letter counts");
    }
  }
}

// The word that closes the bracket opened by word `open`, or the last word.
std::size_t closingWord(const Line& line, std::size_t open) {
  std::size_t depth = 0;
  for (std::size_t i = open; i < line.words.size(); ++i) {
    if (line.is(i, kOpenBracket)) ++depth;
    if (line.is(i, kCloseBracket) && --depth == 0) return i;
  }
  return line.words.size() - 1;
}

// What the translation reads otherwise than it shows: a negation flag
// other than "0" or "1", a word where a filter's "[" belongs, and a
// legacy filter after a plain group, where the rest of the line is read
// as the current syntax.
void misreadFilters(const Line& line, const LegacyTrace& trace, Findings& found) {
  const std::string plain(legacyNegationFlag(false)), negated(legacyNegationFlag(true));
  for (const std::string_view flag : trace.flags) {
    const std::size_t i = indexOf(line, flag);
    if (i == line.words.size()) continue;
    found.add(Code::WordMisread, line.words[i],
              quoted(flag) + " is read as " + quoted(plain) + ": only " + quoted(negated) + " negates a legacy filter");
  }
  const std::string open(1, kOpenBracket);
  for (const std::string_view word : trace.brackets) {
    const std::size_t i = indexOf(line, word);
    if (i == line.words.size()) continue;
    found.add(Code::WordSkipped, line.words[i], quoted(word) + " stands where the filter's " + quoted(open) + " belongs and is skipped");
  }
  for (const std::string_view first : trace.passed) {
    const std::size_t i = indexOf(line, first);
    if (i + 2 >= line.words.size()) continue;
    const Span filter = cover(line.words[i], line.words[closingWord(line, i + 2)]);
    found.add(Code::FilterDropped, filter,
              quoted(line.text.substr(filter.start, filter.length)) +
                  " follows a plain group, after which the line is read as the current syntax: as names, not as a filter");
  }
}

// Where convert's refusal of `line` stands.
Span refusalPlace(std::string_view line, TavVersion peer, const std::string& error) {
  if (peer == TAV_VERSION_CURRENT) {
    const Reading reading = readText(line, false);
    return reading.fault == error ? reading.at : Span{line.size(), 0};
  }
  if (!isLegacy(peer)) return Span{0, line.size()};
  TextTokens tokens(line);
  WordTokens translated;
  std::string fault;
  LegacyTrace trace;
  if (!translateLegacy(tokens, translated, fault, &trace)) {
    if (trace.faultAt.empty() || !inText(line, trace.faultAt)) return Span{line.size(), 0};
    return Span{static_cast<std::size_t>(trace.faultAt.data() - line.data()), trace.faultAt.size()};
  }
  Reader reader;
  NetworkKovaRequest request(Filter(), TavColumnArray(), TavColumnArray(), TAV_SORT_NONE, 1);
  WordTokens::iterator cur = translated.begin();
  if (reader.request(request, translated, cur) || reader.fault != error) return Span{line.size(), 0};
  return tokenSpan(line, translated, cur);
}

}  // namespace
}  // namespace detail

Conversion convertWithDiagnostics(const std::string& line, TavVersion peer) {
  using namespace detail;
  Conversion conversion;
  std::string error;
  conversion.request = LYTKovaRequest::convert(line, peer, error);
  if (!error.empty()) {
    conversion.refusal = refusalAt(error, refusalPlace(line, peer, error), line);
    return conversion;
  }
  if (!isLegacy(peer)) return conversion;
  TextTokens tokens(line);
  WordTokens translated;
  std::string fault;
  LegacyTrace trace;
  translateLegacy(tokens, translated, fault, &trace);
  const Line words = lineOf(line, trace);
  Findings found;
  skippedWords(words, found);
  longerWords(words, found);
  misreadFilters(words, trace, found);
  conversion.diagnostics = found.finish();
  return conversion;
}

}  // namespace lytFilterParser
