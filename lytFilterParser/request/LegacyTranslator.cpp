#include "lytFilterParser/request/LegacyTranslator.h"

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

// The translation of one token sequence: a cursor over the legacy tokens
// and the words written so far. Each option has one step; a step starts
// on the option's token and leaves the cursor on the next token to look at.
template <class Tokens>
class Translation {
 public:
  Translation(Tokens& tokens, WordTokens& out) : cur(tokens.begin()), end(tokens.end()), out(out) {}

  void run() {
    while (cur != end) {
      const std::string_view token = *cur;
      const char option = token.size() >= 2 && token[0] == '-' ? token[1] : '\0';
      if (option == LEGACY_VALUE) {
        value();
      } else if (option == LEGACY_GROUP) {
        if (!group()) break;
      } else if (option == LEGACY_AGGREGATE) {
        // "-a" takes its letter, or looks at the next word as a filter word only.
        if (!aggregate()) {
          if (cur == end) break;
          if (!filter()) ++cur;
        }
      } else if (!filter()) {
        ++cur;
      }
    }
    if (!valueGiven) {
      emit(optionWord(OPTION_VALUE));
      emit(valueTypeKeyword(TAV_WB));
    }
  }

 private:
  // "-y LETTER": the value column, by the letter's first character.
  void value() {
    ++cur;
    emit(optionWord(OPTION_VALUE));
    if (cur == end) fail("Invalid value type");
    const LegacyValue* row = legacyValueRead(firstChar(*cur));
    if (row == nullptr) fail("Invalid value type");
    emit(valueTypeKeyword(static_cast<TavValType>(row->type)));
    if (row->acc >= 0) emit(accumulationWord(static_cast<TavAccType>(row->acc)));
    valueGiven = true;
    ++cur;
  }

  // "-g WORD": the key column, and sort top for the "top" words. After a
  // plain word the rest of the line is taken as it stands: returns false.
  bool group() {
    ++cur;
    emit(optionWord(OPTION_KEY));
    if (cur == end) fail("Invalid key type");
    const LegacyGroup* row = legacyGroup(*cur);
    if (row == nullptr) fail("Invalid key type");
    ++cur;
    emit(valueTypeKeyword(row->keyType));
    if (row->top) {
      emit(optionWord(OPTION_SORT));
      emit(sortTypeWord(TAV_SORT_TOP));
      return true;
    }
    while (cur != end) take();
    return false;
  }

  // "-a LETTER": a connection-id key for its letter. Anything else after
  // "-a" is left under the cursor: returns false.
  bool aggregate() {
    ++cur;
    if (cur == end) return false;
    for (const Word<int>& letter : legacyAggregates()) {
      if (letter.code >= 0 && firstChar(*cur) == letter.text[0]) {
        ++cur;
        emit(optionWord(OPTION_KEY));
        emit(valueTypeKeyword(static_cast<TavValType>(letter.code)));
        return true;
      }
    }
    return false;
  }

  // A filter word and its list; false when the word is none.
  bool filter() {
    if (*cur == valueTypeKeyword(TAV_INTERFACE)) {
      interfaceFilter();
      return true;
    }
    const std::string_view word = *cur;
    for (const ValueTypeRow& row : valueTypeRows()) {
      if ((row.places & kLegacyFilter) && word == row.keyword) {
        contentFilter();
        return true;
      }
    }
    return false;
  }

  // "TYPE FLAG [ NAME... ]": "-f TYPE [not] NAME...".
  void contentFilter() {
    emit(optionWord(OPTION_FILTER));
    take();
    negation("Invalid filter");
    if (cur == end) fail("Invalid filter");
    ++cur;  // the "["
    while (cur != end && !isChar(*cur, kCloseBracket)) take();
    if (cur == end) fail("Invalid filter");
    ++cur;
  }

  // "interface FLAG [ [ NAME DIRECTION ]": "-f interface [not] NAME,DIRECTION".
  void interfaceFilter() {
    ++cur;
    emit(optionWord(OPTION_FILTER));
    emit(valueTypeKeyword(TAV_INTERFACE));
    negation("Invalid interface filter");
    if (cur == end) fail("Invalid interface filter");
    ++cur;  // the "["
    if (cur == end) fail("Invalid interface filter");
    if (isChar(*cur, kOpenBracket)) {
      ++cur;
      if (cur == end) fail("Invalid interface filter");
    }
    std::string item(*cur);
    ++cur;
    if (cur == end) fail("Invalid interface filter");
    item.append(1, kDirectionSeparator).append(*cur);
    ++cur;
    out.push_back(std::move(item));
  }

  // The legacy negation flag: "1" writes "not".
  void negation(const char* fault) {
    if (cur == end) fail(fault);
    const bool negated = *cur == legacyNegationFlag(true);
    ++cur;
    if (negated) emit(kNegationWords[0].text);
  }

  void take() {
    out.push_back(std::string_view(*cur));
    ++cur;
  }
  void emit(std::string_view word) { out.push_back(word); }

  typename Tokens::iterator cur;
  const typename Tokens::iterator end;
  WordTokens& out;
  bool valueGiven = false;
};

}  // namespace

template <class Tokens>
void translateLegacy(Tokens& tokens, WordTokens& out) {
  Translation<Tokens>(tokens, out).run();
}

template void translateLegacy<strList>(strList&, WordTokens&);
template void translateLegacy<TextTokens>(TextTokens&, WordTokens&);

}  // namespace detail
}  // namespace lytFilterParser
