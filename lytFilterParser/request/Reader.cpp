// The request syntax, read. Every rule of the current syntax is here, in
// the order of the grammar, over any token sequence (Reader.h); the public
// parsing constructors and parse functions of the classes run these rules
// on a caller's strList.
//
//   request       = { "-f" filter-option | "-k" column | "-v" column | "-s" sort } ;
//   filter-option = compound | atom { "-f" ( compound | atom ) } ;
//                   (* a bare atom list: "-f A -f B" reads as "-f and [ -f A -f B ]" *)
//   compound      = operator [ "[" ] { "-f" ( compound | atom ) } [ "]" ] ;
//                   (* "]" exactly when "[" was given *)
//   operator      = "and" | "or" | "AND" | "OR" ;
//   atom          = "interface" [ negation ] { item } | type [ negation ] { entity } ;
//   negation      = "not" | "NOT" ;
//   item          = NAME [ "," direction ] ;          (* direction by its first letter *)
//   entity        = NAME [ "<>" RESOLVED ] ;         (* entities run to a "-..." word or "]" *)
//   column        = type { acc | sort-word | column-option | entity { entity } } ;
//   acc           = any word containing "acc", exactly one of "acc=replace" ... ;
//   sort-word     = any word containing "sort" ("sort=top", "sort=bottom" sort by this value) ;
//   column-option = any word containing "dir=", "enc=", "comp=", "cprint=" or "url_mod=" ;
//   sort          = ( "top" | "bottom" | "none" ) { word containing "index=" or "updates=" } ;
//   vl-request    = "vl" NAME { WORD | word containing "-t" data-type } ;
//   data-type     = word starting "w" (wire) or "a" (application) ;
//
// Which words fill these places is the vocabulary's (vocab/). A fault is a
// message thrown through Assert; the cursor then stands on the word the
// message names, or at the end when the message says a word is missing;
// a reader with a record keeps there the kinds of word it would have taken.
#include "lytFilterParser/request/Reader.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "lytFilterParser/column/TavColumn.h"
#include "lytFilterParser/column/TavColumnFilter.h"
#include "lytFilterParser/detail/SmallStack.h"
#include "lytFilterParser/detail/Text.h"
#include "lytFilterParser/entity/TavEntity.h"
#include "lytFilterParser/entity/TavEntityArray.h"
#include "lytFilterParser/filter/AtomFilter.h"
#include "lytFilterParser/filter/ContentFilter.h"
#include "lytFilterParser/filter/ContentFilterBase.h"
#include "lytFilterParser/filter/Filter.h"
#include "lytFilterParser/filter/InterfaceAtomFilter.h"
#include "lytFilterParser/filter/InterfaceInfo.h"
#include "lytFilterParser/request/E2EKovaRequest.h"
#include "lytFilterParser/request/LegacyTranslator.h"
#include "lytFilterParser/request/NetworkKovaRequest.h"
#include "lytFilterParser/vocab/Syntax.h"
#include "lytFilterParser/vocab/ValueTypeTable.h"

