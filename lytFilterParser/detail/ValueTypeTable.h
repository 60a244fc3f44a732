// Allocation-free access to the value-type keywords for the readers and writers.
#ifndef LYTFILTERPARSER_DETAIL_VALUETYPETABLE_H
#define LYTFILTERPARSER_DETAIL_VALUETYPETABLE_H

#include <string_view>

#include "lytFilterParser/Export.h"
#include "lytFilterParser/vocab/ValueType.h"

namespace lytFilterParser {
namespace detail {

// The written keyword of `type`; throws "Not a valid argument for type" for
// a type without one, as dumpValueType does.
LFP_HIDDEN std::string_view valueTypeKeyword(TavValType type);

// getValueType for a token read in place.
LFP_HIDDEN TavValType valueType(std::string_view keyword);

}  // namespace detail
}  // namespace lytFilterParser

#endif
