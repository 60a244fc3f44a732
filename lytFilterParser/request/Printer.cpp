// The request syntax, written. Every dump() of the library is here: the
// current syntax in grammar order (filter tree, columns, sort, "vl"), then
// the legacy option syntax of older peers. All of it appends to one
// detail::Writer buffer per call, and takes its words from the vocabulary.
// Nearly every item ends in one blank; the doubled and trailing blanks that
// follow are part of the text callers compare.
#include "lytFilterParser/detail/Text.h"
#include "lytFilterParser/detail/Writer.h"
#include "lytFilterParser/filter/FilterVisit.h"
#include "lytFilterParser/request/E2EKovaRequest.h"
#include "lytFilterParser/request/NetworkKovaRequest.h"
#include "lytFilterParser/vocab/LegacySyntax.h"
#include "lytFilterParser/vocab/ValueTypeTable.h"

namespace lytFilterParser {
namespace detail {
namespace {

// ---------------------------------------------------------------------------
// entities and interface items
// ---------------------------------------------------------------------------

// Marked inline because text() takes its address for TavEntity::dump, after
// which GCC stopped inlining it into the array's loop (7 instructions an
// entity, measured).
inline void write(Writer& out, const TavEntity& entity) {
  out << entity.getName();
  if (!entity.getResolvedName().empty()) out << kEntitySeparator << entity.getResolvedName();
}

// Every entity followed by one blank.
void write(Writer& out, const TavEntityArray& entities) {
  for (const TavEntity& entity : entities) {
    write(out, entity);
    out << ' ';
  }
}

std::string_view directionWord(TavFilterDirType direction) {
  return direction == TAV_DIR_BOTH ? std::string_view() : wordOf<int>(kDirections, direction);
}

void write(Writer& out, const InterfaceInfo& item) {
  out << item.getName();
  const std::string_view direction = directionWord(item.getDirection());
  if (!direction.empty()) out << kDirectionSeparator << direction;
}

// " item " for every item.
void write(Writer& out, const InterfaceInfoList& items) {
  for (const InterfaceInfo& item : items) {
    out << ' ';
    write(out, item);
    out << ' ';
  }
}

// ---------------------------------------------------------------------------
// filter tree
// ---------------------------------------------------------------------------

std::string_view negationWord() { return kNegationWords[0].text; }

// "-f TYPE not " or "-f TYPE  ".
void writeAtom(Writer& out, TavValType type, bool negated) {
  out << optionWord(OPTION_FILTER) << ' ' << valueTypeKeyword(type) << ' ';
  if (negated) out << negationWord();
  out << ' ';
}

// "-f TYPE not NAME ... " or "-f TYPE  NAME ... ", and one more blank.
void write(Writer& out, const ContentFilter& filter) {
  writeAtom(out, filter.getFilterType(), filter.isNegated());
  write(out, filter.getEntities());
  out << ' ';
}

void write(Writer& out, const InterfaceAtomFilter& filter) {
  writeAtom(out, TAV_INTERFACE, filter.isNegated());
  write(out, filter.getInterfaces());
}

std::string_view operatorWord(FilterOperator op) {
  const std::string_view word = wordOf<FilterOperator>(kFilterOperators, op);
  if (word.empty()) fail("dumpOperator:  not valid operator");
  return word;
}

// A filter of a class of the caller's own writes itself.
void write(Writer& out, const AbstractFilter& node) { out << node.dump(); }

// "-f OPERATOR [ " before the children of a compound filter that has more
// than one, "]" after them; one blank after all.
void openCompound(Writer& out, const Filter& filter) {
  if (filter.getChildren().size() > 1) {
    out << optionWord(OPTION_FILTER) << ' ' << operatorWord(filter.getOperator()) << ' ' << kOpenBracket << ' ';
  }
}

void closeCompound(Writer& out, const Filter& filter) {
  if (filter.getChildren().size() > 1) out << kCloseBracket;
  out << ' ';
}

// A compound filter with every child followed by one blank.
void write(Writer& out, const Filter& filter) {
  openCompound(out, filter);
  walkFilter(
      filter,
      [&out](const Filter& inner) {
        openCompound(out, inner);
        return true;
      },
      [&out](const Filter& inner) {
        closeCompound(out, inner);
        out << ' ';
        return true;
      },
      [&out](const AbstractFilter& node) {
        visit(node, [&out](const auto& atom) { write(out, atom); });
        out << ' ';
        return true;
      });
  closeCompound(out, filter);
}

// ---------------------------------------------------------------------------
// columns and sort
// ---------------------------------------------------------------------------

// The options that restrict anything, each followed by a blank.
void write(Writer& out, const TavColumnFilter& filter) {
  for (int o = 0; o < COLUMN_OPTION_COUNT; ++o) {
    const int value = filter.option(TavColumnFilter::Option(o));
    if (value == kColumnOptions[o].unrestricted) continue;
    const std::string_view word = wordOf<int>(kColumnOptions[o].values, value);
    if (!word.empty()) out << kColumnOptions[o].name << word << ' ';
  }
}

std::string_view roleOption(KeyOrValue role) {
  return role == TAV_KEY ? optionWord(OPTION_KEY) : role == TAV_VALUE ? optionWord(OPTION_VALUE) : std::string_view();
}

// Role, type, mode, options, entities; every item followed by a blank.
void write(Writer& out, const TavColumn& column) {
  const std::string_view role = roleOption(column.getKeyOrValue());
  if (!role.empty()) out << role << ' ';
  out << valueTypeKeyword(column.getValueType()) << ' ';
  const std::string_view acc = accumulationWord(column.getAccType());
  if (!acc.empty()) out << acc << ' ';
  write(out, column.getColumnFilter());
  write(out, column.getEntities());
}

void write(Writer& out, const TavColumnArray& columns) {
  for (const TavColumn& column : columns) write(out, column);
}

// "-s TYPE", then "index=" when there is more than one value column and
// "updates=" when it is not the default; nothing for no sort.
void writeSort(Writer& out, const NetworkKovaRequest& request) {
  const TavSortType type = request.getSortType();
  if (type == TAV_SORT_NONE) return;
  const std::string_view word = sortTypeWord(type);
  if (!word.empty()) out << optionWord(OPTION_SORT) << ' ' << word << ' ';
  if (request.getValues().size() > 1) out << kSortOptions[SORT_INDEX].text << request.getSortIndex() << ' ';
  if (request.getMaxUpdates() != NetworkKovaRequest::defaultMaxUpdates) {
    out << kSortOptions[SORT_UPDATES].text << request.getMaxUpdates() << ' ';
  }
}

// ---------------------------------------------------------------------------
// request
// ---------------------------------------------------------------------------

std::size_t entityTextSize(const TavEntityArray& entities) {
  std::size_t size = 0;
  for (const TavEntity& entity : entities) size += entity.getName().size() + entity.getResolvedName().size() + 3;
  return size;
}

// An upper estimate of the request's text, so that writing a large request
// fills one buffer instead of regrowing it.
std::size_t requestTextSize(const NetworkKovaRequest& request) {
  std::size_t size = 80;
  const auto compound = [&size](const Filter&) {
    size += 16;
    return true;
  };
  walkFilter(
      request.getFilter(), compound, [](const Filter&) { return true; },
      [&size](const AbstractFilter& node) {
        const bool content = isExactly<ContentFilter>(node);
        size += content ? 32 + entityTextSize(static_cast<const ContentFilter&>(node).getEntities()) : 64;
        return true;
      });
  for (const TavColumnArray* columns : {&request.getKeys(), &request.getValues()}) {
    for (const TavColumn& column : *columns) size += 96 + entityTextSize(column.getEntities());
  }
  return size;
}

// ---------------------------------------------------------------------------
// legacy option syntax
// ---------------------------------------------------------------------------

// "[TYPE FLAG [ENTITY ...]]" for a content atom, "[interface FLAG [[NAME in]...]]"
// for an interface atom. Legacy peers know no "both": such an item goes out
// as outbound.
void writeLegacyAtom(Writer& out, const AtomFilter& atom) {
  out << kOpenBracket << valueTypeKeyword(atom.getFilterType()) << ' ' << legacyNegationFlag(atom.isNegated()) << ' '
      << kOpenBracket;
  if (atom.getFilterType() == TAV_INTERFACE) {
    if (const InterfaceAtomFilter* interfaces = dynamic_cast<const InterfaceAtomFilter*>(&atom)) {
      for (const InterfaceInfo& item : interfaces->getInterfaces()) {
        const TavFilterDirType direction = item.getDirection() == TAV_DIR_IN ? TAV_DIR_IN : TAV_DIR_OUT;
        out << kOpenBracket << item.getName() << ' ' << directionWord(direction) << kCloseBracket;
      }
    }
  } else if (const ContentFilterBase* content = dynamic_cast<const ContentFilterBase*>(&atom)) {
    write(out, content->getEntities());
  }
  out << kCloseBracket << kCloseBracket;
}

// "-filter [ and [" with the root's atoms (nested compound filters are not
// written) and "]] ", "-a i" when the request pairs a key with a
// connection-id key (else "-a a"), "-y LETTER" for the first value column
// when a letter describes it, "-g WORD" for the first key (the top form when
// it has no entities) and its entities.
std::string legacyText(const NetworkKovaRequest& request) {
  const TavColumnArray& keys = request.getKeys();
  const TavColumnArray& values = request.getValues();
  Writer out(128);
  out << legacyOptionWord(LEGACY_FILTER) << ' ' << kOpenBracket << ' ' << operatorWord(FILTER_AND) << ' '
      << kOpenBracket;
  for (const std::unique_ptr<AbstractFilter>& child : request.getFilter().getChildren()) {
    if (child->getIsAtom() == 0) continue;
    if (const AtomFilter* atom = dynamic_cast<const AtomFilter*>(child.get())) writeLegacyAtom(out, *atom);
  }
  out << kCloseBracket << kCloseBracket << ' ';
  const bool connIdPair =
      keys.size() == 2 && (keys[0].getValueType() == TAV_CONNID || keys[1].getValueType() == TAV_CONNID);
  out << legacyOptionWord(LEGACY_AGGREGATE) << ' ' << wordOf<int>(kLegacyAggregates, connIdPair ? TAV_CONNID : -1)
      << ' ';
  const LegacyValue* letter =
      values.empty() ? nullptr : legacyValueWritten(values[0].getValueType(), values[0].getAccType());
  if (letter != nullptr) out << legacyOptionWord(LEGACY_VALUE) << ' ' << letter->letter << ' ';
  if (keys.empty()) return out.finish();
  const std::string_view group = legacyGroupWord(keys[0].getValueType(), keys[0].getEntities().empty());
  if (!group.empty()) out << legacyOptionWord(LEGACY_GROUP) << ' ' << group << ' ';
  write(out, keys[0].getEntities());
  return out.finish();
}

// What a request writes for a peer it has no text for.
constexpr const char* kUnsupportedPeer = "4.1 and under is not supported";

// `object` as `writeObject` writes it.
template <class T>
std::string text(const T& object, void (*writeObject)(Writer&, const T&) = write) {
  Writer out;
  writeObject(out, object);
  return out.finish();
}

// `word` and a blank, nothing for no word.
std::string wordAndBlank(std::string_view word) { return word.empty() ? std::string() : std::string(word) + ' '; }

}  // namespace
}  // namespace detail
}  // namespace lytFilterParser

