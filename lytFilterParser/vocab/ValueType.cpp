#include "lytFilterParser/vocab/ValueType.h"

#include "lytFilterParser/detail/Text.h"
#include "lytFilterParser/vocab/ValueTypeTable.h"

namespace lytFilterParser {
namespace detail {

void refuseValueType() { fail("Not a valid argument for type"); }

TavValType valueType(std::string_view keyword) {
  const ValueTypeRow* row = findValueType(keyword);
  if (row == nullptr) fail("Invalid type: " + std::string(keyword));
  return row->type;
}

}  // namespace detail

std::string dumpValueType(TavValType type) { return std::string(detail::valueTypeKeyword(type)); }

TavValType getValueType(const std::string& keyword) { return detail::valueType(keyword); }

QULET_VT getKovaType(TavValType type) {
  const detail::ValueTypeRow* row = detail::valueTypeRow(type);
  if (row == nullptr) detail::fail("not a valid argument for getKovaType");
  return row->kovaCode;
}

}  // namespace lytFilterParser
