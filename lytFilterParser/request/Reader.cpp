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
// message names, or at the end when the message says a word is missing.
#include "lytFilterParser/request/Reader.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "lytFilterParser/column/TavColumn.h"
#include "lytFilterParser/column/TavColumnFilter.h"
#include "lytFilterParser/detail/Text.h"
#include "lytFilterParser/entity/TavEntity.h"
#include "lytFilterParser/entity/TavEntityArray.h"
#include "lytFilterParser/filter/AtomFilter.h"
#include "lytFilterParser/filter/ContentFilter.h"
#include "lytFilterParser/filter/ContentFilterBase.h"
#include "lytFilterParser/filter/Filter.h"
#include "lytFilterParser/filter/FilterVisit.h"
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

constexpr const char* kNoType = "Expected type at this point but there is no data";

// Ends a run of entities or interface items.
bool endsItems(std::string_view token) { return firstChar(token) == '-' || isChar(token, kCloseBracket); }

}  // namespace

// ---------------------------------------------------------------------------
// request
// ---------------------------------------------------------------------------

template <class Tokens>
void Reader::request(NetworkKovaRequest& request, Tokens& tokens, Iter<Tokens>& cur) {
  // Where the bare atom lists read so far end: the first option that is not
  // "-f". Nothing but this loop reads past it, so it holds until the loop
  // takes another option.
  std::optional<Iter<Tokens>> listEnd;
  while (cur != tokens.end()) {
    const std::string_view option = *cur;
    if (option.size() != 2 || option[0] != '-') fail(message("Invalid option: ", option));
    if (option[1] != OPTION_FILTER) listEnd.reset();
    switch (option[1]) {
      case OPTION_KEY: {
        ++cur;
        std::string ignoredSort;
        TavColumn key(TAV_KEY);
        column(key, tokens, cur, ignoredSort);
        request.keys.push_back(std::move(key));
        break;
      }
      case OPTION_VALUE: {
        ++cur;
        std::string sortOption;
        TavColumn value(TAV_VALUE);
        column(value, tokens, cur, sortOption);
        request.values.push_back(std::move(value));
        const TavSortType type = sortOption.empty() ? TAV_SORT_NONE : NetworkKovaRequest::getSortType(sortOption);
        if (type != TAV_SORT_NONE) {
          request.sortType = type;
          request.sortIndex = static_cast<int>(request.values.size());
        }
        break;
      }
      case OPTION_SORT:
        ++cur;
        sort(request, tokens, cur);
        break;
      case OPTION_FILTER:
        ++cur;
        filterOption(request, tokens, cur, listEnd);
        break;
      default:
        fail(message("Invalid option: ", option));
    }
  }
}

template <class Tokens>
void Reader::legacyRequest(NetworkKovaRequest& request, Tokens& tokens, TavVersion version) {
  const unsigned peer = static_cast<unsigned>(version);
  if (peer == TAV_VERSION_CURRENT) {
    Iter<Tokens> cur = tokens.begin();
    Reader::request(request, tokens, cur);
    return;
  }
  if (peer > TAV_VERSION_CURRENT) fail("NetworkKovaRequest: Invalid version");
  if (peer == TAV_VERSION_UNSUPPORTED) return;
  WordTokens translated;
  translateLegacy(tokens, translated);
  WordTokens::iterator cur = translated.begin();
  Reader::request(request, translated, cur);
}

// ---------------------------------------------------------------------------
// filter tree
// ---------------------------------------------------------------------------

