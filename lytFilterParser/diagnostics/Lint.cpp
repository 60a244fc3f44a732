#include "lytFilterParser/diagnostics/Lint.h"

#include <algorithm>
#include <climits>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <unordered_map>
#include <utility>

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

// Whether the 8 bytes at `p` are all printable ASCII (0x20 to 0x7E), eight
// at a time: a byte of 0x80 or more, below 0x20, or 0x7F sets its top bit.
bool printable8(const char* p) {
  constexpr std::uint64_t kOnes = 0x0101010101010101ull, kTops = 0x8080808080808080ull;
  std::uint64_t x;
  std::memcpy(&x, p, sizeof x);
  const std::uint64_t low = x - 0x20 * kOnes;            // borrows into the top bit of a byte below 0x20
  const std::uint64_t del = (x ^ 0x7F * kOnes) - kOnes;  // likewise for a byte equal to 0x7F
  return ((x | low | (del & ~(x ^ 0x7F * kOnes))) & kTops) == 0;
}

void lintInvisible(std::string_view text, Findings& found) {
  for (std::size_t i = 0; i < text.size();) {
    if (i + 8 <= text.size() && printable8(text.data() + i)) {  // most of any request
      i += 8;
      continue;
    }
    const unsigned char byte = static_cast<unsigned char>(text[i]);
    if (byte >= 0x20 && byte < 0x7F) {  // printable ASCII, most of any request
      ++i;
      continue;
    }
    const InvisibleCharacter first = invisibleAt(text, i);
    if (first.length == 0) {
      ++i;
      continue;
    }
    std::size_t end = i + first.length;
    for (InvisibleCharacter next = invisibleAt(text, end); next.length > 0; next = invisibleAt(text, end))
      end += next.length;
    found.add(Code::InvisibleCharacter, Span{i, end - i},
              codePointText(first.codePoint) + " (" + std::string(characterName(first.codePoint)) + ") inside " +
                  quoted(wordAround(text, i)) + ": it is part of the word; only a blank separates words");
    i = end;
  }
}

// ---------------------------------------------------------------------------
// names
// ---------------------------------------------------------------------------

enum class Place { Atom, Interfaces, Column };

// The words that mean something of their own where names stand, and what
// tells most names apart from all of them cheaply: their first byte and length.
struct Keywords {
  std::unordered_map<std::string_view, const lytFilterParser::Word*> words;
  bool firstByte[256] = {};
  std::size_t longest = 0;
};

const Keywords& keywords() {
  static const Keywords made = [] {
    Keywords list;
    for (const lytFilterParser::Word& word : vocabulary()) {
      switch (word.kind) {
        case WordKind::ValueType:
        case WordKind::FilterOperator:
        case WordKind::Negation:
        case WordKind::AccumulationMode:
        case WordKind::ColumnOption:
        case WordKind::SortInColumn:
        case WordKind::SortType:
          list.words.emplace(word.text, &word);
          list.firstByte[static_cast<unsigned char>(word.text[0])] = true;
          list.longest = std::max(list.longest, word.text.size());
          break;
        default: break;
      }
    }
    return list;
  }();
  return made;
}

const lytFilterParser::Word* keywordOf(std::string_view name) {
  const Keywords& known = keywords();
  if (name.empty() || name.size() > known.longest || !known.firstByte[static_cast<unsigned char>(name[0])])
    return nullptr;
  const auto found = known.words.find(name);
  return found == known.words.end() ? nullptr : found->second;
}

std::string atByte(std::size_t offset) { return "byte " + std::to_string(offset); }

void lintDirection(std::string_view item, Span at, Findings& found) {
  const std::size_t comma = item.find(kDirectionSeparator);
  if (comma == std::string_view::npos) return;
  if (comma + 1 == item.size()) {
    found.add(Code::WordMisread, at, quoted(item) + " has no direction after the comma: the whole word is the name");
    return;
  }
  const std::string_view suffix = item.substr(comma + 1);
  for (const Word<int>& direction : kDirections) {
    const bool same = suffix.size() == direction.text.size() &&
                      std::equal(suffix.begin(), suffix.end(), direction.text.begin(), [](char a, char b) {
                        return (a >= 'A' && a <= 'Z' ? static_cast<char>(a - 'A' + 'a') : a) == b;
                      });
    if (same) return;
  }
  const TavFilterDirType direction = itemDirection(suffix);
  const std::string shown =
      std::string(item.substr(0, comma)) +
      (direction == TAV_DIR_BOTH ? std::string(" (both directions)")
                                 : kDirectionSeparator + std::string(wordOf<int>(kDirections, direction)));
  found.add(Code::WordMisread, at, quoted(item) + " is read as " + shown + ", by the first letter of its direction");
}

