#include "lytFilterParser/diagnostics/Fidelity.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <string_view>
#include <typeinfo>
#include <unordered_map>
#include <utility>

#include "lytFilterParser/detail/SmallStack.h"
#include "lytFilterParser/detail/TokenSequence.h"
#include "lytFilterParser/diagnostics/DiagnosticTable.h"
#include "lytFilterParser/diagnostics/Reading.h"
#include "lytFilterParser/diagnostics/RecordedRequest.h"
#include "lytFilterParser/filter/ContentFilterBase.h"
#include "lytFilterParser/filter/Filter.h"
#include "lytFilterParser/filter/InterfaceAtomFilter.h"
#include "lytFilterParser/request/E2EKovaRequest.h"
#include "lytFilterParser/request/NetworkKovaRequest.h"
#include "lytFilterParser/request/Reader.h"
#include "lytFilterParser/vocab/Syntax.h"
#include "lytFilterParser/vocab/ValueTypeTable.h"

namespace lytFilterParser {
namespace detail {
namespace {

bool isCompound(const AbstractFilter& node) { return typeid(node) == typeid(Filter); }

const Filter::Children& childrenOf(const AbstractFilter& node) {
  return static_cast<const Filter&>(node).getChildren();
}

// A filter node of the request and, on the request's side, its node in the outline.
struct Side {
  const AbstractFilter* node;
  std::uint32_t index;
};

// Names and interface items as the comparison sees them.
struct Item {
  std::string name;   // what pairs an item with the other side's
  std::string shown;  // how it is written
};

// The items of a list of entities or of interface items.
template <class List>
std::vector<Item> itemsOf(const List& list) {
  std::vector<Item> items;
  for (const auto& item : list) items.push_back(Item{item.getName(), item.dump()});
  return items;
}

std::vector<Item> atomItems(const AbstractFilter& atom) {
  if (const auto* content = dynamic_cast<const ContentFilterBase*>(&atom)) return itemsOf(content->getEntities());
  if (const auto* interfaces = dynamic_cast<const InterfaceAtomFilter*>(&atom))
    return itemsOf(interfaces->getInterfaces());
  return {};
}

// What pairs a filter node with one of the other side: compound, or the
// kind and type of an atom.
int signature(const AbstractFilter& node) {
  if (isCompound(node)) return -1;
  const auto* atom = dynamic_cast<const AtomFilter*>(&node);
  const int kind = dynamic_cast<const InterfaceAtomFilter*>(&node) != nullptr ? 1 : 0;
  return atom == nullptr ? -2 : kind * 1000 + static_cast<int>(atom->getFilterType());
}

std::string peerName(TavVersion peer) { return "peer " + std::to_string(static_cast<int>(peer)); }

std::string describeSort(TavSortType type, int index) {
  if (type == TAV_SORT_NONE) return "no sort";
  std::string sort = std::string(optionWord(OPTION_SORT)) + " " + std::string(sortTypeWord(type));
  if (index != 1) sort += " " + std::string(kSortOptions[SORT_INDEX].text) + std::to_string(index);
  return quoted(sort);
}

// The sort a peer applies: a dynamic view without one is sorted top.
TavSortType appliedSort(const NetworkKovaRequest& request) {
  return request.getSortType() == TAV_SORT_NONE && request.isDynamic() ? TAV_SORT_TOP : request.getSortType();
}

// The comparison of a request with the one its peer text reads back as.
class Comparison {
 public:
  Comparison(const Record& outline, bool located, TavVersion peer, Findings& found)
      : outline(outline), located(located), peer(peer), found(found) {}

