#include "lytFilterParser/diagnostics/Outline.h"

#include <cstdint>
#include <optional>
#include <string>
#include <typeinfo>

#include "lytFilterParser/detail/SmallStack.h"
#include "lytFilterParser/detail/Text.h"
#include "lytFilterParser/detail/TokenSequence.h"
#include "lytFilterParser/diagnostics/Reading.h"
#include "lytFilterParser/diagnostics/Words.h"
#include "lytFilterParser/filter/ContentFilterBase.h"
#include "lytFilterParser/filter/Filter.h"
#include "lytFilterParser/filter/FilterVisit.h"
#include "lytFilterParser/filter/InterfaceAtomFilter.h"
#include "lytFilterParser/request/NetworkKovaRequest.h"
#include "lytFilterParser/vocab/Syntax.h"
#include "lytFilterParser/vocab/ValueTypeTable.h"

namespace lytFilterParser {
namespace detail {
namespace {

using It = TextTokens::iterator;

// Where the current bare atom list ends, once a "-f" has looked for it.
struct ListEnd {
  It at;
  bool known;
};

bool endsItems(std::string_view token) { return firstChar(token) == '-' || isChar(token, kCloseBracket); }

bool contains(std::string_view token, std::string_view word) { return token.find(word) != std::string_view::npos; }

// The walk: the reader's rules, in the reader's order, keeping places
// instead of building objects. Each rule returns false where the reader
// refuses the text, so that the walk alone tells whether the reader accepts
// it (Outline_test holds the two together).
class Walker {
 public:
  Walker(Outline& outline, std::string_view text) : out(outline), text(text), tokens(text), cur(tokens.begin()) {}

  bool run() {
    if (cur != tokens.end() && *cur == kVirtualLinkWord) return virtualLink();
    // Room for the items of an ordinary request, so that walking one allocates little.
    out.words.reserve(text.size() / 6 + 4);
    out.nodes.reserve(8);
    out.keys.reserve(4);
    out.values.reserve(4);
    out.nodes.push_back(FilterNode{});
    out.nodes[0].compound = true;
    ListEnd listEnd{tokens.end(), false};
    while (cur != tokens.end()) {
      const std::string_view option = *cur;
      if (option.size() != 2 || option[0] != '-') return false;
      if (option[1] != OPTION_FILTER) listEnd.known = false;
      const Span at = take();
      bool read = false;
      switch (option[1]) {
        case OPTION_KEY: read = column(out.keys, at, false); break;
        case OPTION_VALUE: read = column(out.values, at, true); break;
        case OPTION_SORT: read = sort(at); break;
        case OPTION_FILTER: read = filterOption(at, listEnd); break;
        default: return false;
      }
      if (!read) return false;
    }
    out.nodes[0].end = static_cast<std::uint32_t>(out.nodes.size());
    if (!out.filterOptions.empty()) out.nodes[0].whole = cover(out.filterOptions.front().option, out.filterOptions.back().whole);
    return true;
  }

 private:
  bool atEnd() const { return cur == tokens.end(); }

  Span spanOf(It at) const { return tokenSpan(text, tokens, at); }

  // The token under the cursor, passed.
  Span take() {
    const std::string_view token = *cur;
    const Span span = inText(text, token) ? Span{static_cast<std::size_t>(token.data() - text.data()), token.size()}
                                          : spanOf(cur);
    if (span.length > 0) last = span;
    ++cur;
    return span;
  }

  void word(Part part) { out.words.push_back(OutlineWord{take(), part, 0}); }

  std::uint32_t wordCount() const { return static_cast<std::uint32_t>(out.words.size()); }

  std::uint32_t addNode(std::uint32_t parent, bool compound, Span option) {
    ++out.nodes[parent].childCount;
    FilterNode node;
    node.whole = option;
    node.compound = compound;
    out.nodes.push_back(node);
    return static_cast<std::uint32_t>(out.nodes.size() - 1);
  }

  void finish(std::uint32_t node) {
    out.nodes[node].whole = cover(out.nodes[node].whole, last);
    out.nodes[node].end = static_cast<std::uint32_t>(out.nodes.size());
  }

