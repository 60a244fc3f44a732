// Heap allocation counting for the benchmark binary: alloc_counter.cpp
// replaces the global operator new and delete. Because the executable
// defines them, the shared library's allocations (and those libstdc++ makes
// for it) bind to these definitions too.
#ifndef LYTFILTERPARSER_BENCH_ALLOC_COUNTER_H
#define LYTFILTERPARSER_BENCH_ALLOC_COUNTER_H

#include <cstddef>

namespace bench {

struct AllocStats {
  std::size_t allocations = 0;
  std::size_t bytes = 0;
};

// Allocations made by the calling thread so far.
AllocStats allocStats();

// Allocations made by `body()` on the calling thread.
template <typename Body>
AllocStats countAllocations(Body&& body) {
  const AllocStats before = allocStats();
  body();
  const AllocStats after = allocStats();
  return {after.allocations - before.allocations, after.bytes - before.bytes};
}

}  // namespace bench

#endif