  void network(const NetworkKovaRequest& mine) {
    const std::string written = mine.dump(peer);
    if (peer < TAV_VERSION_LEGACY_1 || peer > TAV_VERSION_CURRENT) return unsupported(written);
    NetworkKovaRequest theirs(Filter(), TavColumnArray(), TavColumnArray(), TAV_SORT_NONE, 1);
    TextTokens tokens(written);
    Reader reader;
    if (!reader.legacyRequest(theirs, tokens, peer)) {
      found.add(Code::TextUnreadable, whole(),
                peerName(peer) + " cannot read the text written for it (" + quoted(written) + "): " + reader.fault);
      return;
    }
    filters(mine.getFilter(), theirs.getFilter());
    columns(mine.getKeys(), theirs.getKeys(), outline.keys, "key");
    columns(mine.getValues(), theirs.getValues(), outline.values, "value");
    sort(mine, theirs);
  }

  void virtualLink(const E2EKovaRequest& mine) {
    const std::string written = mine.dump(peer);
    Reading back = readText(written, true);
    const auto* theirs = dynamic_cast<const E2EKovaRequest*>(back.request.get());
    if (peer != TAV_VERSION_CURRENT || theirs == nullptr) return unsupported(written);
    if (mine.getVLName() != theirs->getVLName()) {
      changed(Code::ItemChanged, place(outline.vlName), mine.getVLName(), theirs->getVLName());
    }
    if (mine.getDataType() != theirs->getDataType()) {
      const Span at = outline.dataTypes.empty() ? whole() : place(outline.dataTypes.back().type);
      changed(Code::ItemChanged, at, mine.dumpDataType(), theirs->dumpDataType());
    }
  }

 private:
  typedef SmallStack<std::pair<Side, const AbstractFilter*>, 8> Pending;

  Span whole() const { return Span{0, outline.text.size()}; }
  Span place(Span span) const { return located ? span : whole(); }
  Span nodeSpan(std::uint32_t index, bool head) const {
    return located ? (head ? outline.nodes[index].head : outline.nodes[index].whole) : whole();
  }
  // A finding about what the peer's text does: "MESSAGE for peer N", and `tail`.
  void add(Code code, Span at, const std::string& message, const std::string& tail = "") {
    found.add(code, at, message + " for " + peerName(peer) + tail);
  }
  void changed(Code code, Span at, std::string_view mine, std::string_view theirs, const std::string& tail = "") {
    add(code, at, quoted(mine) + " reads back as " + quoted(theirs), tail);
  }

  void unsupported(const std::string& written) {
    found.add(Code::PeerUnsupported, whole(),
              peerName(peer) + " has no text for this request: it is written as " +
                  (written.empty() ? std::string("an empty line") : quoted(written)));
  }

  void filters(const Filter& mine, const Filter& theirs) {
    Pending pending;
    pending.push({lift(Side{&mine, 0}), lift(Side{&theirs, 0}).node});
    while (!pending.empty()) {
      const std::pair<Side, const AbstractFilter*> pair = pending.pop();
      align(pair.first, *pair.second, pending);
    }
  }

  // A compound filter with one child is written as that child: compare the child.
  Side lift(Side side) const {
    while (isCompound(*side.node) && childrenOf(*side.node).size() == 1) {
      side = Side{childrenOf(*side.node)[0].get(), side.index + 1};
    }
    return side;
  }

  // The children of a compound, each lifted; an atom alone stands for itself.
  // Only the request's own side has places in the outline.
  std::vector<Side> childrenSides(Side side, bool own) const {
    if (!isCompound(*side.node)) return {side};
    std::vector<Side> sides;
    std::uint32_t index = side.index + 1;
    for (const std::unique_ptr<AbstractFilter>& child : childrenOf(*side.node)) {
      sides.push_back(lift(Side{child.get(), index}));
      index = own && located && index < outline.nodes.size() ? outline.nodes[index].end : index;
    }
    return sides;
  }