namespace lytFilterParser {
namespace detail {

namespace {

constexpr std::string_view kNoType = "Expected type at this point but there is no data";

// The kinds of word that stand where a rule refuses one: an option, after
// a sort's type a sort option or the option that ends its words, and after
// "-f" a filter's type or operator.
constexpr WordKinds kOption = kindBit(WordKind::Option);
constexpr WordKinds kAfterSort = kOption | kindBit(WordKind::SortOption);
constexpr WordKinds kFilterHead = kindBit(WordKind::ValueType) | kindBit(WordKind::FilterOperator);

// Ends a run of entities or interface items.
bool endsItems(std::string_view token) { return firstChar(token) == '-' || isChar(token, kCloseBracket); }

std::uint32_t countOf(std::size_t size) { return static_cast<std::uint32_t>(size); }

// Runs `rule` on `target` with a reader of its own and throws the reader's
// fault through Assert when the rule refuses: the public parsing members.
template <class Target, class... Params, class... Args>
void must(bool (Reader::*rule)(Target&, strList&, Params...), Target& target, strList& tokens, Args&&... args) {
  Reader reader;
  if (!(reader.*rule)(target, tokens, std::forward<Args>(args)...)) fail(std::move(reader.fault));
}

}  // namespace

bool Reader::refuse(std::string_view message, WordKinds expected) {
  // Only a reader with a record keeps what it expected: the entry points pay nothing for it.
  if (record != nullptr) record->expected = expected;
  fault.assign(message.data(), message.size());
  return false;
}

bool Reader::refuse(std::string_view head, std::string_view token, WordKinds expected) {
  fault.reserve(head.size() + token.size());
  refuse(head, expected);
  fault.append(token.data(), token.size());
  return false;
}

// ---------------------------------------------------------------------------
// the record
// ---------------------------------------------------------------------------

std::uint32_t Reader::addNode(std::uint32_t parent, bool compound, Span option, Span head) {
  ++record->nodes[parent].childCount;
  record->nodes.push_back(FilterNode{option, head, Span{}, compound});
  return countOf(record->nodes.size() - 1);
}

void Reader::finishNode(std::uint32_t node, Span next) {
  record->nodes[node].whole = upTo(record->nodes[node].whole, next);
  record->nodes[node].end = countOf(record->nodes.size());
}

// From `from` to the last word read before the token at `next`: only blanks
// stand between them.
Span Reader::upTo(Span from, Span next) const {
  std::size_t end = next.start;
  while (end > from.end() && record->text[end - 1] == ' ') --end;
  return end > from.end() ? Span{from.start, end - from.start} : from;
}

// ---------------------------------------------------------------------------
// request
// ---------------------------------------------------------------------------

template <class Tokens>
bool Reader::request(NetworkKovaRequest& request, Tokens& tokens, Iter<Tokens>& cur) {
  // Where the bare atom lists read so far end: the first option that is not
  // "-f". Nothing but this loop reads past it, so it holds until the loop
  // takes another option.
  ListEnd<Tokens> listEnd{tokens.end(), false};
  if (recording<Tokens>) {
    record->nodes.push_back(FilterNode{});
    record->nodes[0].compound = true;
  }
  // A column as recorded: its option, its type and the words from `first`
  // on, every word it read after its type.
  const auto recordColumn = [&](RecordColumns& list, Span option, Span type, std::uint32_t first) {
    const std::uint32_t count = countOf(record->words.size()) - first;
    list.push_back(
        RecordColumn{option, type, cover(option, count > 0 ? record->words.back().span : type), first, count});
  };
  WordKinds expected = kOption;
  while (cur != tokens.end()) {
    const std::string_view option = *cur;
    if (option.size() != 2 || option[0] != '-' || optionWord(RequestOption(option[1])).empty()) {
      return refuse("Invalid option: ", option, expected);
    }
    if (option[1] != OPTION_FILTER) listEnd.known = false;
    const Span at = recording<Tokens> ? spanAt(tokens, cur) : Span{};
    const std::uint32_t first = recording<Tokens> ? countOf(record->words.size()) : 0;
    ++cur;
    // The column's or the sort's type word.
    const Span type = recording<Tokens> ? spanAt(tokens, cur) : Span{};
    bool read = true;
    switch (option[1]) {
      case OPTION_KEY:
      case OPTION_VALUE: {
        const bool key = option[1] == OPTION_KEY;
        std::string sortOption;
        TavColumn column(key ? TAV_KEY : TAV_VALUE);
        read = Reader::column(column, tokens, cur, sortOption);
        if (!read) break;
        if (building<Tokens>) (key ? request.keys : request.values).push_back(std::move(column));
        if (recording<Tokens>) recordColumn(key ? record->keys : record->values, at, type, first);
        // A key's sort word sorts nothing.
        const TavSortType sorted =
            key || sortOption.empty() ? TAV_SORT_NONE : NetworkKovaRequest::getSortType(sortOption);
        if (sorted != TAV_SORT_NONE) {
          request.sortType = sorted;
          request.sortIndex = static_cast<int>(request.values.size());
        }
        break;
      }
      case OPTION_SORT:
        read = sort(request, tokens, cur);
        if (read && recording<Tokens>) {
          record->sorts.push_back(SortSetting{at, type, -1, first, countOf(record->words.size()) - first});
        }
        break;
      case OPTION_FILTER: read = filterOption(request, tokens, cur, listEnd, at); break;
    }
    if (!read) return false;
    expected = option[1] == OPTION_SORT ? kAfterSort : kOption;
  }
  if (recording<Tokens>) {
    record->nodes[0].end = countOf(record->nodes.size());
    const auto& options = record->filterOptions;
    if (!options.empty()) record->nodes[0].whole = cover(options.front().option, options.back().whole);
  }
  return true;
}

template <class Tokens>
bool Reader::legacyRequest(NetworkKovaRequest& request, Tokens& tokens, TavVersion version) {
  const unsigned peer = static_cast<unsigned>(version);
  if (peer == TAV_VERSION_CURRENT) {
    Iter<Tokens> cur = tokens.begin();
    return Reader::request(request, tokens, cur);
  }
  if (peer > TAV_VERSION_CURRENT) return refuse("NetworkKovaRequest: Invalid version");
  if (peer == TAV_VERSION_UNSUPPORTED) return true;
  WordTokens translated;
  if (!translateLegacy(tokens, translated, fault)) return false;
  WordTokens::iterator cur = translated.begin();
  return Reader::request(request, translated, cur);
}

// ---------------------------------------------------------------------------
// filter tree
// ---------------------------------------------------------------------------

template <class Tokens>
bool Reader::filterOption(NetworkKovaRequest& request, Tokens& tokens, Iter<Tokens>& cur, ListEnd<Tokens>& listEnd,
                          Span option) {
  if (cur == tokens.end()) return refuse(kNoType);
  FilterOption* const recorded =
      recording<Tokens> ? &record->filterOptions.push_back(FilterOption{option, Span{}, option}) : nullptr;
  if (isOperatorWord(*cur)) {
    if (recorded != nullptr) record->nodes[0].head = recorded->op = spanAt(tokens, cur);
    const bool read = compound(request.filter, tokens, cur);
    if (recorded != nullptr) recorded->whole = upTo(option, spanAt(tokens, cur));
    return read;
  }
  if (recorded != nullptr) record->nodes[0].head = Span{};
  // A bare atom list: "-f A ... -f B ..." is read as "-f and [ -f A ... -f B ... ]",
  // one conjunction of every consecutive atom. Only the closing "]" goes into
  // the list, before the first option that is not "-f": the readers of the
  // atoms and of nested filters stop there. The "and" and the "[" are implied,
  // and the conjunction starts at the "-f" just consumed.
  const auto endsList = [&](const Iter<Tokens>& at) {
    return at == tokens.end() || (firstChar(*at) == '-' && !isOption(*at, OPTION_FILTER));
  };
  Iter<Tokens> close = cur;
  if (!endsList(cur)) {
    // A list closed early by a "]" of the text leaves the reader before the
    // same option as the list before it: look for that option only once, so
    // that many such lists do not walk the rest of the text each.
    if (listEnd.known) {
      close = listEnd.at;
    } else {
      do ++close;
      while (!endsList(close));
      listEnd = ListEnd<Tokens>{close, true};
    }
  }
  const Iter<Tokens> bracket = tokens.insert(close, std::string(1, kCloseBracket));
  // With no atom text at all, the bracket is what the atom reader meets.
  if (close == cur) cur = bracket;
  // The "-f" itself is not read again: the conjunction's first atom is the
  // one under the cursor.
  Filter& root = request.filter;
  root.filterOperator = FILTER_AND;
  std::unique_ptr<AtomFilter> first = atom(tokens, cur, 0, option);
  if (!first) return false;
  if (building<Tokens>) {
    if (root.children.capacity() == 0) root.children.reserve(4);
    root.children.push_back(std::move(first));
  }
  const bool read = children(root, tokens, cur, true);
  if (recorded != nullptr) recorded->whole = upTo(option, spanAt(tokens, cur));
  return read;
}

template <class Tokens>
bool Reader::compound(Filter& filter, Tokens& tokens, Iter<Tokens>& cur) {
  if (!filterOperator(filter, tokens, cur)) return false;
  const bool bracketed = cur != tokens.end() && isChar(*cur, kOpenBracket);
  if (bracketed) ++cur;
  return children(filter, tokens, cur, bracketed);
}

template <class Tokens>
bool Reader::filterOperator(Filter& filter, Tokens& tokens, Iter<Tokens>& cur) {
  const std::string_view token = cur == tokens.end() ? std::string_view() : std::string_view(*cur);
  const FilterOperator* op = codeOf<FilterOperator>(kFilterOperators, token);
  if (op == nullptr) return refuse("Not a valid operator: ", token, kindBit(WordKind::FilterOperator));
  filter.filterOperator = *op;
  ++cur;
  return true;
}

namespace {

// A compound filter being read: its owner until it is complete and goes to
// its parent (nullptr for the one the caller gave), whether it ends at a "]",
// and its node in the record (the caller's is the root, node 0).
struct OpenFilter {
  std::unique_ptr<Filter> owner;
  Filter* filter;
  bool bracketed;
  std::uint32_t node;
};

}  // namespace

template <class Tokens>
bool Reader::children(Filter& filter, Tokens& tokens, Iter<Tokens>& cur, bool bracketed) {
  // The compound filters still open stand on a stack of their own, not on
  // frames of this function, so that any depth reads in constant stack
  // space. A complete filter joins its parent only then, so a fault leaves
  // the parent as far as it was read.
  OpenFilter open{nullptr, &filter, bracketed, 0};
  SmallStack<OpenFilter, 8> outer;
  for (;;) {
    if (cur != tokens.end() && isOption(*cur, OPTION_FILTER)) {
      const Span option = recording<Tokens> ? spanAt(tokens, cur) : Span{};
      ++cur;
      // Most compound filters hold two or a few children: one allocation for them.
      if (open.filter->children.capacity() == 0) open.filter->children.reserve(4);
      if (cur != tokens.end() && isOperatorWord(*cur)) {
        std::unique_ptr<Filter> inner(new Filter());
        std::uint32_t node = 0;
        if (recording<Tokens>) node = addNode(open.node, true, option, spanAt(tokens, cur));
        filterOperator(*inner, tokens, cur);
        const bool innerBracketed = cur != tokens.end() && isChar(*cur, kOpenBracket);
        if (innerBracketed) ++cur;
        outer.push(std::move(open));
        Filter* const raw = inner.get();
        open = OpenFilter{std::move(inner), raw, innerBracketed, node};
        continue;
      }
      std::unique_ptr<AtomFilter> child = atom(tokens, cur, open.node, option);
      if (!child) return false;
      if (building<Tokens>) open.filter->children.push_back(std::move(child));
      continue;
    }
    if (open.bracketed) {
      if (cur == tokens.end()) return refuse("`]` expected");
      const std::string_view token = *cur;
      if (!isChar(token, kCloseBracket)) return refuse("`]` expected instead of: ", token);
      ++cur;
    }
    if (recording<Tokens> && open.node != 0) finishNode(open.node, spanAt(tokens, cur));
    if (outer.empty()) return true;
    std::unique_ptr<Filter> complete = std::move(open.owner);
    open = outer.pop();
    if (building<Tokens>) open.filter->children.push_back(std::move(complete));
  }
}

template <class Tokens>
std::unique_ptr<AtomFilter> Reader::atom(Tokens& tokens, Iter<Tokens>& cur) {
  // At the end, the content reader refuses the missing type.
  if (cur != tokens.end() && *cur == kValueTypes[TAV_INTERFACE].keyword) {
    std::unique_ptr<InterfaceAtomFilter> filter(new InterfaceAtomFilter(InterfaceInfoList(), false));
    interfaceFilter(*filter, tokens, cur, record);
    return filter;
  }
  std::unique_ptr<ContentFilter> filter(new ContentFilter(TAV_NO_TYPE, false, TavEntityArray()));
  if (!content(*filter, tokens, cur)) return nullptr;
  return filter;
}

template <class Tokens>
std::unique_ptr<AtomFilter> Reader::atom(Tokens& tokens, Iter<Tokens>& cur, std::uint32_t parent, Span option) {
  if (!recording<Tokens> || cur == tokens.end()) return atom(tokens, cur);
  // The node stands last while the atom is read: its negation and its
  // names are recorded as they are read (negation, entities, interfaces).
  const std::uint32_t node = addNode(parent, false, option, spanAt(tokens, cur));
  const std::uint32_t firstWord = countOf(record->words.size());
  std::unique_ptr<AtomFilter> made = atom(tokens, cur);
  if (!made) return made;
  FilterNode& recorded = record->nodes[node];
  recorded.firstWord = firstWord;
  recorded.wordCount = countOf(record->words.size()) - firstWord;
  // It ends at its last name, its negation or its type word.
  const Span& negation = recorded.negation.length > 0 ? recorded.negation : recorded.head;
  recorded.whole = cover(option, recorded.wordCount > 0 ? record->words.back().span : negation);
  recorded.end = node + 1;
  return made;
}

template <class Tokens>
void Reader::negation(AtomFilter& filter, Tokens& tokens, Iter<Tokens>& cur, Record* record) {
  filter.negation = cur != tokens.end() && isNegation(*cur);
  if (!filter.negation) return;
  if (recording<Tokens>) record->nodes.back().negation = spanAt(tokens, cur);
  ++cur;
}

template <class Tokens>
bool Reader::content(ContentFilterBase& filter, Tokens& tokens, Iter<Tokens>& cur) {
  if (cur == tokens.end()) return refuse(kNoType);
  const ValueTypeRow* type = findValueType(*cur);
  if (type == nullptr) return refuse("Invalid type: ", *cur, kFilterHead);
  filter.filterType = type->type;
  ++cur;
  negation(filter, tokens, cur, record);
  entities(filter.entities, tokens, cur, record);
  return true;
}

template <class Tokens>
void Reader::interfaceFilter(InterfaceAtomFilter& filter, Tokens& tokens, Iter<Tokens>& cur, Record* record) {
  // The factory chose this class by the keyword under the cursor.
  if (cur != tokens.end()) ++cur;
  if (recording<Tokens>) record->nodes.back().interface = true;
  negation(filter, tokens, cur, record);
  interfaces(filter, tokens, cur, record);
}

template <class Tokens>
void Reader::interfaces(InterfaceAtomFilter& filter, Tokens& tokens, Iter<Tokens>& cur, Record* record) {
  for (; cur != tokens.end() && !endsItems(*cur); ++cur) {
    if (recording<Tokens>) record->words.push_back(RecordWord{spanAt(tokens, cur), Part::Name});
    if (!building<Tokens>) continue;
    InterfaceInfo item(std::string(), TAV_DIR_BOTH);
    interfaceInfo(item, tokens, cur);
    filter.interfaces.push_back(std::move(item));
  }
}

template <class Tokens>
void Reader::interfaceInfo(InterfaceInfo& item, Tokens& tokens, Iter<Tokens>& cur) {
  if (cur == tokens.end()) return;
  const std::string_view token = *cur;
  const std::size_t separator = token.find(kDirectionSeparator);
  const bool directed = separator != std::string_view::npos && separator + 1 < token.size();
  if (directed) item.direction = itemDirection(token.substr(separator + 1));
  item.name.assign(token.data(), directed ? separator : token.size());
}

template <class Tokens>
void Reader::entities(TavEntityArray& array, Tokens& tokens, Iter<Tokens>& cur, Record* record) {
  // Count first so that a long run of entities is stored without regrowth;
  // the count's walk records them.
  std::size_t count = 0;
  Iter<Tokens> scan = cur;
  for (; scan != tokens.end() && !endsItems(*scan); ++scan) {
    if (recording<Tokens>) record->words.push_back(RecordWord{spanAt(tokens, scan), Part::Name});
    ++count;
  }
  if (!building<Tokens>) cur = scan;
  if (count == 0 || !building<Tokens>) return;
  std::vector<TavEntity>& list = array.entities;
  const std::size_t needed = list.size() + count;
  if (needed > list.capacity()) list.reserve(std::max(needed, 2 * list.capacity()));
  // Each entity is made empty in place and filled: no strings built and moved.
  for (; count > 0; --count, ++cur) entity(list.emplace_back(), *cur);
}

void Reader::entity(TavEntity& entity, std::string_view text) {
  const std::size_t at = text.find(kEntitySeparator);
  entity.name.assign(text.data(), std::min(at, text.size()));
  if (at == std::string_view::npos) return;
  const std::size_t rest = at + kEntitySeparator.size();
  entity.resolvedName.assign(text.data() + rest, text.size() - rest);
}

// ---------------------------------------------------------------------------
// columns
// ---------------------------------------------------------------------------

namespace {

// Whether `token` contains `name` anywhere. Every option name ends with "=",
// so only the places of "=" in the token need a look.
bool containsOptionName(std::string_view token, std::string_view name) {
  for (std::size_t at = token.find('=', name.size() - 1); at != std::string_view::npos; at = token.find('=', at + 1)) {
    if (token.compare(at + 1 - name.size(), name.size(), name) == 0) return true;
  }
  return false;
}

bool containsWord(std::string_view token, std::string_view word) { return token.find(word) != std::string_view::npos; }

}  // namespace

template <class Tokens>
bool Reader::column(TavColumn& column, Tokens& tokens, Iter<Tokens>& cur, std::string& sortOption) {
  if (cur == tokens.end()) return refuse(kNoType);
  const ValueTypeRow* type = findValueType(*cur);
  if (type == nullptr) return refuse("Invalid type: ", *cur, kindBit(WordKind::ValueType));
  column.valueType = type->type;
  ++cur;
  while (cur != tokens.end()) {
    const std::string_view token = *cur;
    if (firstChar(token) == '-') break;
    if (containsWord(token, kAccumulationName)) {
      const Span at = recording<Tokens> ? spanAt(tokens, cur) : Span{};
      if (!accumulation(column, tokens, cur)) return false;
      if (recording<Tokens>) record->words.push_back(RecordWord{at, Part::Accumulation});
    } else if (containsWord(token, kSortColumnName)) {
      sortOption.assign(token.data(), token.size());
      if (recording<Tokens>) {
        const Span at = spanAt(tokens, cur);
        // Every sort word of a value column that names a sort sets it, until a later one does.
        if (column.keyOrValue == TAV_VALUE && NetworkKovaRequest::getSortType(sortOption) != TAV_SORT_NONE) {
          record->sorts.push_back(SortSetting{at, at, static_cast<int>(record->values.size()), 0, 0});
        }
        record->words.push_back(RecordWord{at, Part::SortWord});
      }
      ++cur;
    } else if (token.find('=') != std::string_view::npos) {
      if (!columnFilter(column.columnFilter, tokens, cur)) return false;
    } else {
      entities(column.entities, tokens, cur, record);
      // A bracket that closes nothing here stays with the column as an entity.
      if (cur != tokens.end() && isChar(*cur, kCloseBracket)) {
        if (building<Tokens>) column.entities.add(TavEntity(std::string(1, kCloseBracket)));
        if (recording<Tokens>) record->words.push_back(RecordWord{spanAt(tokens, cur), Part::Name});
        ++cur;
      }
    }
  }
  return true;
}

template <class Tokens>
bool Reader::accumulation(TavColumn& column, Tokens& tokens, Iter<Tokens>& cur) {
  if (cur == tokens.end()) return refuse(kNoType);
  const std::string_view token = *cur;
  const TavAccType* acc = codeOf<TavAccType>(kAccumulationModes, token);
  if (acc == nullptr) return refuse("Invalid accumulation mode: ", token, kindBit(WordKind::AccumulationMode));
  column.accType = *acc;
  ++cur;
  return true;
}

template <class Tokens>
bool Reader::columnFilter(TavColumnFilter& filter, Tokens& tokens, Iter<Tokens>& cur) {
  if (cur == tokens.end()) return refuse("Error: Expected end of line");
  const std::string_view token = *cur;
  for (std::size_t o = 0; o < COLUMN_OPTION_COUNT; ++o) {
    const ColumnOption& option = kColumnOptions[o];
    if (!containsOptionName(token, option.name)) continue;
    for (std::size_t v = 0; v < option.values.size(); ++v) {
      const Word<int>& value = option.values[v];
      if (token.find(value.text, option.valueFrom) != std::string_view::npos) {
        filter.options[TavColumnFilter::kSlot[o]] = value.code;
        if (recording<Tokens>) {
          record->words.push_back(RecordWord{spanAt(tokens, cur), Part::ColumnOption, static_cast<unsigned char>(o),
                                             static_cast<unsigned char>(v)});
        }
        ++cur;
        return true;
      }
    }
    return refuse(option.message, kindBit(WordKind::ColumnOption));
  }
  return refuse("Expected filter type", kindBit(WordKind::ColumnOption));
}

template <class Tokens>
bool Reader::sort(NetworkKovaRequest& request, Tokens& tokens, Iter<Tokens>& cur) {
  if (cur == tokens.end()) return refuse("Sort type expected");
  const std::string_view word = *cur;
  const TavSortType* type = codeOf<TavSortType>(kSortTypes, word);
  if (type == nullptr) return refuse("Invalid sort type: ", word, kindBit(WordKind::SortType));
  request.sortType = *type;
  ++cur;
  request.sortIndex = 1;
  request.maxUpdates = NetworkKovaRequest::defaultMaxUpdates;
  const std::string_view index = kSortOptions[SORT_INDEX].text;
  const std::string_view updates = kSortOptions[SORT_UPDATES].text;
  for (; cur != tokens.end() && firstChar(*cur) != '-'; ++cur) {
    const std::string_view option = *cur;
    // The number is read from where the name would stand at the start.
    if (containsWord(option, index)) {
      request.sortIndex = readInt(option, index.size());
      if (recording<Tokens>) record->words.push_back(RecordWord{spanAt(tokens, cur), Part::Index});
    } else if (containsWord(option, updates)) {
      if (recording<Tokens>) record->words.push_back(RecordWord{spanAt(tokens, cur), Part::Updates});
      const int count = readInt(option, updates.size());
      request.maxUpdates = count > 0 ? count : NetworkKovaRequest::defaultMaxUpdates;
    } else {
      return refuse("Invalid option: ", option, kAfterSort);
    }
  }
  return true;
}

// ---------------------------------------------------------------------------
// end-to-end request
// ---------------------------------------------------------------------------

template <class Tokens>
bool Reader::virtualLink(E2EKovaRequest& request, Tokens& tokens, Iter<Tokens>& cur) {
  if (cur == tokens.end()) return refuse("No virtual link name after vl");
  const std::string_view name = *cur;
  request.vlName.assign(name.data(), name.size());
  if (recording<Tokens>) record->vlName = spanAt(tokens, cur);
  ++cur;
  return virtualLinkOptions(request, tokens, cur);
}

template <class Tokens>
bool Reader::virtualLinkOptions(E2EKovaRequest& request, Tokens& tokens, Iter<Tokens>& cur) {
  for (; cur != tokens.end(); ++cur) {
    // The option counts where a token's first "-" starts it.
    const std::string_view token = *cur;
    const std::size_t dash = token.find(kDataTypeOption[0]);
    if (dash != std::string_view::npos && token.compare(dash, kDataTypeOption.size(), kDataTypeOption) == 0) {
      const Span option = recording<Tokens> ? spanAt(tokens, cur) : Span{};
      ++cur;
      if (!dataType(request, tokens, cur)) return false;
      if (recording<Tokens>) record->dataTypes.push_back(DataTypeOption{option, spanAt(tokens, cur)});
    }
  }
  return true;
}

template <class Tokens>
bool Reader::dataType(E2EKovaRequest& request, Tokens& tokens, Iter<Tokens>& cur) {
  if (cur == tokens.end()) return refuse("No data after direction argument");
  const char first = firstChar(*cur);
  for (const Word<tLytpE2eDataType>& type : kDataTypes) {
    if (first == type.text[0]) {
      request.dataType = type.code;
      return true;
    }
  }
  return refuse("Not a valid argument for dataType", kindBit(WordKind::VirtualLink));
}

// The entry points read the text in place.
template std::unique_ptr<LYTKovaRequest> Reader::whole<TextTokens>(TextTokens&, TextTokens::iterator&, bool);
template bool Reader::legacyRequest<TextTokens>(NetworkKovaRequest&, TextTokens&, TavVersion);
// The diagnostics read a legacy line's translation themselves, to know where a fault stands.
template bool Reader::request<WordTokens>(NetworkKovaRequest&, WordTokens&, WordTokens::iterator&);

template <class Tokens>
std::unique_ptr<LYTKovaRequest> Reader::whole(Tokens& tokens, Iter<Tokens>& cur, bool virtualLinks) {
  if (cur == tokens.end()) return nullptr;
  if (virtualLinks && *cur == kVirtualLinkWord) {
    if (record != nullptr) record->virtualLink = true;
    ++cur;
    std::unique_ptr<E2EKovaRequest> request(new E2EKovaRequest(std::string(), E2E_DATA_WIRE));
    if (virtualLink(*request, tokens, cur)) return request;
  } else {
    std::unique_ptr<NetworkKovaRequest> request(new NetworkKovaRequest());
    if (Reader::request(*request, tokens, cur)) return request;
  }
  return nullptr;
}

template <class Tokens>
void Reader::read(Reading& reading, bool virtualLinks) {
  Tokens tokens(reading.record.text);
  Iter<Tokens> cur = tokens.begin();
  record = &reading.record;
  std::unique_ptr<LYTKovaRequest> request = whole(tokens, cur, virtualLinks);
  reading.accepted = request != nullptr;
  if (building<Tokens>) reading.request = std::move(request);
  reading.fault = std::move(fault);
  if (!reading.fault.empty()) reading.at = tokens.span(cur);
}

Reading readText(std::string_view text, bool virtualLinks, Keep keep) {
  Reading reading;
  reading.record.text = text;
  // By Keep: the tokens the reader builds and records over.
  constexpr void (Reader::*kReads[])(Reading&, bool) = {&Reader::read<TextTokens>, &Reader::read<RecordedTextTokens>,
                                                        &Reader::read<ScannedTextTokens>};
  (Reader().*kReads[static_cast<unsigned>(keep)])(reading, virtualLinks);
  return reading;
}

}  // namespace detail
}  // namespace lytFilterParser