namespace detail = lytFilterParser::detail;
using detail::text;

std::string TavEntity::dump() const { return text(*this); }

std::string TavEntity::dump(const std::string& resolvedName_, const std::string& name_) {
  return TavEntity(name_, resolvedName_).dump();
}

std::string TavEntityArray::dump() const { return text(*this); }

std::string AtomFilter::dumpNot() const { return isNegated() ? std::string(detail::negationWord()) : std::string(); }

std::string ContentFilterBase::dumpFilterType() const { return lytFilterParser::dumpValueType(filterType); }

std::string ContentFilterBase::dumpEntities() const { return entities.dump(); }

std::string ContentFilter::dump() const { return text(*this); }

std::string InterfaceInfo::dump() const { return text(*this); }

std::string InterfaceInfo::dumpDirection() const {
  const std::string_view word = detail::directionWord(direction);
  return word.empty() ? std::string() : detail::kDirectionSeparator + std::string(word);
}

std::string InterfaceAtomFilter::dump() const { return text(*this); }

std::string InterfaceAtomFilter::dumpInterfaceInfoList() const { return text(interfaces); }

std::string InterfaceAtomFilter::dumpFilterType() const { return std::string(detail::valueTypeKeyword(TAV_INTERFACE)); }

std::string Filter::dump() const { return text(*this); }