  // Pairs the children of two nodes in order by their signature; a child
  // without a partner within a few places is lost, or gained.
  void align(Side mine, const AbstractFilter& theirs, Pending& pending) {
    const bool bothCompound = isCompound(*mine.node) && isCompound(theirs);
    if (bothCompound && childrenOf(*mine.node).size() > 1 && childrenOf(theirs).size() > 1 &&
        static_cast<const Filter*>(mine.node)->getOperator() != static_cast<const Filter&>(theirs).getOperator()) {
      const std::string op = static_cast<const Filter&>(theirs).dumpOperator();
      // The operator word; for the root without one (an atom list), the filter options.
      const bool head = located && outline.nodes[mine.index].head.length > 0;
      add(Code::OperatorChanged, nodeSpan(mine.index, head), "the filter reads back joined by " + quoted(op));
    }
    const std::vector<Side> own = childrenSides(mine, true);
    const std::vector<Side> other = childrenSides(Side{&theirs, 0}, false);
    constexpr std::size_t kLookAhead = 64;
    std::size_t next = 0;
    for (const Side& child : own) {
      std::size_t match = next;
      while (match < other.size() && match < next + kLookAhead &&
             signature(*other[match].node) != signature(*child.node))
        ++match;
      if (match == other.size() || match == next + kLookAhead) {
        const bool compound = isCompound(*child.node);
        add(Code::FilterDropped, nodeSpan(child.index, false),
            compound ? "this compound filter and every filter in it are lost" : "this filter is lost");
        continue;
      }
      for (; next < match; ++next) add(Code::FilterChanged, nodeSpan(mine.index, false), "the filter gains a part");
      next = match + 1;
      if (isCompound(*child.node)) {
        pending.push({child, other[match].node});
      } else {
        atoms(child, *other[match].node);
      }
    }
    for (; next < other.size(); ++next)
      add(Code::FilterChanged, nodeSpan(mine.index, false), "the filter gains a part");
  }

  // The places of the names of a filter node or a column; none without one.
  template <class Owner>
  std::vector<Span> nameSpans(const Owner* owner) const {
    std::vector<Span> spans;
    if (owner == nullptr) return spans;
    for (std::uint32_t w = owner->firstWord; w < owner->firstWord + owner->wordCount; ++w) {
      if (outline.words[w].part == Part::Name) spans.push_back(outline.words[w].span);
    }
    return spans;
  }

  void atoms(Side mine, const AbstractFilter& theirs) {
    const auto* own = dynamic_cast<const AtomFilter*>(mine.node);
    const auto* other = dynamic_cast<const AtomFilter*>(&theirs);
    if (own == nullptr || other == nullptr) return;
    if (own->isNegated() != other->isNegated()) {
      add(Code::FilterChanged, nodeSpan(mine.index, true),
          std::string("the filter reads back ") + (other->isNegated() ? "negated" : "without negation"));
    }
    const std::vector<Span> names = nameSpans(located ? &outline.nodes[mine.index] : nullptr);
    items(atomItems(*own), atomItems(theirs), names, nodeSpan(mine.index, false));
  }

  // Lists of the same length pair by place; otherwise by name.
  void items(const std::vector<Item>& mine, const std::vector<Item>& theirs, const std::vector<Span>& places,
             Span owner) {
    const auto at = [&](std::size_t k) { return k < places.size() ? places[k] : place(owner); };
    if (mine.size() == theirs.size()) {
      for (std::size_t k = 0; k < mine.size(); ++k) {
        if (mine[k].shown != theirs[k].shown) changed(Code::ItemChanged, at(k), mine[k].shown, theirs[k].shown);
      }
      return;
    }
    // A name given several times pairs in order: the n-th of mine with the
    // n-th of theirs (an ordered multimap keeps equal keys in the order they
    // were added, on every standard library, unlike a hash multimap).
    std::multimap<std::string_view, std::size_t> byName;
    for (std::size_t k = 0; k < theirs.size(); ++k) byName.emplace(theirs[k].name, k);
    std::vector<bool> paired(theirs.size(), false);
    for (std::size_t k = 0; k < mine.size(); ++k) {
      const auto partner = byName.lower_bound(mine[k].name);  // the first of its name
      if (partner == byName.end() || partner->first != mine[k].name) {
        add(Code::ItemDropped, at(k), quoted(mine[k].shown) + " is lost");
        continue;
      }
      const std::string& shown = theirs[partner->second].shown;
      if (shown != mine[k].shown) changed(Code::ItemChanged, at(k), mine[k].shown, shown);
      paired[partner->second] = true;
      byName.erase(partner);
    }
    for (std::size_t k = 0; k < theirs.size(); ++k) {
      if (!paired[k]) add(Code::ItemAdded, place(owner), quoted(theirs[k].shown) + " is gained");
    }
  }

