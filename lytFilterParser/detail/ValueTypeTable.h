// Allocation-free access to the value-type keywords for the writers.
#ifndef LYTFILTERPARSER_DETAIL_VALUETYPETABLE_H
#define LYTFILTERPARSER_DETAIL_VALUETYPETABLE_H

#include "lytFilterParser/Export.h"
#include "lytFilterParser/vocab/ValueType.h"

namespace lytFilterParser {
namespace detail {

// The written keyword of `type`, or nullptr where dumpValueType throws.
LFP_HIDDEN const char* valueTypeKeyword(TavValType type);

}  // namespace detail
}  // namespace lytFilterParser

#endif
