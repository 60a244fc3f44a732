#include "lytFilterParser/request/LegacyTranslator.h"

#include "lytFilterParser/base/TokenList.h"
#include "lytFilterParser/vocab/LegacySyntax.h"
#include "lytFilterParser/vocab/ValueTypeTable.h"

namespace lytFilterParser {
namespace detail {
namespace {

// The filter words of the legacy syntax, gathered from the value-type table
// when the library is compiled: every skipped token is compared with these
// few words only.
struct LegacyFilterWords {
  std::string_view words[sizeof kValueTypes / sizeof kValueTypes[0]] = {};
  std::size_t count = 0;
  constexpr LegacyFilterWords() {
    for (const ValueTypeRow& row : kValueTypes) {
      if ((row.places & kLegacyFilter) != 0) words[count++] = row.keyword;
    }
  }
};
constexpr LegacyFilterWords kLegacyFilterWords;

// The translation of one token sequence: a cursor over the legacy tokens
// and the words written so far. Each option has one step; a step starts on
// the option's token, leaves the cursor on the next token to look at, and
// returns false after a fault.
template <class Tokens>
class Translation {
 public:
  Translation(Tokens& tokens, WordTokens& out, std::string& fault, LegacyTrace* trace)
      : tokens(tokens), cur(tokens.begin()), end(tokens.end()), out(out), fault(fault), trace(trace) {}