  // Columns of one role pair by type, in order; the rest pair by place as
  // columns of another type. A column whose partner comes earlier than the
  // partner of a column before it has moved.
  void columns(const TavColumnArray& mine, const TavColumnArray& theirs, const RecordColumns& places,
               std::string_view role) {
    const auto placeOf = [&](std::size_t c) { return located && c < places.size() ? &places[c] : nullptr; };
    const auto wholeSpan = [&](std::size_t c) { return placeOf(c) ? placeOf(c)->whole : whole(); };
    const auto typeOf = [](const TavColumn& column) {
      const ValueTypeRow* row = valueTypeRow(column.getValueType());
      return quoted(row != nullptr ? row->keyword : std::string_view());
    };
    const std::string kind = std::string(role) + " column ";
    std::unordered_map<int, std::vector<std::size_t>> byType;
    for (std::size_t c = theirs.size(); c-- > 0;) byType[theirs[c].getValueType()].push_back(c);
    std::vector<std::size_t> partner(mine.size(), theirs.size());
    std::vector<bool> taken(theirs.size(), false);
    std::size_t latest = 0;
    for (std::size_t c = 0; c < mine.size(); ++c) {
      std::vector<std::size_t>& same = byType[mine[c].getValueType()];
      if (same.empty()) continue;
      partner[c] = same.back();
      same.pop_back();
      taken[partner[c]] = true;
      if (partner[c] < latest) {
        add(Code::ColumnMoved, wholeSpan(c), "this " + kind + "reads back as " + kind + std::to_string(partner[c] + 1));
      }
      latest = std::max(latest, partner[c]);
      column(mine[c], theirs[partner[c]], placeOf(c));
    }
    std::size_t other = 0;
    for (std::size_t c = 0; c < mine.size(); ++c) {
      if (partner[c] != theirs.size()) continue;
      while (other < theirs.size() && taken[other]) ++other;
      if (other == theirs.size()) {
        add(Code::ColumnDropped, wholeSpan(c), "the " + kind + typeOf(mine[c]) + " is lost");
        continue;
      }
      taken[other] = true;
      add(Code::ColumnChanged, placeOf(c) ? placeOf(c)->type : whole(),
          "the " + kind + typeOf(mine[c]) + " reads back as " + typeOf(theirs[other]));
    }
    for (std::size_t c = 0; c < theirs.size(); ++c) {
      if (!taken[c])
        add(Code::ColumnAdded, place(Span{outline.text.size(), 0}), "the text gains a " + kind + typeOf(theirs[c]));
    }
  }

  void column(const TavColumn& mine, const TavColumn& theirs, const RecordColumn* place) {
    // The last word of `part` (of column option `o`), else the column's type.
    const auto last = [&](Part part, std::size_t o) {
      return place ? columnWord(outline, *place, part, kLastWord, o) : whole();
    };
    const std::string_view ownMode = accumulationWord(mine.getAccType());
    const std::string_view otherMode = accumulationWord(theirs.getAccType());
    if (ownMode != otherMode) changed(Code::ModeChanged, last(Part::Accumulation, 0), ownMode, otherMode);
    for (int o = 0; o < COLUMN_OPTION_COUNT; ++o) {
      const int own = mine.getColumnFilter().option(TavColumnFilter::Option(o));
      const int other = theirs.getColumnFilter().option(TavColumnFilter::Option(o));
      if (own != other)
        changed(Code::OptionChanged, last(Part::ColumnOption, o), columnOptionWord(o, own), columnOptionWord(o, other));
    }
    items(itemsOf(mine.getEntities()), itemsOf(theirs.getEntities()), nameSpans(place), place ? place->whole : whole());
  }