// ---------------------------------------------------------------------------
// The public parsing members run the rules above on a caller's strList.
// ---------------------------------------------------------------------------

using lytFilterParser::detail::must;
using lytFilterParser::detail::Reader;
namespace detail = lytFilterParser::detail;

TavEntity::TavEntity(std::string text) { Reader::entity(*this, text); }

void TavEntity::setFilterString(const std::string& text) { Reader::entity(*this, text); }

TavEntityArray::TavEntityArray(strList& tokens, strIter& cursor) { parse(tokens, cursor); }

void TavEntityArray::parse(strList& tokens, strIter& cursor) { Reader::entities(*this, tokens, cursor); }

void AtomFilter::parseNot(strList& tokens, strIter& cur) { Reader::negation(*this, tokens, cur); }

AtomFilter* AtomFilter::getAtomFilter(strList& tokens, strIter& cur) {
  Reader reader;
  std::unique_ptr<AtomFilter> atom = reader.atom(tokens, cur);
  if (!atom) detail::fail(std::move(reader.fault));
  return atom.release();
}

ContentFilterBase::ContentFilterBase(strList& tokens, strIter& cur) : AtomFilter(TAV_NO_TYPE, false) {
  must(&Reader::content<strList>, *this, tokens, cur);
}

void ContentFilterBase::parseFilterType(strList& tokens, strIter& cur) {
  if (cur == tokens.end()) detail::fail(std::string(detail::kNoType));
  filterType = lytFilterParser::getValueType(*cur);
  ++cur;
}

