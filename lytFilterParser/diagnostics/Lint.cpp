#include "lytFilterParser/diagnostics/Lint.h"

#include <algorithm>
#include <climits>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <tuple>
#include <unordered_map>
#include <utility>

#include "lytFilterParser/detail/SmallVector.h"
#include "lytFilterParser/detail/Text.h"
#include "lytFilterParser/diagnostics/Characters.h"
#include "lytFilterParser/diagnostics/DiagnosticTable.h"
#include "lytFilterParser/diagnostics/Reading.h"
#include "lytFilterParser/request/NetworkKovaRequest.h"
#include "lytFilterParser/vocab/Vocabulary.h"

namespace lytFilterParser {
namespace detail {
namespace {

// ---------------------------------------------------------------------------
// invisible characters
// ---------------------------------------------------------------------------

std::string_view characterName(unsigned codePoint) {
  switch (codePoint) {
    case 0x09: return "tab";
    case 0x0A: return "line feed";
    case 0x0D: return "carriage return";
    case 0xA0: return "no-break space";
    case 0xAD: return "soft hyphen";
    case 0x1680: return "ogham space mark";
    case 0x200B: return "zero-width space";
    case 0x200C: return "zero-width non-joiner";
    case 0x200D: return "zero-width joiner";
    case 0x202F: return "narrow no-break space";
    case 0x2060: return "word joiner";
    case 0x3000: return "ideographic space";
    case 0xFEFF: return "byte order mark";
    default: return codePoint < 0xA0 ? "control character" : "invisible space or format character";
  }
}

std::string codePointText(unsigned codePoint) {
  static const char kHex[] = "0123456789ABCDEF";
  std::string text = "U+";
  for (int shift = codePoint > 0xFFFF ? 20 : 12; shift >= 0; shift -= 4) text += kHex[(codePoint >> shift) & 0xFu];
  return text;
}

bool separates(char c) { return c == ' ' || c == kOpenBracket || c == kCloseBracket; }

// The word around text[at].
std::string_view wordAround(std::string_view text, std::size_t at) {
  std::size_t start = at, end = at;
  while (start > 0 && !separates(text[start - 1])) --start;
  while (end < text.size() && !separates(text[end])) ++end;
  return text.substr(start, end - start);
}

// Whether every byte of `text` is printable ASCII (0x20 to 0x7E), as in most
// requests: eight bytes at a time, the last eight read again. The lowest byte
// below 0x20 borrows nothing and sets the top bit of its byte of x - 0x20...;
// with no byte of 0x80 or more (x's top bits), adding 1 carries nothing and
// sets it for 0x7F.
bool printable(std::string_view text) {
  if (text.size() < 8) return std::all_of(text.begin(), text.end(), [](char c) { return c >= 0x20 && c < 0x7F; });
  constexpr std::uint64_t kOnes = 0x0101010101010101ull;
  std::uint64_t bad = 0;
  const auto add = [&](std::size_t i) {
    std::uint64_t x;
    std::memcpy(&x, text.data() + i, 8);
    bad |= x | (x - 0x20 * kOnes) | (x + kOnes);
  };
  for (std::size_t i = 0; i + 8 < text.size(); i += 8) add(i);
  add(text.size() - 8);
  return (bad & 0x80 * kOnes) == 0;
}

void lintInvisible(std::string_view text, Findings& found) {
  if (printable(text)) return;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const InvisibleCharacter first = invisibleAt(text, i);
    if (first.length == 0) continue;
    std::size_t end = i + first.length;
    for (InvisibleCharacter next = invisibleAt(text, end); next.length > 0; next = invisibleAt(text, end))
      end += next.length;
    found.add(Code::InvisibleCharacter, Span{i, end - i},
              codePointText(first.codePoint) + " (" + std::string(characterName(first.codePoint)) + ") inside " +
                  quoted(wordAround(text, i)) + ": it is part of the word; only a blank separates words");
    i = end - 1;  // the loop steps past the run
  }
}

// ---------------------------------------------------------------------------
// names
// ---------------------------------------------------------------------------

enum class Place { Atom, Interfaces, Column };

// Whether the text holds a "," and a "<>" at all: most requests hold
// neither, and their names are then not searched for them.
struct Marks {
  bool commas;
  bool separators;
};

// The words that mean something of their own where names stand, and what
// tells most names apart from all of them cheaply: bit n of lengths[c] is set
// when one of them has n bytes and starts with c.
struct Keywords {
  std::unordered_map<std::string_view, const lytFilterParser::Word*> words;
  std::uint64_t lengths[256] = {};
};

constexpr WordKind kKeywordKinds[] = {WordKind::ValueType,        WordKind::FilterOperator, WordKind::Negation,
                                      WordKind::AccumulationMode, WordKind::ColumnOption,   WordKind::SortInColumn,
                                      WordKind::SortType};

const Keywords& keywords() {
  static const Keywords made = [] {
    Keywords list;
    for (const lytFilterParser::Word& word : vocabulary()) {
      if (std::find(std::begin(kKeywordKinds), std::end(kKeywordKinds), word.kind) == std::end(kKeywordKinds)) continue;
      list.words.emplace(word.text, &word);
      list.lengths[static_cast<unsigned char>(word.text[0])] |= std::uint64_t{1} << word.text.size();
    }
    return list;
  }();
  return made;
}

const lytFilterParser::Word* keywordOf(std::string_view name) {
  const Keywords& known = keywords();
  if (name.empty() || name.size() >= 64 || (known.lengths[static_cast<unsigned char>(name[0])] >> name.size() & 1) == 0)
    return nullptr;
  const auto found = known.words.find(name);
  return found == known.words.end() ? nullptr : found->second;
}

std::string atByte(std::size_t offset) { return "byte " + std::to_string(offset); }

// The word at `earlier` is given again later as `word`: the later one counts.
void reportOverridden(const Record& outline, Span earlier, std::string_view word, Findings& found) {
  found.add(Code::OptionRepeated, earlier,
            quoted(outline.textOf(earlier)) + " is overridden by the later " + quoted(word));
}

void lintDirection(std::string_view item, std::size_t comma, Span at, Findings& found) {
  if (comma == std::string_view::npos) return;
  if (comma + 1 == item.size()) {
    found.add(Code::WordMisread, at, quoted(item) + " has no direction after the comma: the whole word is the name");
    return;
  }
  // A direction word in any case reads as itself; any other word by its first letter.
  const std::string_view suffix = item.substr(comma + 1);
  const TavFilterDirType direction = itemDirection(suffix);
  const std::string_view read = wordOf<int>(kDirections, direction);
  const auto same = [](char a, char b) { return (a >= 'A' && a <= 'Z' ? static_cast<char>(a - 'A' + 'a') : a) == b; };
  if (suffix.size() == read.size() && std::equal(suffix.begin(), suffix.end(), read.begin(), same)) return;
  const std::string shown =
      std::string(item.substr(0, comma)) +
      (direction == TAV_DIR_BOTH ? std::string(" (both directions)") : kDirectionSeparator + std::string(read));
  found.add(Code::WordMisread, at, quoted(item) + " is read as " + shown + ", by the first letter of its direction");
}

void lintName(std::string_view word, Span at, Place place, Marks marks, Findings& found) {
  if (isChar(word, kOpenBracket) || isChar(word, kCloseBracket)) {
    found.add(Code::WordMisread, at, quoted(word) + " opens or closes nothing here and is read as a name");
    return;
  }
  const std::size_t comma = marks.commas ? word.find(kDirectionSeparator) : std::string_view::npos;
  if (place == Place::Interfaces
          ? comma == 0 && word.size() > 1
          : marks.separators && word.compare(0, kEntitySeparator.size(), kEntitySeparator) == 0) {
    found.add(Code::EntityEmpty, at, quoted(word) + " has an empty name");
  }
  if (place == Place::Interfaces) {
    lintDirection(word, comma, at, found);
  } else if (comma != std::string_view::npos) {
    found.add(Code::EntityComma, at, quoted(word) + " is one name; names are separated by blanks");
  }
  if (const lytFilterParser::Word* keyword = keywordOf(word)) {
    found.add(Code::EntityKeyword, at,
              quoted(word) + " is read as a name here; it is also the " + std::string(wordKindName(keyword->kind)) +
                  " keyword");
  } else if (place == Place::Column && (word.find(kAccumulationName) != std::string_view::npos ||
                                        word.find(kSortColumnName) != std::string_view::npos)) {
    found.add(Code::EntityKeyword, at,
              quoted(word) + " follows a name and is read as a name; in the first place it would be a column word");
  }
}

// The name a duplicate is judged by: an entity without its resolved name,
// an interface item as written.
std::string_view nameKey(std::string_view word, Place place, Marks marks) {
  return place == Place::Interfaces || !marks.separators ? word : word.substr(0, word.find(kEntitySeparator));
}

void reportDuplicate(Span earlier, Span later, std::string_view name, Findings& found) {
  found.add(Code::EntityDuplicate, later,
            quoted(name) + " is named twice here (first at " + atByte(earlier.start) + ")");
}

// Up to this many words, as in most requests, each name is compared with
// those before it; more are sorted by name.
constexpr std::uint32_t kFewWords = 16;

void lintManyDuplicates(const Record& outline, const RecordWord* words, std::uint32_t count, Place place, Marks marks,
                        Findings& found) {
  std::vector<std::pair<std::string_view, std::uint32_t>> names;
  for (std::uint32_t w = 0; w < count; ++w) {
    if (words[w].part == Part::Name) names.emplace_back(nameKey(outline.textOf(words[w].span), place, marks), w);
  }
  std::stable_sort(names.begin(), names.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
  for (std::size_t i = 1; i < names.size(); ++i) {
    if (names[i].first != names[i - 1].first || names[i].first.empty()) continue;
    reportDuplicate(words[names[i - 1].second].span, words[names[i].second].span, names[i].first, found);
  }
}

// The names among words[first, first + count), each on its own, and those
// named twice.
void lintNames(const Record& outline, std::uint32_t first, std::uint32_t count, Place place, Marks marks,
               Findings& found) {
  const RecordWord* const words = outline.words.begin() + first;
  const auto key = [&](std::uint32_t w) { return nameKey(outline.textOf(words[w].span), place, marks); };
  bool comment = false;
  for (std::uint32_t w = 0; w < count; ++w) {
    if (words[w].part != Part::Name) continue;
    const Span at = words[w].span;
    const std::string_view word = outline.textOf(at);
    if (!comment && firstChar(word) == '#') {
      comment = true;
      std::uint32_t last = w;
      while (last + 1 < count && words[last + 1].part == Part::Name) ++last;
      found.add(Code::InlineComment, cover(at, words[last].span),
                "\"#\" starts no comment: " + quoted(word) + " and the words after it are read as names");
    }
    lintName(word, at, place, marks, found);
    const std::string_view name = count <= kFewWords ? key(w) : std::string_view();
    for (std::uint32_t earlier = 0; !name.empty() && earlier < w; ++earlier) {
      if (words[earlier].part != Part::Name || key(earlier) != name) continue;
      reportDuplicate(words[earlier].span, at, name, found);
      break;
    }
  }
  if (count > kFewWords) lintManyDuplicates(outline, words, count, place, marks, found);
}

// ---------------------------------------------------------------------------
// filter
// ---------------------------------------------------------------------------

FilterOperator operatorOf(const Record& outline, const FilterOption& option) {
  if (option.op.length == 0) return FILTER_AND;
  const FilterOperator* op = codeOf<FilterOperator>(kFilterOperators, outline.textOf(option.op));
  return op != nullptr ? *op : FILTER_AND;
}

std::string_view operatorName(FilterOperator op) { return wordOf<FilterOperator>(kFilterOperators, op); }

// A request with one "-f" has nothing to find here.
void lintFilterOptions(const Record& outline, Findings& found) {
  const auto& options = outline.filterOptions;
  if (options.size() < 2) return;
  const FilterOption& lastOption = options.back();
  const FilterOperator effective = operatorOf(outline, lastOption);
  for (std::size_t i = 1; i < options.size(); ++i) {
    found.add(Code::FilterAppended, options[i].whole,
              "this -f adds to the filter begun at " + atByte(options[0].option.start) +
                  ": a request has one filter, and the operator read last (" + quoted(operatorName(effective)) +
                  ") joins all its parts");
  }
  if (outline.nodes[0].childCount < 2) return;
  bool impliedReported = false;
  for (std::size_t i = 0; i + 1 < options.size(); ++i) {
    if (operatorOf(outline, options[i]) == effective) continue;
    if (options[i].op.length > 0) {
      found.add(Code::OperatorChanged, options[i].op,
                quoted(outline.textOf(options[i].op)) + " is overridden: the later -f at " +
                    atByte(lastOption.option.start) + " makes the filter " + quoted(operatorName(effective)));
    } else if (!impliedReported && lastOption.op.length > 0) {
      impliedReported = true;
      found.add(Code::OperatorChanged, lastOption.op,
                quoted(outline.textOf(lastOption.op)) + " also joins the filters given before it without an operator");
    }
  }
}

// An "and" of atoms that one atom requires a name of a type and another
// excludes for the same type cannot match: every name an atom allows is
// excluded. Different names prove nothing (a name may be a subnet or a
// module holding the other). A name excluded twice is named where it is
// excluded first.
void lintConjunction(const Record& outline, std::uint32_t n, Findings& found) {
  const FilterNode* const nodes = outline.nodes.begin();
  const RecordWord* const words = outline.words.begin();
  const FilterNode& node = nodes[n];
  if (node.childCount < 2) return;
  const FilterOperator* code = codeOf<FilterOperator>(kFilterOperators, outline.textOf(node.head));
  if (code != nullptr && *code != FILTER_AND) return;
  // The excluded names by type word and name, each in the order of the text.
  struct Excluded {
    std::string_view type, name;
    Span at;
    bool operator<(const Excluded& other) const {
      return std::tie(type, name, at.start) < std::tie(other.type, other.name, other.at.start);
    }
  };
  SmallVector<Excluded, 8> excluded;
  for (std::uint32_t child = n + 1; child < node.end; child = nodes[child].end) {
    const FilterNode& atom = nodes[child];
    if (atom.compound || atom.negation.length == 0) continue;
    for (std::uint32_t w = atom.firstWord; w < atom.firstWord + atom.wordCount; ++w) {
      excluded.push_back(Excluded{outline.textOf(atom.head), outline.textOf(words[w].span), words[w].span});
    }
  }
  if (excluded.empty()) return;
  std::sort(excluded.begin(), excluded.end());
  for (std::uint32_t child = n + 1; child < node.end; child = nodes[child].end) {
    const FilterNode& atom = nodes[child];
    if (atom.compound || atom.negation.length > 0 || atom.wordCount == 0) continue;
    Span last{};
    bool all = true;
    for (std::uint32_t w = atom.firstWord; all && w < atom.firstWord + atom.wordCount; ++w) {
      const Excluded name{outline.textOf(atom.head), outline.textOf(words[w].span), Span{}};
      const Excluded* at = std::lower_bound(excluded.begin(), excluded.end(), name);
      all = at != excluded.end() && at->type == name.type && at->name == name.name;
      if (all) last = at->at;
    }
    if (!all) continue;
    found.add(Code::FilterUnsatisfiable, atom.whole,
              quoted(outline.textOf(atom.whole)) + " requires what a filter joined to it by " +
                  quoted(wordOf<FilterOperator>(kFilterOperators, FILTER_AND)) + " excludes (at " + atByte(last.start) +
                  "): no traffic matches");
  }
}

void lintFilter(const Record& outline, Marks marks, Findings& found) {
  lintFilterOptions(outline, found);
  for (const FilterOption& option : outline.filterOptions) {
    if (outline.nodes[0].childCount == 0 && option.op.length > 0) {
      found.add(Code::OperatorIgnored, option.whole,
                quoted(outline.textOf(option.op)) + " has no filter in it and is ignored");
    }
  }
  const FilterNode* const nodes = outline.nodes.begin();
  for (std::uint32_t n = 0; n < outline.nodes.size(); ++n) {
    const FilterNode& node = nodes[n];
    if (node.compound && node.childCount == 0 && n > 0) {
      found.add(Code::OperatorIgnored, node.whole,
                quoted(outline.textOf(node.head)) + " has no filter in it and is ignored");
    } else if (node.compound) {
      lintConjunction(outline, n, found);
    } else if (node.wordCount == 0) {
      found.add(Code::AtomEmpty, node.whole,
                quoted(outline.textOf(node.whole)) + " has no names: it names no traffic" +
                    (node.negation.length > 0 ? ", and excludes none" : ""));
    } else {
      lintNames(outline, node.firstWord, node.wordCount, node.interface ? Place::Interfaces : Place::Atom, marks,
                found);
    }
  }
}

// ---------------------------------------------------------------------------
// columns
// ---------------------------------------------------------------------------

void lintColumn(const Record& outline, const RecordColumn& column, bool key, Marks marks, Findings& found) {
  const RecordWord* const words = outline.words.begin() + column.firstWord;
  const RecordWord* accumulation = nullptr;
  const RecordWord* options[COLUMN_OPTION_COUNT] = {};
  bool names = false;
  for (std::uint32_t w = 0; w < column.wordCount; ++w) {
    const RecordWord& current = words[w];
    const std::string_view word = outline.textOf(current.span);
    names |= current.part == Part::Name;
    if (current.part == Part::Accumulation) {
      if (accumulation != nullptr) reportOverridden(outline, accumulation->span, word, found);
      accumulation = &current;
    } else if (current.part == Part::SortWord) {
      if (key) {
        found.add(Code::WordIgnored, current.span, "a key column sorts nothing: " + quoted(word) + " is ignored");
      } else if (NetworkKovaRequest::getSortType(std::string(word)) == TAV_SORT_NONE) {
        found.add(Code::WordIgnored, current.span,
                  quoted(word) + " is no sort word (" + std::string(kSortColumnPrefix) +
                      std::string(sortTypeWord(TAV_SORT_TOP)) + ", " + std::string(kSortColumnPrefix) +
                      std::string(sortTypeWord(TAV_SORT_BOTTOM)) + ") and is ignored");
      }
    } else if (current.part == Part::ColumnOption) {
      // The reader found the option's name in the word, and the value after it.
      const ColumnOption& option = kColumnOptions[current.option];
      const Word<int>& value = option.values[current.value];
      if (word.substr(0, option.name.size()) != option.name || word.substr(option.name.size()) != value.text) {
        found.add(Code::WordMisread, current.span,
                  quoted(word) + " is read as " + quoted(columnOptionWord(current.option, value.code)));
      }
      if (options[current.option] != nullptr) reportOverridden(outline, options[current.option]->span, word, found);
      options[current.option] = &current;
    }
  }
  if (names) lintNames(outline, column.firstWord, column.wordCount, Place::Column, marks, found);
}

// ---------------------------------------------------------------------------
// sort
// ---------------------------------------------------------------------------

// "index=N" or "updates=N": what the reader makes of the number.
void lintNumber(std::string_view word, Span at, Part part, Findings& found) {
  const std::string_view name = kSortOptions[part == Part::Index ? SORT_INDEX : SORT_UPDATES].text;
  const int value = readInt(word, name.size());
  const bool defaulted = part == Part::Updates && value <= 0;
  const auto read = [&] {
    return defaulted ? "the default of " + std::to_string(NetworkKovaRequest::defaultMaxUpdates) + " updates"
                     : quoted(std::string(name) + std::to_string(value));
  };
  if (word.compare(0, name.size(), name) != 0) {
    found.add(Code::WordMisread, at,
              quoted(word) + " does not start with " + quoted(name) + ": it is read as " + read());
    return;
  }
  std::string_view number = word.substr(name.size());
  if (!number.empty() && (number[0] == '+' || number[0] == '-')) number.remove_prefix(1);
  std::size_t digits = 0;
  while (digits < number.size() && number[digits] >= '0' && number[digits] <= '9') ++digits;
  if (digits == 0) {
    found.add(Code::ValueDefaulted, at, quoted(word) + " has no number: it is read as " + read());
    return;
  }
  if (digits < number.size()) {
    found.add(Code::WordMisread, at, quoted(word) + " is read as " + read());
  } else if (value == INT_MAX || value == INT_MIN) {
    const std::string_view stripped = number.substr(std::min(number.find_first_not_of('0'), number.size()));
    if (stripped.size() >= 10 && stripped != std::to_string(value).substr(value < 0 ? 1 : 0)) {
      found.add(Code::ValueClamped, at,
                quoted(word) + " is beyond the numbers the reader keeps: it is read as " +
                    quoted(std::string(name) + std::to_string(value)));
    }
  }
  if (defaulted) found.add(Code::ValueDefaulted, at, quoted(word) + " asks for " + read());
}

void lintSorts(const Record& outline, Findings& found) {
  for (std::size_t s = 0; s < outline.sorts.size(); ++s) {
    const SortSetting& setting = outline.sorts[s];
    if (s + 1 < outline.sorts.size()) {
      const SortSetting& later = outline.sorts[s + 1];
      found.add(Code::OptionRepeated, setting.type,
                "this sort is replaced by the later " + quoted(outline.textOf(later.type)) + " at " +
                    atByte(later.type.start) +
                    (later.column < 0 ? ", which starts again from index 1 and " +
                                            std::to_string(NetworkKovaRequest::defaultMaxUpdates) + " updates"
                                      : std::string()));
    }
    const RecordWord* earlier[2] = {};
    for (std::uint32_t w = setting.firstWord; w < setting.firstWord + setting.wordCount; ++w) {
      const RecordWord& current = outline.words[w];
      const RecordWord*& previous = earlier[current.part == Part::Index ? 0 : 1];
      if (previous != nullptr) reportOverridden(outline, previous->span, outline.textOf(current.span), found);
      previous = &current;
      lintNumber(outline.textOf(current.span), current.span, current.part, found);
    }
  }
}

// ---------------------------------------------------------------------------
// "vl" request
// ---------------------------------------------------------------------------

void lintVirtualLink(const Record& outline, Findings& found) {
  for (std::size_t d = 0; d < outline.dataTypes.size(); ++d) {
    const DataTypeOption& option = outline.dataTypes[d];
    const std::string_view word = outline.textOf(option.option);
    const std::string_view type = outline.textOf(option.type);
    if (word != kDataTypeOption) {
      found.add(Code::WordMisread, option.option,
                quoted(word) + " contains " + quoted(kDataTypeOption) + ": the next word is read as the data type");
    }
    for (const Word<tLytpE2eDataType>& known : kDataTypes) {
      if (type[0] == known.text[0] && known.text.compare(0, type.size(), type) != 0) {
        found.add(Code::WordMisread, option.type,
                  quoted(type) + " is read as " + quoted(known.text) + ", by its first letter");
      }
    }
    if (d + 1 < outline.dataTypes.size()) {
      reportOverridden(outline, option.type, outline.textOf(outline.dataTypes[d + 1].type), found);
    }
  }
}

}  // namespace
}  // namespace detail

std::vector<Diagnostic> lint(const std::string& text) {
  return detail::lintReading(detail::readText(text, true, detail::Keep::Record));
}

namespace detail {

std::vector<Diagnostic> lintReading(const Reading& reading) {
  Findings found;
  lintInvisible(reading.record.text, found);
  if (!reading.accepted) return found.finish();
  const Record& outline = reading.record;
  if (outline.virtualLink) {
    lintVirtualLink(outline, found);
    return found.finish();
  }
  const Marks marks{outline.text.find(kDirectionSeparator) != std::string_view::npos,
                    outline.text.find(kEntitySeparator) != std::string_view::npos};
  lintFilter(outline, marks, found);
  for (const RecordColumn& key : outline.keys) {
    if (key.wordCount > 0) lintColumn(outline, key, true, marks, found);
  }
  for (const RecordColumn& value : outline.values) {
    if (value.wordCount > 0) lintColumn(outline, value, false, marks, found);
  }
  lintSorts(outline, found);
  return found.finish();
}

}  // namespace detail
}  // namespace lytFilterParser