template <class Tokens>
void Reader::filterOption(NetworkKovaRequest& request, Tokens& tokens, Iter<Tokens>& cur,
                          std::optional<Iter<Tokens>>& listEnd) {
  if (cur == tokens.end()) fail(kNoType);
  if (isOperatorWord(*cur)) {
    compound(request.filter, tokens, cur, 0);
    return;
  }
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
    if (listEnd) {
      close = *listEnd;
    } else {
      do ++close;
      while (!endsList(close));
      listEnd = close;
    }
  }
  const Iter<Tokens> bracket = tokens.insert(close, std::string(1, kCloseBracket));
  // With no atom text at all, the bracket is what the atom reader meets.
  if (close == cur) cur = bracket;
  // The "-f" itself is not read again: the conjunction's first atom is the
  // one under the cursor.
  Filter& root = request.filter;
  root.filterOperator = FILTER_AND;
  if (root.children.capacity() == 0) root.children.reserve(4);
  root.children.push_back(atom(tokens, cur));
  children(root, tokens, cur, 0, true);
}

template <class Tokens>
void Reader::compound(Filter& filter, Tokens& tokens, Iter<Tokens>& cur, int depth) {
  checkNesting(depth);
  filterOperator(filter, tokens, cur);
  const bool bracketed = cur != tokens.end() && isChar(*cur, kOpenBracket);
  if (bracketed) ++cur;
  children(filter, tokens, cur, depth, bracketed);
}

template <class Tokens>
void Reader::filterOperator(Filter& filter, Tokens& tokens, Iter<Tokens>& cur) {
  const std::string_view token = cur == tokens.end() ? std::string_view() : std::string_view(*cur);
  const FilterOperator* op = codeOf<FilterOperator>(kFilterOperators, token);
  if (op == nullptr) fail(message("Not a valid operator: ", token));
  filter.filterOperator = *op;
  ++cur;
}

template <class Tokens>
void Reader::children(Filter& filter, Tokens& tokens, Iter<Tokens>& cur, int depth, bool bracketed) {
  while (cur != tokens.end() && isOption(*cur, OPTION_FILTER)) {
    ++cur;
    // Most compound filters hold two or a few children: one allocation for them.
    if (filter.children.capacity() == 0) filter.children.reserve(4);
    if (cur != tokens.end() && isOperatorWord(*cur)) {
      std::unique_ptr<Filter> inner(new Filter());
      compound(*inner, tokens, cur, depth + 1);
      filter.children.push_back(std::move(inner));
    } else {
      filter.children.push_back(atom(tokens, cur));
    }
  }
  if (bracketed) {
    if (cur == tokens.end()) fail("`]` expected");
    const std::string_view token = *cur;
    if (!isChar(token, kCloseBracket)) fail(message("`]` expected instead of: ", token));
    ++cur;
  }
}

template <class Tokens>
std::unique_ptr<AtomFilter> Reader::atom(Tokens& tokens, Iter<Tokens>& cur) {
  if (cur == tokens.end()) fail(kNoType);
  if (*cur == valueTypeKeyword(TAV_INTERFACE)) {
    std::unique_ptr<InterfaceAtomFilter> filter(new InterfaceAtomFilter(InterfaceInfoList(), false));
    interfaceFilter(*filter, tokens, cur);
    return filter;
  }
  std::unique_ptr<ContentFilter> filter(new ContentFilter(TAV_NO_TYPE, false, TavEntityArray()));
  content(*filter, tokens, cur);
  return filter;
}

template <class Tokens>
void Reader::negation(AtomFilter& filter, Tokens& tokens, Iter<Tokens>& cur) {
  filter.negation = cur != tokens.end() && isNegation(*cur);
  if (filter.negation) ++cur;
}

template <class Tokens>
void Reader::content(ContentFilterBase& filter, Tokens& tokens, Iter<Tokens>& cur) {
  if (cur == tokens.end()) fail(kNoType);
  filter.filterType = valueType(*cur);
  ++cur;
  negation(filter, tokens, cur);
  entities(filter.entities, tokens, cur);
}

template <class Tokens>
void Reader::interfaceFilter(InterfaceAtomFilter& filter, Tokens& tokens, Iter<Tokens>& cur) {
  // The factory chose this class by the keyword under the cursor.
  if (cur != tokens.end()) ++cur;
  negation(filter, tokens, cur);
  interfaces(filter, tokens, cur);
}