// The name a duplicate is judged by: an entity without its resolved name,
// an interface item as written.
std::string_view nameKey(std::string_view word, Place place) {
  return place == Place::Interfaces ? word : word.substr(0, word.find(kEntitySeparator));
}

void lintDuplicates(const Record& outline, std::uint32_t first, std::uint32_t count, Place place, Findings& found) {
  const auto report = [&](std::uint32_t earlier, std::uint32_t later, std::string_view name) {
    found.add(Code::EntityDuplicate, outline.words[later].span,
              quoted(name) + " is named twice here (first at " + atByte(outline.words[earlier].span.start) + ")");
  };
  const auto key = [&](std::uint32_t w) { return nameKey(outline.textOf(outline.words[w].span), place); };
  if (count <= 16) {
    // Few names, as in most requests: compare them pairwise without a list,
    // each name's key found once.
    // Plain pairs, written only where used: an array of string_view would be cleared whole first.
    struct Key {
      const char* data;
      std::size_t size;
      std::string_view view() const { return std::string_view(data, size); }
    };
    Key keys[16];
    for (std::uint32_t w = 0; w < count; ++w) {
      const std::string_view name = outline.words[first + w].part == Part::Name ? key(first + w) : std::string_view();
      keys[w] = Key{name.data(), name.size()};
    }
    for (std::uint32_t later = 1; later < count; ++later) {
      if (keys[later].size == 0) continue;  // no name, or an empty one
      for (std::uint32_t earlier = 0; earlier < later; ++earlier) {
        if (keys[earlier].view() != keys[later].view()) continue;
        report(first + earlier, first + later, keys[later].view());
        break;
      }
    }
    return;
  }
  std::vector<std::pair<std::string_view, std::uint32_t>> names;
  for (std::uint32_t w = first; w < first + count; ++w) {
    if (outline.words[w].part == Part::Name) names.emplace_back(key(w), w);
  }
  std::stable_sort(names.begin(), names.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
  for (std::size_t i = 1; i < names.size(); ++i) {
    if (names[i].first == names[i - 1].first && !names[i].first.empty()) {
      report(names[i - 1].second, names[i].second, names[i].first);
    }
  }
}

void lintName(std::string_view word, Span at, Place place, Findings& found) {
  if (isChar(word, kOpenBracket) || isChar(word, kCloseBracket)) {
    found.add(Code::WordMisread, at, quoted(word) + " opens or closes nothing here and is read as a name");
    return;
  }
  const std::size_t separator =
      place == Place::Interfaces ? word.find(kDirectionSeparator) : word.find(kEntitySeparator);
  if (separator == 0 && (place != Place::Interfaces || word.size() > 1)) {
    found.add(Code::EntityEmpty, at, quoted(word) + " has an empty name");
  }
  if (place == Place::Interfaces) {
    lintDirection(word, at, found);
  } else if (word.find(kDirectionSeparator) != std::string_view::npos) {
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

void lintNames(const Record& outline, std::uint32_t first, std::uint32_t count, Place place, Findings& found) {
  bool comment = false;
  for (std::uint32_t w = first; w < first + count; ++w) {
    if (outline.words[w].part != Part::Name) continue;
    const Span at = outline.words[w].span;
    const std::string_view word = outline.textOf(at);
    if (!comment && firstChar(word) == '#') {
      comment = true;
      std::uint32_t last = w;
      while (last + 1 < first + count && outline.words[last + 1].part == Part::Name) ++last;
      found.add(Code::InlineComment, cover(at, outline.words[last].span),
                "\"#\" starts no comment: " + quoted(word) + " and the words after it are read as names");
    }
    lintName(word, at, place, found);
  }
  lintDuplicates(outline, first, count, place, found);
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

void lintFilterOptions(const Record& outline, Findings& found) {
  const auto& options = outline.filterOptions;
  if (options.empty()) return;
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

void reportUnsatisfiable(const Record& outline, const FilterNode& atom, Span last, Findings& found) {
  found.add(Code::FilterUnsatisfiable, atom.whole,
            quoted(outline.textOf(atom.whole)) + " requires what a filter joined to it by " +
                quoted(wordOf<FilterOperator>(kFilterOperators, FILTER_AND)) + " excludes (at " + atByte(last.start) +
                "): no traffic matches");
}

// Up to this many excluded names, as in ordinary requests, are looked up
// where the record holds them, without building maps.
constexpr std::size_t kFewExcluded = 32;

// lintConjunction for few excluded names: the first atom excluding a name
// is the one named, as in the maps.
void lintFewExcluded(const Record& outline, std::uint32_t n, Findings& found) {
  const FilterNode& node = outline.nodes[n];
  const auto excludedAt = [&](std::string_view type, std::string_view name, Span& at) {
    for (std::uint32_t child = n + 1; child < node.end; child = outline.nextSibling(child)) {
      const FilterNode& atom = outline.nodes[child];
      if (atom.compound || atom.negation.length == 0 || outline.textOf(atom.head) != type) continue;
      for (std::uint32_t w = atom.firstWord; w < atom.firstWord + atom.wordCount; ++w) {
        if (outline.textOf(outline.words[w].span) != name) continue;
        at = outline.words[w].span;
        return true;
      }
    }
    return false;
  };
  for (std::uint32_t child = n + 1; child < node.end; child = outline.nextSibling(child)) {
    const FilterNode& atom = outline.nodes[child];
    if (atom.compound || atom.negation.length > 0 || atom.wordCount == 0) continue;
    const std::string_view type = outline.textOf(atom.head);
    Span last{};
    bool all = true;
    for (std::uint32_t w = atom.firstWord; all && w < atom.firstWord + atom.wordCount; ++w) {
      all = excludedAt(type, outline.textOf(outline.words[w].span), last);
    }
    if (all) reportUnsatisfiable(outline, atom, last, found);
  }
}

// An "and" of atoms that one atom requires a name of a type and another
// excludes for the same type cannot match: every name an atom allows is
// excluded. Different names prove nothing (a name may be a subnet or a
// module holding the other).
void lintConjunction(const Record& outline, std::uint32_t n, Findings& found) {
  const FilterNode& node = outline.nodes[n];
  const std::string_view op = n == 0 && node.head.length == 0 ? std::string_view() : outline.textOf(node.head);
  const FilterOperator* code = codeOf<FilterOperator>(kFilterOperators, op);
  if (node.childCount < 2 || (code != nullptr && *code != FILTER_AND)) return;
  std::size_t excludedNames = 0;
  for (std::uint32_t child = n + 1; child < node.end; child = outline.nextSibling(child)) {
    const FilterNode& atom = outline.nodes[child];
    if (!atom.compound && atom.negation.length > 0) excludedNames += atom.wordCount;
  }
  if (excludedNames == 0) return;
  if (excludedNames <= kFewExcluded) {
    lintFewExcluded(outline, n, found);
    return;
  }
  // The names each atom type excludes: the type word and the name.
  std::unordered_map<std::string_view, std::unordered_map<std::string_view, Span>> excluded;
  for (std::uint32_t child = n + 1; child < node.end; child = outline.nextSibling(child)) {
    const FilterNode& atom = outline.nodes[child];
    if (atom.compound || atom.negation.length == 0) continue;
    auto& names = excluded[outline.textOf(atom.head)];
    for (std::uint32_t w = atom.firstWord; w < atom.firstWord + atom.wordCount; ++w) {
      names.emplace(outline.textOf(outline.words[w].span), outline.words[w].span);
    }
  }
  if (excluded.empty()) return;
  for (std::uint32_t child = n + 1; child < node.end; child = outline.nextSibling(child)) {
    const FilterNode& atom = outline.nodes[child];
    if (atom.compound || atom.negation.length > 0 || atom.wordCount == 0) continue;
    const auto type = excluded.find(outline.textOf(atom.head));
    if (type == excluded.end()) continue;
    Span last{};
    bool all = true;
    for (std::uint32_t w = atom.firstWord; all && w < atom.firstWord + atom.wordCount; ++w) {
      const auto name = type->second.find(outline.textOf(outline.words[w].span));
      all = name != type->second.end();
      if (all) last = name->second;
    }
    if (all) reportUnsatisfiable(outline, atom, last, found);
  }
}

void lintFilter(const Record& outline, Findings& found) {
  lintFilterOptions(outline, found);
  if (outline.nodes[0].childCount == 0) {
    for (const FilterOption& option : outline.filterOptions) {
      if (option.op.length > 0) {
        found.add(Code::OperatorIgnored, option.whole,
                  quoted(outline.textOf(option.op)) + " has no filter in it and is ignored");
      }
    }
  }
  for (std::uint32_t n = 0; n < outline.nodes.size(); ++n) {
    const FilterNode& node = outline.nodes[n];
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
      lintNames(outline, node.firstWord, node.wordCount, node.interface ? Place::Interfaces : Place::Atom, found);
    }
  }
}

// ---------------------------------------------------------------------------
// columns
// ---------------------------------------------------------------------------

void lintColumnOption(std::string_view word, const RecordWord& current, const RecordWord*& earlier, Findings& found,
                      const Record& outline) {
  const Span at = current.span;
  const std::size_t option = current.option;
  const Word<int>* value = &kColumnOptions[option].values[current.value];
  const std::string_view name = kColumnOptions[option].name;
  const bool exact = value != nullptr && word.size() == name.size() + value->text.size() &&
                     word.compare(0, name.size(), name) == 0 &&
                     word.compare(name.size(), value->text.size(), value->text) == 0;
  if (value != nullptr && !exact) {
    found.add(Code::WordMisread, at, quoted(word) + " is read as " + quoted(columnOptionWord(option, value->code)));
  }
  if (earlier != nullptr) {
    found.add(Code::OptionRepeated, earlier->span,
              quoted(outline.textOf(earlier->span)) + " is overridden by the later " + quoted(word));
  }
}

void lintColumn(const Record& outline, const RecordColumn& column, bool key, Findings& found) {
  const RecordWord* accumulation = nullptr;
  const RecordWord* options[COLUMN_OPTION_COUNT] = {};
  for (std::uint32_t w = column.firstWord; w < column.firstWord + column.wordCount; ++w) {
    const RecordWord& current = outline.words[w];
    const std::string_view word = outline.textOf(current.span);
    if (current.part == Part::Accumulation) {
      if (accumulation != nullptr) {
        found.add(Code::OptionRepeated, accumulation->span,
                  quoted(outline.textOf(accumulation->span)) + " is overridden by the later " + quoted(word));
      }
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
      const std::size_t option = current.option;
      lintColumnOption(word, current, options[option], found, outline);
      options[option] = &current;
    }
  }
  lintNames(outline, column.firstWord, column.wordCount, Place::Column, found);
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
  const std::size_t digits = std::min(number.size(), number.find_first_not_of("0123456789"));
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
      if (previous != nullptr) {
        found.add(Code::OptionRepeated, previous->span,
                  quoted(outline.textOf(previous->span)) + " is overridden by the later " +
                      quoted(outline.textOf(current.span)));
      }
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
      found.add(Code::OptionRepeated, option.type,
                quoted(type) + " is overridden by the later " + quoted(outline.textOf(outline.dataTypes[d + 1].type)));
    }
  }
}

}  // namespace
}  // namespace detail

std::vector<Diagnostic> lint(const std::string& text) {
  return detail::lintReading(detail::readText(text, true, true));
}

namespace detail {

std::vector<Diagnostic> lintReading(const Reading& reading) {
  Findings found;
  lintInvisible(reading.record.text, found);
  if (!reading.request) return found.finish();
  const Record& outline = reading.record;
  if (outline.virtualLink) {
    lintVirtualLink(outline, found);
    return found.finish();
  }
  lintFilter(outline, found);
  for (const RecordColumn& key : outline.keys) lintColumn(outline, key, true, found);
  for (const RecordColumn& value : outline.values) lintColumn(outline, value, false, found);
  lintSorts(outline, found);
  return found.finish();
}

}  // namespace detail
}  // namespace lytFilterParser
