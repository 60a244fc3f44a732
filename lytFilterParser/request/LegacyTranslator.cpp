#include "lytFilterParser/request/LegacyTranslator.h"

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

#include "lytFilterParser/base/TokenList.h"
#include "lytFilterParser/detail/Text.h"
#include "lytFilterParser/vocab/LegacySyntax.h"
#include "lytFilterParser/vocab/Syntax.h"
#include "lytFilterParser/vocab/ValueTypeTable.h"

namespace lytFilterParser {
namespace detail {
namespace {

// The filter words of the legacy syntax, gathered from the value-type table
// when the library is compiled: every skipped token is compared with these
// few words only.
constexpr std::size_t legacyFilterWordCount() {
  std::size_t count = 0;
  for (const ValueTypeRow& row : kValueTypes) count += (row.places & kLegacyFilter) != 0 ? 1 : 0;
  return count;
}

constexpr std::array<std::string_view, legacyFilterWordCount()> legacyFilterWords() {
  std::array<std::string_view, legacyFilterWordCount()> words{};
  std::size_t next = 0;
  for (const ValueTypeRow& row : kValueTypes) {
    if ((row.places & kLegacyFilter) != 0) words[next++] = row.keyword;
  }
  return words;
}

constexpr std::array<std::string_view, legacyFilterWordCount()> kLegacyFilterWords = legacyFilterWords();

// The translation of one token sequence: a cursor over the legacy tokens
// and the words written so far. Each option has one step; a step starts on
// the option's token, leaves the cursor on the next token to look at, and
// returns false after a fault.
template <class Tokens>
class Translation {
 public:
  Translation(Tokens& tokens, WordTokens& out, std::string& fault, LegacyTrace* trace)
      : cur(tokens.begin()), end(tokens.end()), out(out), fault(fault), trace(trace) {}

  bool run() {
    while (cur != end && !stopped) {
      const std::string_view token = *cur;
      const char option = token.size() >= 2 && token[0] == '-' ? token[1] : '\0';
      bool read = true;
      if (option == LEGACY_VALUE) {
        read = value();
      } else if (option == LEGACY_GROUP) {
        read = group();
      } else if (option == LEGACY_AGGREGATE) {
        read = aggregate();
      } else {
        read = filterOrSkip();
      }
      if (!read) return false;
    }
    if (!valueGiven) {
      emit(optionWord(OPTION_VALUE));
      emit(kValueTypes[TAV_WB].keyword);
    }
    return true;
  }

 private:
  // "-y LETTER": the value column, by the letter's first character.
  bool value() {
    ++cur;
    emit(optionWord(OPTION_VALUE));
    if (cur == end) return refuse("Invalid value type");
    const LegacyValue* row = legacyValueRead(firstChar(*cur));
    if (row == nullptr) return refuse("Invalid value type");
    emit(kValueTypes[row->type].keyword);
    if (row->acc >= 0) emit(accumulationWord(static_cast<TavAccType>(row->acc)));
    valueGiven = true;
    ++cur;
    return true;
  }

  // "-g WORD": the key column, and sort top for the "top" words. After a
  // plain word the rest of the line is taken as it stands.
  bool group() {
    ++cur;
    emit(optionWord(OPTION_KEY));
    if (cur == end) return refuse("Invalid key type");
    const LegacyGroup* row = legacyGroup(*cur);
    if (row == nullptr) return refuse("Invalid key type");
    ++cur;
    emit(kValueTypes[row->keyType].keyword);
    if (row->top) {
      emit(optionWord(OPTION_SORT));
      emit(sortTypeWord(TAV_SORT_TOP));
      return true;
    }
    std::string_view previous = row->word;
    while (cur != end) {
      if (trace != nullptr && previous.front() != '-' && startsLegacyFilter()) trace->passed.push_back(*cur);
      previous = *cur;
      take();
    }
    stopped = true;
    return true;
  }

  // "-a LETTER": a connection-id key for its letter. Anything else after
  // "-a" is looked at as a filter word only; "-a" at the end ends the line.
  bool aggregate() {
    ++cur;
    if (cur == end) {
      stopped = true;
      return true;
    }
    for (const Word<int>& letter : legacyAggregates()) {
      if (letter.code >= 0 && firstChar(*cur) == letter.text[0]) {
        ++cur;
        emit(optionWord(OPTION_KEY));
        emit(kValueTypes[letter.code].keyword);
        return true;
      }
    }
    return filterOrSkip();
  }