template <class Tokens>
void Reader::interfaces(InterfaceAtomFilter& filter, Tokens& tokens, Iter<Tokens>& cur) {
  for (; cur != tokens.end() && !endsItems(*cur); ++cur) {
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
  if (separator != std::string_view::npos && separator + 1 < token.size()) {
    item.direction = itemDirection(token.substr(separator + 1));
    item.name.assign(token.data(), separator);
  } else {
    item.name.assign(token.data(), token.size());
  }
}

template <class Tokens>
void Reader::entities(TavEntityArray& array, Tokens& tokens, Iter<Tokens>& cur) {
  // Count first so that a long run of entities is stored without regrowth.
  std::size_t count = 0;
  for (Iter<Tokens> scan = cur; scan != tokens.end() && !endsItems(*scan); ++scan) ++count;
  if (count == 0) return;
  std::vector<TavEntity>& list = array.entities;
  const std::size_t needed = list.size() + count;
  if (needed > list.capacity()) list.reserve(std::max(needed, 2 * list.capacity()));
  for (; count > 0; --count, ++cur) {
    list.emplace_back(std::string(), std::string());
    entity(list.back(), *cur);
  }
}

void Reader::entity(TavEntity& entity, std::string_view text) {
  const std::size_t at = text.find(kEntitySeparator);
  if (at == std::string_view::npos) {
    entity.name.assign(text.data(), text.size());
    return;
  }
  entity.name.assign(text.data(), at);
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
void Reader::column(TavColumn& column, Tokens& tokens, Iter<Tokens>& cur, std::string& sortOption) {
  if (cur == tokens.end()) fail(kNoType);
  column.valueType = valueType(*cur);
  ++cur;
  while (cur != tokens.end()) {
    const std::string_view token = *cur;
    if (firstChar(token) == '-') break;
    if (containsWord(token, kAccumulationName)) {
      accumulation(column, tokens, cur);
    } else if (containsWord(token, kSortColumnName)) {
      sortOption.assign(token.data(), token.size());
      ++cur;
    } else if (token.find('=') != std::string_view::npos) {
      columnFilter(column.columnFilter, tokens, cur);
    } else {
      entities(column.entities, tokens, cur);
      // A bracket that closes nothing here stays with the column as an entity.
      if (cur != tokens.end() && isChar(*cur, kCloseBracket)) {
        column.entities.add(TavEntity(std::string(1, kCloseBracket)));
        ++cur;
      }
    }
  }
}

template <class Tokens>
void Reader::accumulation(TavColumn& column, Tokens& tokens, Iter<Tokens>& cur) {
  if (cur == tokens.end()) fail(kNoType);
  const std::string_view token = *cur;
  const TavAccType* acc = codeOf<TavAccType>(kAccumulationModes, token);
  if (acc == nullptr) fail(message("Invalid accumulation mode: ", token));
  column.accType = *acc;
  ++cur;
}

template <class Tokens>
void Reader::columnFilter(TavColumnFilter& filter, Tokens& tokens, Iter<Tokens>& cur) {
  if (cur == tokens.end()) fail("Error: Expected end of line");
  const std::string_view token = *cur;
  int* const fields[COLUMN_OPTION_COUNT] = {&filter.direction, &filter.encryptionMode, &filter.compressionMode,
                                            &filter.citrixPrintMode, &filter.urlMode};
  const Rows<ColumnOption> options = kColumnOptions;
  for (std::size_t o = 0; o < options.size(); ++o) {
    const ColumnOption& option = options[o];
    if (!containsOptionName(token, option.name)) continue;
    for (const Word<int>& value : option.values) {
      if (token.find(value.text, option.valueFrom) != std::string_view::npos) {
        *fields[o] = value.code;
        ++cur;
        return;
      }
    }
    fail(option.message);
  }
  fail("Expected filter type");
}

template <class Tokens>
void Reader::sort(NetworkKovaRequest& request, Tokens& tokens, Iter<Tokens>& cur) {
  if (cur == tokens.end()) fail("Sort type expected");
  const std::string_view word = *cur;
  const TavSortType* type = codeOf<TavSortType>(kSortTypes, word);
  if (type == nullptr) fail(message("Invalid sort type: ", word));
  request.sortType = *type;
  ++cur;
  request.sortIndex = 1;
  request.maxUpdates = NetworkKovaRequest::defaultMaxUpdates;
  const Rows<Word<SortOption>> options = kSortOptions;
  const std::string_view index = options[SORT_INDEX].text;
  const std::string_view updates = options[SORT_UPDATES].text;
  for (; cur != tokens.end() && firstChar(*cur) != '-'; ++cur) {
    const std::string_view option = *cur;
    // The number is read from where the name would stand at the start.
    if (containsWord(option, index)) {
      request.sortIndex = readInt(option, index.size());
    } else if (containsWord(option, updates)) {
      const int count = readInt(option, updates.size());
      request.maxUpdates = count > 0 ? count : NetworkKovaRequest::defaultMaxUpdates;
    } else {
      fail(message("Invalid option: ", option));
    }
  }
}

// ---------------------------------------------------------------------------
// end-to-end request
// ---------------------------------------------------------------------------

template <class Tokens>
void Reader::virtualLink(E2EKovaRequest& request, Tokens& tokens, Iter<Tokens>& cur) {
  if (cur == tokens.end()) fail("No virtual link name after vl");
  const std::string_view name = *cur;
  request.vlName.assign(name.data(), name.size());
  ++cur;
  virtualLinkOptions(request, tokens, cur);
}

template <class Tokens>
void Reader::virtualLinkOptions(E2EKovaRequest& request, Tokens& tokens, Iter<Tokens>& cur) {
  const std::string_view option = kDataTypeOption;
  for (; cur != tokens.end(); ++cur) {
    // The option counts where a token's first "-" starts it.
    const std::string_view token = *cur;
    const std::size_t dash = token.find(option[0]);
    if (dash != std::string_view::npos && token.compare(dash, option.size(), option) == 0) {
      ++cur;
      dataType(request, tokens, cur);
    }
  }
}

template <class Tokens>
void Reader::dataType(E2EKovaRequest& request, Tokens& tokens, Iter<Tokens>& cur) {
  if (cur == tokens.end()) fail("No data after direction argument");
  const char first = firstChar(*cur);
  for (const Word<tLytpE2eDataType>& type : kDataTypes) {
    if (first == type.text[0]) {
      request.dataType = type.code;
      return;
    }
  }
  fail("Not a valid argument for dataType");
}

// The entry points read the text in place.
template void Reader::request<TextTokens>(NetworkKovaRequest&, TextTokens&, TextTokens::iterator&);
template void Reader::legacyRequest<TextTokens>(NetworkKovaRequest&, TextTokens&, TavVersion);
template void Reader::virtualLink<TextTokens>(E2EKovaRequest&, TextTokens&, TextTokens::iterator&);

}  // namespace detail
}  // namespace lytFilterParser