std::string Filter::dumpOperator() const { return std::string(detail::operatorWord(filterOperator)); }

std::string TavColumnFilter::dump() const { return text(*this); }

std::string TavColumn::dump() const { return text(*this); }

std::string TavColumn::dumpkeyOrValue() const { return detail::wordAndBlank(detail::roleOption(keyOrValue)); }

std::string TavColumn::dumpAccumulationMode() const { return detail::wordAndBlank(detail::accumulationWord(accType)); }

std::string TavColumnArray::dump() const { return text(*this); }

std::string NetworkKovaRequest::dumpSort() const { return text(*this, detail::writeSort); }

std::string NetworkKovaRequest::dump() const {
  detail::Writer out(detail::requestTextSize(*this));
  detail::write(out, filter);
  detail::write(out, keys);
  detail::write(out, values);
  detail::writeSort(out, *this);
  return out.finish();
}

std::string NetworkKovaRequest::dump(TavVersion version) const {
  if (version == TAV_VERSION_CURRENT) return dump();
  if (version == TAV_VERSION_LEGACY_1 || version == TAV_VERSION_LEGACY_2) return detail::legacyText(*this);
  if (version <= TAV_VERSION_UNSUPPORTED) return detail::kUnsupportedPeer;
  return "";
}

std::string E2EKovaRequest::dumpDataType() const {
  return std::string(detail::wordOf<tLytpE2eDataType>(detail::kDataTypes, dataType));
}

std::string E2EKovaRequest::dump() const {
  detail::Writer out(vlName.size() + 18);
  out << detail::kVirtualLinkWord << ' ' << vlName << ' ' << detail::kDataTypeOption << ' ' << dumpDataType();
  return out.finish();
}

std::string E2EKovaRequest::dump(TavVersion version) const {
  if (version == TAV_VERSION_CURRENT) return dump();
  if (version <= TAV_VERSION_UNSUPPORTED) return detail::kUnsupportedPeer;
  return "";
}
