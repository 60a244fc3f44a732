#include "lytFilterParser/column/TavColumn.h"

#include "lytFilterParser/detail/Keyword.h"
#include "lytFilterParser/detail/Writer.h"
#include "lytFilterParser/detail/Reader.h"
#include "lytFilterParser/detail/Text.h"
#include "lytFilterParser/detail/ValueTypeTable.h"

using lytFilterParser::detail::fail;

namespace {

using lytFilterParser::detail::keyword;

struct AccWord {
  lytFilterParser::detail::Keyword word;
  TavAccType code;
};

// What the reader accepts, in its order of comparison (exact match).
constexpr AccWord kAccRead[] = {
    {keyword("acc=replace"), TAV_ACC_REPLACE}, {keyword("acc=rate"), TAV_ACC_RATE},
    {keyword("acc=new"), TAV_ACC_NEW},         {keyword("acc=sum"), TAV_ACC_SUM},
    {keyword("acc=concurrent"), TAV_ACC_CONCURRENT}, {keyword("acc=min"), TAV_ACC_MIN},
    {keyword("acc=max"), TAV_ACC_MAX},         {keyword("acc=lineUtil"), TAV_ACC_LINEUTIL},
};

// What the writer writes, by code; the second concurrent kind shares the keyword.
constexpr std::string_view kAccWritten[] = {
    "acc=replace ", "acc=rate ", "acc=new ", "acc=sum ", "acc=concurrent ",
    "acc=concurrent ", "acc=min ", "acc=max ", "acc=lineUtil ",
};

std::string_view accWritten(TavAccType acc) {
  const unsigned index = static_cast<unsigned>(acc);
  return index < sizeof kAccWritten / sizeof kAccWritten[0] ? kAccWritten[index] : std::string_view();
}

// The option word of a role; nothing for a code that is neither.
std::string_view roleWritten(KeyOrValue role) {
  if (role == TAV_KEY) return "-k ";
  if (role == TAV_VALUE) return "-v ";
  return "";
}

}  // namespace

TavColumn::TavColumn(KeyOrValue role, TavValType type, TavAccType acc, const TavEntityArray& list,
                     const TavColumnFilter& filter)
    : keyOrValue(role), valueType(type), accType(acc), entities(list), columnFilter(filter) {}

TavColumn::TavColumn(KeyOrValue role, TavValType type, TavAccType acc, const TavColumnFilter& filter)
    : keyOrValue(role), valueType(type), accType(acc), columnFilter(filter) {}

TavColumn::TavColumn(KeyOrValue role)
    : keyOrValue(role),
      valueType(role == TAV_KEY ? TAV_SVC : TAV_AB),
      accType(role == TAV_KEY ? TAV_ACC_REPLACE : TAV_ACC_RATE) {}

TavColumn::TavColumn(KeyOrValue role, strList& tokens, strIter& cur, std::string& sortOption) : TavColumn(role) {
  lytFilterParser::detail::Reader::column(*this, tokens, cur, sortOption);
}

template <class Tokens>
void lytFilterParser::detail::Reader::column(TavColumn& column, Tokens& tokens, Iter<Tokens>& cur,
                                             std::string& sortOption) {
  if (cur == tokens.end()) fail("Expected type at this point but there is no data");
  column.valueType = valueType(*cur);
  ++cur;
  while (cur != tokens.end()) {
    const std::string_view token = *cur;
    if (firstChar(token) == '-') break;
    if (contains(token, "acc")) {
      accumulation(column, tokens, cur);
    } else if (contains(token, "sort")) {
      sortOption.assign(token.data(), token.size());
      ++cur;
    } else if (token.find('=') != std::string_view::npos) {
      columnFilter(column.columnFilter, tokens, cur);
    } else {
      entities(column.entities, tokens, cur);
      // A bracket that closes nothing here stays with the column as an entity.
      if (cur != tokens.end() && isChar(*cur, ']')) {
        column.entities.add(TavEntity(std::string("]")));
        ++cur;
      }
    }
  }
}

#define LFP_INSTANTIATE_COLUMN(Tokens) \
  template void lytFilterParser::detail::Reader::column<Tokens>(TavColumn&, Tokens&, Tokens::iterator&, std::string&);
LFP_FOR_EACH_TOKEN_SEQUENCE(LFP_INSTANTIATE_COLUMN)
#undef LFP_INSTANTIATE_COLUMN

TavColumn::~TavColumn() = default;

TavColumn* TavColumn::clone() const { return new TavColumn(keyOrValue, valueType, accType, entities, columnFilter); }

void TavColumn::parseAccumulationMode(strList& tokens, strIter& cur) {
  lytFilterParser::detail::Reader::accumulation(*this, tokens, cur);
}

template <class Tokens>
void lytFilterParser::detail::Reader::accumulation(TavColumn& column, Tokens& tokens, Iter<Tokens>& cur) {
  if (cur == tokens.end()) fail("Expected type at this point but there is no data");
  const std::string_view token = *cur;
  for (const AccWord& word : kAccRead) {
    if (equals(token, word.word)) {
      column.accType = word.code;
      ++cur;
      return;
    }
  }
  fail(message("Invalid accumulation mode: ", token));
}

LFP_INSTANTIATE_READER(accumulation, TavColumn&);

std::string TavColumn::dumpkeyOrValue() const { return std::string(roleWritten(keyOrValue)); }

std::string TavColumn::dumpAccumulationMode() const { return std::string(accWritten(accType)); }

void TavColumn::appendTo(lytFilterParser::detail::Writer& out) const {
  out << roleWritten(keyOrValue);
  out << lytFilterParser::detail::valueTypeKeyword(valueType);
  out << ' ';
  out << accWritten(accType);
  columnFilter.appendTo(out);
  entities.appendTo(out);
}

std::string TavColumn::dump() const {
  lytFilterParser::detail::Writer out;
  appendTo(out);
  return out.finish();
}

void TavColumn::getModuleNames(strList& names) const { entities.getModuleNames(names); }

bool TavColumn::setModuleNames(strIter& oldName, strIter& newName) { return entities.setModuleNames(oldName, newName); }