// ---------------------------------------------------------------------------
// The public parsing members run the rules above on a caller's strList.
// ---------------------------------------------------------------------------

using lytFilterParser::detail::Reader;

TavEntity::TavEntity(std::string text) { Reader::entity(*this, text); }

void TavEntity::setFilterString(const std::string& text) { Reader::entity(*this, text); }

TavEntityArray::TavEntityArray(strList& tokens, strIter& cursor) { parse(tokens, cursor); }

void TavEntityArray::parse(strList& tokens, strIter& cursor) { Reader::entities(*this, tokens, cursor); }

void AtomFilter::parseNot(strList& tokens, strIter& cur) { Reader::negation(*this, tokens, cur); }

AtomFilter* AtomFilter::getAtomFilter(strList& tokens, strIter& cur) { return Reader::atom(tokens, cur).release(); }

ContentFilterBase::ContentFilterBase(strList& tokens, strIter& cur) : AtomFilter(TAV_NO_TYPE, false) {
  Reader::content(*this, tokens, cur);
}

void ContentFilterBase::parseFilterType(strList& tokens, strIter& cur) {
  if (cur == tokens.end()) lytFilterParser::detail::fail(lytFilterParser::detail::kNoType);
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

Filter::Filter(strList& tokens, strIter& cur) : AbstractFilter(0), filterOperator(FILTER_AND) {
  Reader::compound(*this, tokens, cur, 0);
}

void Filter::parse(strList& tokens, strIter& cur) { Reader::compound(*this, tokens, cur, 0); }

void Filter::parseOperator(strList& tokens, strIter& cur) { Reader::filterOperator(*this, tokens, cur); }

bool Filter::isOperator(const std::string& token) { return lytFilterParser::detail::isOperatorWord(token); }

InterfaceAtomFilter::InterfaceAtomFilter(strList& tokens, strIter& cur) : AtomFilter(TAV_INTERFACE, false) {
  Reader::interfaceFilter(*this, tokens, cur);
}

void InterfaceAtomFilter::parseInterfaceInfoList(strList& tokens, strIter& cur) { Reader::interfaces(*this, tokens, cur); }

InterfaceInfo::InterfaceInfo(strList& tokens, strIter& cur) : direction(TAV_DIR_BOTH) {
  Reader::interfaceInfo(*this, tokens, cur);
}

void InterfaceInfo::parseDirection(const std::string& suffix) { direction = lytFilterParser::detail::itemDirection(suffix); }

TavColumn::TavColumn(KeyOrValue role, strList& tokens, strIter& cur, std::string& sortOption) : TavColumn(role) {
  Reader::column(*this, tokens, cur, sortOption);
}

void TavColumn::parseAccumulationMode(strList& tokens, strIter& cur) { Reader::accumulation(*this, tokens, cur); }

void TavColumnFilter::parse(strList& tokens, strIter& cur) { Reader::columnFilter(*this, tokens, cur); }

NetworkKovaRequest::NetworkKovaRequest(strList& tokens) : NetworkKovaRequest() {
  strIter cur = tokens.begin();
  Reader::request(*this, tokens, cur);
}

NetworkKovaRequest::NetworkKovaRequest(strList& tokens, TavVersion version) : NetworkKovaRequest() {
  Reader::legacyRequest(*this, tokens, version);
}

void NetworkKovaRequest::parse(strList& tokens, strIter& cur) { Reader::request(*this, tokens, cur); }

void NetworkKovaRequest::parseSort(strList& tokens, strIter& cur) { Reader::sort(*this, tokens, cur); }

TavSortType NetworkKovaRequest::getSortType(const std::string& option) {
  // "sort=" and a sort type; anything else is no sort.
  const std::string_view prefix = lytFilterParser::detail::kSortColumnPrefix;
  if (option.compare(0, prefix.size(), prefix) != 0) return TAV_SORT_NONE;
  const TavSortType* type = lytFilterParser::detail::codeOf<TavSortType>(lytFilterParser::detail::kSortTypes,
                                                                         std::string_view(option).substr(prefix.size()));
  return type != nullptr ? *type : TAV_SORT_NONE;
}

E2EKovaRequest::E2EKovaRequest(strList& tokens) : dataType(E2E_DATA_WIRE) {
  strIter cur = tokens.begin();
  Reader::virtualLink(*this, tokens, cur);
}

void E2EKovaRequest::parseFilter(strList& tokens, strIter& cur) { Reader::virtualLinkOptions(*this, tokens, cur); }

void E2EKovaRequest::parseDataType(strList& tokens, strIter& cur) { Reader::dataType(*this, tokens, cur); }