  void sort(const NetworkKovaRequest& mine, const NetworkKovaRequest& theirs) {
    Span sortPlace = whole(), indexPlace = whole(), updatesPlace = whole();
    if (located) {
      // The last word that sets the sort; without one, the older peers' sort comes from the first key.
      sortPlace = outline.keys.empty() ? Span{outline.text.size(), 0} : outline.keys[0].whole;
      if (!outline.sorts.empty()) sortPlace = outline.sorts.back().type;
      // The index and the updates where validation places them, unless a column's sort word comes last.
      const bool option = !outline.sorts.empty() && outline.sorts.back().column < 0;
      indexPlace = option ? blamedPlace(outline, Blame{Blame::SortIndex}) : sortPlace;
      updatesPlace = blamedPlace(outline, Blame{Blame::MaxUpdates});
    }
    const TavSortType own = appliedSort(mine);
    const TavSortType other = appliedSort(theirs);
    if (own != other) {
      add(Code::SortChanged, sortPlace,
          describeSort(own, mine.getSortIndex()) + " reads back as " + describeSort(other, theirs.getSortIndex()));
    } else if (mine.getSortIndex() != theirs.getSortIndex()) {
      // The text leaves the index out (one value column, or no sort): it reads back as 1.
      const std::string index(kSortOptions[SORT_INDEX].text);
      changed(Code::SortChanged, indexPlace, index + std::to_string(mine.getSortIndex()),
              index + std::to_string(theirs.getSortIndex()), refusedButAccepted(mine, theirs));
    }
    if (mine.getMaxUpdates() != theirs.getMaxUpdates()) {
      const std::string updates(kSortOptions[SORT_UPDATES].text);
      changed(Code::SortChanged, updatesPlace, updates + std::to_string(mine.getMaxUpdates()),
              updates + std::to_string(theirs.getMaxUpdates()));
    }
  }

  // ", which accepts the text although it refuses the request: MESSAGE" when
  // the peer's text turns a refused request into an accepted one.
  std::string refusedButAccepted(const NetworkKovaRequest& mine, const NetworkKovaRequest& theirs) const {
    NetworkKovaRequest request(mine), text(theirs);
    std::string refusal, none;
    try {
      if (request.isValid(peer, refusal) || !text.isValid(peer, none)) return std::string();
    } catch (const std::string&) {  // a type without a keyword in a message: no verdict to tell
      return std::string();
    }
    return ", which accepts the text although it refuses the request: " + refusal;
  }

  const Record& outline;
  bool located;
  TavVersion peer;
  Findings& found;
};

}  // namespace

// The comparison of `request` with what its text for `peer` reads back as;
// `reading` holds the record of the text (its places when `located`).
std::vector<Diagnostic> compare(const LYTKovaRequest& request, const Reading& reading, bool located, TavVersion peer) {
  Findings found;
  if (const auto* network = dynamic_cast<const NetworkKovaRequest*>(&request)) {
    Comparison(reading.record, located, peer, found).network(*network);
  } else if (const auto* link = dynamic_cast<const E2EKovaRequest*>(&request)) {
    const bool placed = located && reading.accepted && reading.record.virtualLink;
    Comparison(reading.record, placed, peer, found).virtualLink(*link);
  }
  return found.finish();
}

}  // namespace detail

std::vector<Diagnostic> fidelity(const std::string& text, const LYTKovaRequest& request, TavVersion peer) {
  // A network request's record is its places only when the text reads as that request.
  const auto* network = dynamic_cast<const NetworkKovaRequest*>(&request);
  detail::Reading reading;
  const bool located = network == nullptr || detail::recordFor(text, *network, reading);
  if (network == nullptr) reading = detail::readText(text, true, detail::Keep::Record);
  return detail::compare(request, reading, located, peer);
}

std::vector<Diagnostic> fidelity(const std::string& text, TavVersion peer) {
  return RecordedRequest(text).fidelity(peer);
}

}  // namespace lytFilterParser