void ContentFilterBase::parseEntities(strList& tokens, strIter& cur) { entities.parse(tokens, cur); }

// Overridable in steps; the parsing constructor reads without the virtual calls.
void ContentFilterBase::parse(strList& tokens, strIter& cur) {
  parseFilterType(tokens, cur);
  parseNot(tokens, cur);
  parseEntities(tokens, cur);
}

Filter::Filter(strList& tokens, strIter& cur) : Filter() { parse(tokens, cur); }

void Filter::parse(strList& tokens, strIter& cur) { must(&Reader::compound<strList>, *this, tokens, cur); }

void Filter::parseOperator(strList& tokens, strIter& cur) {
  must(&Reader::filterOperator<strList>, *this, tokens, cur);
}

bool Filter::isOperator(const std::string& token) { return detail::isOperatorWord(token); }

InterfaceAtomFilter::InterfaceAtomFilter(strList& tokens, strIter& cur) : AtomFilter(TAV_INTERFACE, false) {
  Reader::interfaceFilter(*this, tokens, cur);
}

void InterfaceAtomFilter::parseInterfaceInfoList(strList& tokens, strIter& cur) {
  Reader::interfaces(*this, tokens, cur);
}

InterfaceInfo::InterfaceInfo(strList& tokens, strIter& cur) : direction(TAV_DIR_BOTH) {
  Reader::interfaceInfo(*this, tokens, cur);
}