  bool run() {
    while (cur != end && !stopped) {
      const std::string_view token = *cur;
      const char option = token.size() >= 2 && token[0] == '-' ? token[1] : '\0';
      const bool read = option == LEGACY_VALUE       ? value()
                        : option == LEGACY_GROUP     ? group()
                        : option == LEGACY_AGGREGATE ? aggregate()
                                                     : filterOrSkip();
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
    const Span option = optionTaken();
    emit(optionWord(OPTION_VALUE));
    const LegacyValue* row = cur == end ? nullptr : legacyValueRead(firstChar(*cur));
    if (row == nullptr) return refuse("Invalid value type", kindBit(WordKind::LegacyValue));
    if (trace != nullptr) noteLetter(option, LEGACY_VALUE, valueGiven);
    emit(kValueTypes[row->type].keyword);
    if (row->acc >= 0) emit(accumulationWord(static_cast<TavAccType>(row->acc)));
    valueGiven = true;
    ++cur;
    return true;
  }

  // "-g WORD": the key column, and sort top for the "top" words. After a
  // plain word the rest of the line is taken as it stands.
  bool group() {
    const Span option = optionTaken();
    emit(optionWord(OPTION_KEY));
    const LegacyGroup* row = cur == end ? nullptr : legacyGroup(*cur);
    if (row == nullptr) return refuse("Invalid key type", kindBit(WordKind::LegacyGroup));
    if (trace != nullptr && groups++ > 0)
      note(LegacyEvent::OptionRepeated, cover(option, here()), Part::Name, LEGACY_GROUP);
    ++cur;
    emit(kValueTypes[row->keyType].keyword);
    if (row->top) {
      emit(optionWord(OPTION_SORT));
      emit(sortTypeWord(TAV_SORT_TOP));
      return true;
    }
    if (trace != nullptr) {
      passThrough(row->word);
    } else {
      while (cur != end) take();
    }
    stopped = true;
    return true;
  }

  // The rest of the line after a plain group, taken as it stands, noting the
  // legacy filters in it (which the current syntax reads as names, up to the
  // "]" that closes the filter's "[") and the words that the key column's
  // reader takes as column words (before its first name, and after a "]").
  void passThrough(std::string_view previous) {
    struct Open {
      std::size_t event;
      std::size_t at;     // the token of its "[", counted from the group
      std::size_t depth;  // the depth inside that "["
    };
    std::vector<Open> waiting, open;  // filters before their "[", filters inside it
    std::size_t n = 0, depth = 0, firstWaiting = 0;
    bool columnWords = true, inColumn = true;
    Span last;
    for (; cur != end; ++n) {
      const std::string_view token = *cur;
      const Span at = here();
      if (previous.front() != '-' && startsLegacyFilter()) {
        note(LegacyEvent::PassedFilter, at);
        waiting.push_back(Open{trace->events.size() - 1, n + 2, 0});
      }
      if (isChar(token, kOpenBracket)) ++depth;
      if (firstWaiting < waiting.size() && waiting[firstWaiting].at == n) {
        open.push_back(Open{waiting[firstWaiting].event, n, depth});
        ++firstWaiting;
      }
      if (isChar(token, kCloseBracket) && depth > 0) {
        --depth;
        for (; !open.empty() && depth < open.back().depth; open.pop_back()) {
          trace->events[open.back().event].span = cover(trace->events[open.back().event].span, at);
        }
      }
      passedColumnWord(token, at, columnWords, inColumn);
      previous = token;
      last = at;
      take();
    }
    for (const Open& filter : open) trace->events[filter.event].span = cover(trace->events[filter.event].span, last);
  }

  // The key column's reader takes a word holding "acc", "sort" or "=" as a
  // column word where no name run is under way.
  void passedColumnWord(std::string_view token, Span at, bool& columnWords, bool& inColumn) {
    if (!inColumn) return;
    if (firstChar(token) == '-') {
      inColumn = false;
    } else if (isChar(token, kCloseBracket)) {
      columnWords = true;
    } else if (columnWords) {
      const Part part = token.find(kAccumulationName) != std::string_view::npos ? Part::Accumulation
                        : token.find(kSortColumnName) != std::string_view::npos ? Part::SortWord
                        : token.find('=') != std::string_view::npos             ? Part::ColumnOption
                                                                                : Part::Name;
      columnWords = part != Part::Name;  // a name ends the column words
      if (columnWords) note(LegacyEvent::PassedWord, at, part);
    }
  }

  // "-a LETTER": a connection-id key for its letter. Anything else after
  // "-a" is looked at as a filter word only; "-a" at the end ends the line.
  bool aggregate() {
    const Span option = optionTaken();
    if (cur == end) {
      stopped = true;
      return true;
    }
    for (const Word<int>& letter : kLegacyAggregates) {
      // The letters the legacy writer writes for no connection id are passed over quietly.
      if (letter.code < 0 && trace != nullptr && *cur == letter.text) {
        ++cur;
        return true;
      }
      if (letter.code >= 0 && firstChar(*cur) == letter.text[0]) {
        if (trace != nullptr) noteLetter(option, LEGACY_AGGREGATE, aggregates > 0);
        ++aggregates;
        ++cur;
        emit(optionWord(OPTION_KEY));
        emit(kValueTypes[letter.code].keyword);
        return true;
      }
    }
    return filterOrSkip();
  }

  static bool isContentFilterWord(std::string_view word) {
    for (std::size_t i = 0; i < kLegacyFilterWords.count; ++i) {
      if (sameWord(word, kLegacyFilterWords.words[i])) return true;
    }
    return false;
  }

  // A filter word and its list; any other word is skipped.
  bool filterOrSkip() {
    if (*cur == kValueTypes[TAV_INTERFACE].keyword) return interfaceFilter();
    const std::string_view word = *cur;
    if (isContentFilterWord(word)) return contentFilter();
    if (trace != nullptr) skipped(word);
    ++cur;
    return true;
  }

  // What a skipped word is. The legacy writer's own words ("-filter", the
  // brackets, the filter list's operator) are passed over; a "[" followed by
  // a word that names no legacy filter starts a filter that is dropped, up
  // to its "]"; other words are skipped, a run of them as one.
  void skipped(std::string_view word) {
    const Span at = here();
    const Skip before = skip;
    skip = Skip::None;
    if (before == Skip::Group) {  // the dropped filter goes on up to its "]"
      trace->events.back().span = cover(trace->events.back().span, at);
      depth += isChar(word, kOpenBracket) ? 1 : 0;
      if (!isChar(word, kCloseBracket) || --depth != 0) skip = Skip::Group;
      return;
    }
    const FilterOperator* op = codeOf<FilterOperator>(kFilterOperators, word);
    if (op != nullptr && before == Skip::ListBracket) {
      if (*op != FILTER_AND) note(LegacyEvent::OperatorSkipped, at);
      return;
    }
    if (word == legacyOptionWord(LEGACY_FILTER)) {
      skip = Skip::ListOption;
      return;
    }
    if (isChar(word, kOpenBracket)) {
      skip = before == Skip::ListOption ? Skip::ListBracket : Skip::Bracket;
      openedAt = at;
      return;
    }
    if (isChar(word, kCloseBracket)) return;
    if (before == Skip::Bracket || before == Skip::ListBracket) {
      note(LegacyEvent::FilterDropped, cover(openedAt, at));
      depth = 1;
      skip = Skip::Group;
    } else if (before == Skip::Run) {
      trace->events.back().span = cover(trace->events.back().span, at);
      skip = Skip::Run;
    } else {
      note(LegacyEvent::WordSkipped, at);
      skip = Skip::Run;
    }
  }

  // "TYPE FLAG [ NAME... ]": "-f TYPE [not] NAME...".
  bool contentFilter() {
    skip = Skip::None;
    emit(optionWord(OPTION_FILTER));
    take();
    if (!flagAndBracket("Invalid filter")) return false;
    while (cur != end && !isChar(*cur, kCloseBracket)) take();
    if (cur == end) return refuse("Invalid filter");
    ++cur;
    return true;
  }

  // "interface FLAG [ [ NAME DIRECTION ]": "-f interface [not] NAME,DIRECTION".
  bool interfaceFilter() {
    constexpr const char* kFault = "Invalid interface filter";
    skip = Skip::None;
    ++cur;
    emit(optionWord(OPTION_FILTER));
    emit(kValueTypes[TAV_INTERFACE].keyword);
    if (!flagAndBracket(kFault)) return false;
    if (cur != end && isChar(*cur, kOpenBracket)) ++cur;
    if (cur == end) return refuse(kFault);
    std::string item(*cur);
    ++cur;
    if (cur == end) return refuse(kFault);
    item.append(1, kDirectionSeparator).append(*cur);
    ++cur;
    out.push_back(std::move(item));
    return true;
  }

  // The legacy negation flag ("1" writes "not") and the word after it, which
  // stands for the filter's "[".
  bool flagAndBracket(const char* faultText) {
    if (cur == end) return refuse(faultText);
    const bool negated = *cur == legacyNegationFlag(true);
    if (trace != nullptr && !negated && *cur != legacyNegationFlag(false)) note(LegacyEvent::FlagMisread, here());
    ++cur;
    if (negated) emit(kNegationWords[0].text);
    if (cur == end) return refuse(faultText);
    // The word where the filter's "[" stands is passed, whatever it is.
    if (trace != nullptr && !isChar(*cur, kOpenBracket)) note(LegacyEvent::BracketSkipped, here());
    ++cur;
    return true;
  }

  // Whether the cursor stands on a legacy filter as the legacy writer
  // writes one: its type word, the flag, and "[".
  bool startsLegacyFilter() const {
    if (*cur != kValueTypes[TAV_INTERFACE].keyword && !isContentFilterWord(*cur)) return false;
    typename Tokens::iterator at = cur;
    if (++at == end || ++at == end) return false;
    return isChar(*at, kOpenBracket);
  }

  void take() {
    out.push_back(std::string_view(*cur));
    if (trace != nullptr) out.placeLast(here());
    ++cur;
  }
  void emit(std::string_view word) { out.push_back(word); }
  bool refuse(const char* message, WordKinds expected = 0) {
    if (trace != nullptr) {
      trace->faultAt = here();
      trace->expected = expected;
    }
    fault.assign(message);
    return false;
  }

  Span here() const { return spanAt(tokens, cur); }
  void note(LegacyEvent::Kind kind, Span at, Part part = Part::Name, char option = 0) {
    trace->events.push_back(LegacyEvent{kind, at, part, option});
  }
  // The letter after "-y" or "-a": only its first character counts, and the
  // option may stand for the second time.
  void noteLetter(Span option, char letter, bool repeated) {
    if ((*cur).size() > 1) note(LegacyEvent::FirstLetter, here(), Part::Name, letter);
    if (repeated) note(LegacyEvent::OptionRepeated, cover(option, here()), Part::Name, letter);
  }
  // Passes the option under the cursor ("-y", "-g", "-a"): read by its first
  // two characters. Returns its place.
  Span optionTaken() {
    skip = Skip::None;
    const Span at = here();
    if (trace != nullptr && (*cur).size() > 2) note(LegacyEvent::OptionLonger, at);
    ++cur;
    return at;
  }

  // What the words skipped just before were.
  enum class Skip { None, Run, ListOption, ListBracket, Bracket, Group };

  const Tokens& tokens;
  typename Tokens::iterator cur;
  const typename Tokens::iterator end;
  WordTokens& out;
  std::string& fault;
  LegacyTrace* const trace;
  bool valueGiven = false;
  bool stopped = false;  // the rest of the line was taken as it stands
  // For the trace: the skipped words just before, a dropped filter's depth
  // and the "[" that opened it, the keys given so far.
  Skip skip = Skip::None;
  std::size_t depth = 0;
  Span openedAt;
  int groups = 0, aggregates = 0;
};

}  // namespace

template <class Tokens>
bool translateLegacy(Tokens& tokens, WordTokens& out, std::string& fault, LegacyTrace* trace) {
  const bool translated = Translation<Tokens>(tokens, out, fault, trace).run();
  if (trace != nullptr) out.finishPlaces(spanAt(tokens, tokens.end()).start);
  return translated;
}

template bool translateLegacy<strList>(strList&, WordTokens&, std::string&, LegacyTrace*);
template bool translateLegacy<TextTokens>(TextTokens&, WordTokens&, std::string&, LegacyTrace*);

}  // namespace detail
}  // namespace lytFilterParser
