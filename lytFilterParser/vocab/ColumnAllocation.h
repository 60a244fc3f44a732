// The column catalogue's allocation state, for callers that must hold it
// across one request's reset and allocations.
#ifndef LYTFILTERPARSER_VOCAB_COLUMNALLOCATION_H
#define LYTFILTERPARSER_VOCAB_COLUMNALLOCATION_H

#include <mutex>

#include "lytFilterParser/vocab/ValueType.h"

namespace lytFilterParser {
namespace detail {

// The query-interface type codes the allocation and the mapping keep a place for (0..39).
constexpr int kTypeCodes = 40;

LFP_HIDDEN std::mutex& columnAllocationMutex();
// getNextOpenKovaCoulmn without taking the lock; the caller holds it.
LFP_HIDDEN int nextOpenColumnLocked(QULET_VT type);

}  // namespace detail
}  // namespace lytFilterParser

#endif