void InterfaceInfo::parseDirection(const std::string& suffix) { direction = detail::itemDirection(suffix); }

TavColumn::TavColumn(KeyOrValue role, strList& tokens, strIter& cur, std::string& sortOption) : TavColumn(role) {
  must(&Reader::column<strList>, *this, tokens, cur, sortOption);
}

void TavColumn::parseAccumulationMode(strList& tokens, strIter& cur) {
  must(&Reader::accumulation<strList>, *this, tokens, cur);
}

void TavColumnFilter::parse(strList& tokens, strIter& cur) { must(&Reader::columnFilter<strList>, *this, tokens, cur); }

NetworkKovaRequest::NetworkKovaRequest(strList& tokens) : NetworkKovaRequest() {
  strIter cur = tokens.begin();
  must(&Reader::request<strList>, *this, tokens, cur);
}

NetworkKovaRequest::NetworkKovaRequest(strList& tokens, TavVersion version) : NetworkKovaRequest() {
  must(&Reader::legacyRequest<strList>, *this, tokens, version);
}

void NetworkKovaRequest::parse(strList& tokens, strIter& cur) { must(&Reader::request<strList>, *this, tokens, cur); }

void NetworkKovaRequest::parseSort(strList& tokens, strIter& cur) { must(&Reader::sort<strList>, *this, tokens, cur); }

TavSortType NetworkKovaRequest::getSortType(const std::string& option) {
  // "sort=" and a sort type; anything else is no sort.
  const std::string_view prefix = detail::kSortColumnPrefix;
  if (option.compare(0, prefix.size(), prefix) != 0) return TAV_SORT_NONE;
  const TavSortType* type =
      detail::codeOf<TavSortType>(detail::kSortTypes, std::string_view(option).substr(prefix.size()));
  return type != nullptr ? *type : TAV_SORT_NONE;
}

E2EKovaRequest::E2EKovaRequest(strList& tokens) : dataType(E2E_DATA_WIRE) {
  strIter cur = tokens.begin();
  must(&Reader::virtualLink<strList>, *this, tokens, cur);
}

void E2EKovaRequest::parseFilter(strList& tokens, strIter& cur) {
  must(&Reader::virtualLinkOptions<strList>, *this, tokens, cur);
}

void E2EKovaRequest::parseDataType(strList& tokens, strIter& cur) {
  must(&Reader::dataType<strList>, *this, tokens, cur);
}