  bool filterOption(Span option, ListEnd& listEnd);
  bool compound(std::uint32_t node, bool bracketed);
  bool atom(std::uint32_t parent, Span option);
  void names(std::uint32_t node);
  bool column(std::vector<ColumnOutline>& list, Span option, bool value);
  bool sort(Span option);
  bool virtualLink();

  Outline& out;
  std::string_view text;
  TextTokens tokens;
  It cur;
  Span last;
};

bool Walker::filterOption(Span option, ListEnd& listEnd) {
  if (atEnd()) return false;
  out.filterOptions.push_back(FilterOption{option, Span{}, option});
  const std::size_t index = out.filterOptions.size() - 1;
  bool read = false;
  if (isOperatorWord(*cur)) {
    out.nodes[0].head = out.filterOptions[index].op = take();
    const bool bracketed = !atEnd() && isChar(*cur, kOpenBracket);
    if (bracketed) take();
    read = compound(0, bracketed);
  } else {
    // An atom list ends before the first option other than "-f", where the
    // reader inserts the "]" of its implied "and [".
    out.nodes[0].head = Span{};
    const auto endsList = [&](const It& at) {
      return at == tokens.end() || (firstChar(*at) == '-' && !isOption(*at, OPTION_FILTER));
    };
    It close = cur;
    if (!endsList(cur)) {
      if (listEnd.known) {
        close = listEnd.at;
      } else {
        do ++close;
        while (!endsList(close));
        listEnd = ListEnd{close, true};
      }
    }
    const It bracket = tokens.insert(close, std::string(1, kCloseBracket));
    if (close == cur) cur = bracket;
    read = atom(0, option) && compound(0, true);
  }
  out.filterOptions[index].whole = cover(option, last);
  return read;
}

// The "-f" items of compound `node` and its "]" when bracketed, nested
// compounds on a stack of their own as the reader keeps them.
bool Walker::compound(std::uint32_t node, bool bracketed) {
  struct Open {
    std::uint32_t node;
    bool bracketed;
  };
  Open open{node, bracketed};
  SmallStack<Open, 8> outer;
  for (;;) {
    if (!atEnd() && isOption(*cur, OPTION_FILTER)) {
      const Span option = take();
      if (!atEnd() && isOperatorWord(*cur)) {
        const std::uint32_t inner = addNode(open.node, true, option);
        out.nodes[inner].head = take();
        const bool innerBracketed = !atEnd() && isChar(*cur, kOpenBracket);
        if (innerBracketed) take();
        outer.push(open);
        open = Open{inner, innerBracketed};
        continue;
      }
      if (!atom(open.node, option)) return false;
      continue;
    }
    if (open.bracketed) {
      if (atEnd() || !isChar(*cur, kCloseBracket)) return false;
      take();
    }
    if (open.node != 0) finish(open.node);
    if (outer.empty()) return true;
    open = outer.pop();
  }
}

bool Walker::atom(std::uint32_t parent, Span option) {
  if (atEnd()) return false;
  const bool interface = *cur == kValueTypes[TAV_INTERFACE].keyword;
  if (!interface && findValueType(*cur) == nullptr) return false;
  const std::uint32_t node = addNode(parent, false, option);
  out.nodes[node].interface = interface;
  out.nodes[node].head = take();
  if (!atEnd() && isNegation(*cur)) out.nodes[node].negation = take();
  names(node);
  finish(node);
  return true;
}

void Walker::names(std::uint32_t node) {
  out.nodes[node].firstWord = wordCount();
  while (!atEnd() && !endsItems(*cur)) word(Part::Name);
  out.nodes[node].wordCount = wordCount() - out.nodes[node].firstWord;
}

bool Walker::column(std::vector<ColumnOutline>& list, Span option, bool value) {
  if (atEnd() || findValueType(*cur) == nullptr) return false;
  ColumnOutline made{option, take(), option, wordCount(), 0};
  while (!atEnd() && firstChar(*cur) != '-') {
    const std::string_view token = *cur;
    if (contains(token, kAccumulationName)) {
      if (codeOf<TavAccType>(kAccumulationModes, token) == nullptr) return false;
      word(Part::Accumulation);
    } else if (contains(token, kSortColumnName)) {
      if (value && NetworkKovaRequest::getSortType(std::string(token)) != TAV_SORT_NONE) {
        out.sorts.push_back(SortSetting{spanOf(cur), spanOf(cur), static_cast<int>(list.size()), 0, 0});
      }
      word(Part::SortWord);
    } else if (token.find('=') != std::string_view::npos) {
      const std::size_t option = columnOptionOf(token);
      if (option == COLUMN_OPTION_COUNT || columnOptionValue(token, option) == nullptr) return false;
      word(Part::ColumnOption);
      out.words.back().option = static_cast<unsigned char>(option);
    } else {
      while (!atEnd() && !endsItems(*cur)) word(Part::Name);
      // A bracket that closes nothing stays with the column as a name.
      if (!atEnd() && isChar(*cur, kCloseBracket)) word(Part::Name);
    }
  }
  made.wordCount = wordCount() - made.firstWord;
  made.whole = cover(option, last);
  list.push_back(made);
  return true;
}

bool Walker::sort(Span option) {
  if (atEnd() || codeOf<TavSortType>(kSortTypes, *cur) == nullptr) return false;
  SortSetting setting{option, take(), -1, wordCount(), 0};
  for (; !atEnd() && firstChar(*cur) != '-';) {
    if (contains(*cur, kSortOptions[SORT_INDEX].text)) {
      word(Part::Index);
    } else if (contains(*cur, kSortOptions[SORT_UPDATES].text)) {
      word(Part::Updates);
    } else {
      return false;
    }
  }
  setting.wordCount = wordCount() - setting.firstWord;
  out.sorts.push_back(setting);
  return true;
}

bool Walker::virtualLink() {
  out.virtualLink = true;
  take();
  if (atEnd()) return false;
  out.vlName = take();
  while (!atEnd()) {
    const std::string_view token = *cur;
    const std::size_t dash = token.find(kDataTypeOption[0]);
    const Span option = take();
    if (dash == std::string_view::npos || token.compare(dash, kDataTypeOption.size(), kDataTypeOption) != 0) continue;
    if (atEnd()) return false;
    bool known = false;
    for (const Word<tLytpE2eDataType>& type : kDataTypes) known = known || firstChar(*cur) == type.text[0];
    if (!known) return false;
    out.dataTypes.push_back(DataTypeOption{option, take()});
  }
  return true;
}

std::size_t nameCount(const Outline& outline, std::uint32_t first, std::uint32_t count) {
  std::size_t names = 0;
  for (std::uint32_t w = first; w < first + count; ++w) names += outline.words[w].part == Part::Name;
  return names;
}

bool columnsMatch(const Outline& outline, const std::vector<ColumnOutline>& columns, const TavColumnArray& made) {
  if (columns.size() != made.size()) return false;
  for (std::size_t c = 0; c < columns.size(); ++c) {
    if (nameCount(outline, columns[c].firstWord, columns[c].wordCount) != made[c].getEntities().size()) return false;
  }
  return true;
}

}  // namespace

bool Outline::read(std::string_view source) {
  text = source;
  return Walker(*this, source).run();
}

bool Outline::matches(const NetworkKovaRequest& request) const {
  if (virtualLink || nodes.empty() || !columnsMatch(*this, keys, request.getKeys()) ||
      !columnsMatch(*this, values, request.getValues())) {
    return false;
  }
  const Filter& root = request.getFilter();
  if (nodes[0].childCount != root.getChildren().size()) return false;
  std::size_t next = 1;
  const auto compound = [&](const Filter& filter) {
    if (next >= nodes.size() || !nodes[next].compound) return false;
    return nodes[next++].childCount == filter.getChildren().size();
  };
  const auto atom = [&](const AbstractFilter& filter) {
    if (next >= nodes.size() || nodes[next].compound) return false;
    const FilterNode& node = nodes[next++];
    if (const auto* content = dynamic_cast<const ContentFilterBase*>(&filter)) {
      return !node.interface && node.wordCount == content->getEntitiesCount();
    }
    const auto* interfaces = dynamic_cast<const InterfaceAtomFilter*>(&filter);
    return interfaces != nullptr && node.interface && node.wordCount == interfaces->getInterfaces().size();
  };
  const auto leave = [](const Filter&) { return true; };
  return walkFilter(root, compound, leave, atom) && next == nodes.size();
}

}  // namespace detail
}  // namespace lytFilterParser