  static bool isContentFilterWord(std::string_view word) {
    for (const std::string_view filterWord : kLegacyFilterWords) {
      if (sameWord(word, filterWord)) return true;
    }
    return false;
  }
  static bool isLegacyFilterWord(std::string_view word) {
    return word == kValueTypes[TAV_INTERFACE].keyword || isContentFilterWord(word);
  }

  // A filter word and its list; any other word is skipped.
  bool filterOrSkip() {
    if (*cur == kValueTypes[TAV_INTERFACE].keyword) return interfaceFilter();
    const std::string_view word = *cur;
    if (isContentFilterWord(word)) return contentFilter();
    if (trace != nullptr) trace->skipped.push_back(word);
    ++cur;
    return true;
  }

  // "TYPE FLAG [ NAME... ]": "-f TYPE [not] NAME...".
  bool contentFilter() {
    emit(optionWord(OPTION_FILTER));
    take();
    if (!negation("Invalid filter")) return false;
    if (cur == end) return refuse("Invalid filter");
    skipBracket();
    while (cur != end && !isChar(*cur, kCloseBracket)) take();
    if (cur == end) return refuse("Invalid filter");
    ++cur;
    return true;
  }

  // "interface FLAG [ [ NAME DIRECTION ]": "-f interface [not] NAME,DIRECTION".
  bool interfaceFilter() {
    constexpr const char* kFault = "Invalid interface filter";
    ++cur;
    emit(optionWord(OPTION_FILTER));
    emit(kValueTypes[TAV_INTERFACE].keyword);
    if (!negation(kFault)) return false;
    if (cur == end) return refuse(kFault);
    skipBracket();
    if (cur == end) return refuse(kFault);
    if (isChar(*cur, kOpenBracket)) {
      ++cur;
      if (cur == end) return refuse(kFault);
    }
    std::string item(*cur);
    ++cur;
    if (cur == end) return refuse(kFault);
    item.append(1, kDirectionSeparator).append(*cur);
    ++cur;
    out.push_back(std::move(item));
    return true;
  }

  // The legacy negation flag: "1" writes "not".
  bool negation(const char* faultText) {
    if (cur == end) return refuse(faultText);
    const bool negated = *cur == legacyNegationFlag(true);
    if (trace != nullptr && !negated && *cur != legacyNegationFlag(false)) trace->flags.push_back(*cur);
    ++cur;
    if (negated) emit(kNegationWords[0].text);
    return true;
  }

  // The word where a filter's "[" stands, whatever it is.
  void skipBracket() {
    if (trace != nullptr && !isChar(*cur, kOpenBracket)) trace->brackets.push_back(*cur);
    ++cur;
  }

  // Whether the cursor stands on a legacy filter as the legacy writer
  // writes one: its type word, the flag, and "[".
  bool startsLegacyFilter() const {
    if (!isLegacyFilterWord(*cur)) return false;
    typename Tokens::iterator at = cur;
    if (++at == end || ++at == end) return false;
    return isChar(*at, kOpenBracket);
  }

  void take() {
    out.push_back(std::string_view(*cur));
    ++cur;
  }
  void emit(std::string_view word) { out.push_back(word); }
  bool refuse(const char* message) {
    if (trace != nullptr && cur != end) trace->faultAt = *cur;
    fault.assign(message);
    return false;
  }

  typename Tokens::iterator cur;
  const typename Tokens::iterator end;
  WordTokens& out;
  std::string& fault;
  LegacyTrace* const trace;
  bool valueGiven = false;
  bool stopped = false;  // the rest of the line was taken as it stands
};

}  // namespace

template <class Tokens>
bool translateLegacy(Tokens& tokens, WordTokens& out, std::string& fault, LegacyTrace* trace) {
  return Translation<Tokens>(tokens, out, fault, trace).run();
}

template bool translateLegacy<strList>(strList&, WordTokens&, std::string&, LegacyTrace*);
template bool translateLegacy<TextTokens>(TextTokens&, WordTokens&, std::string&, LegacyTrace*);

}  // namespace detail
}  // namespace lytFilterParser
