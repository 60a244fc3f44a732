// Replacement of the global allocation functions that counts calls per
// thread. The counter is thread-local, so it costs a plain increment and
// needs no atomic operation in the measured loops.
#include "alloc_counter.h"

#include <cstdlib>
#include <new>

namespace {

thread_local std::size_t tAllocations = 0;
thread_local std::size_t tBytes = 0;

void* allocate(std::size_t size) {
  ++tAllocations;
  tBytes += size;
  if (size == 0) size = 1;
  for (;;) {
    if (void* p = std::malloc(size)) return p;
    std::new_handler handler = std::get_new_handler();
    if (handler == nullptr) throw std::bad_alloc();
    handler();
  }
}

void* allocateNoThrow(std::size_t size) noexcept {
  try {
    return allocate(size);
  } catch (...) {
    return nullptr;
  }
}

}  // namespace

namespace bench {

AllocStats allocStats() { return {tAllocations, tBytes}; }

}  // namespace bench

void* operator new(std::size_t size) { return allocate(size); }
void* operator new[](std::size_t size) { return allocate(size); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return allocateNoThrow(size); }
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept { return allocateNoThrow(size); }

void operator delete(void* p) noexcept { std::free(p); }
void operator delete[](void* p) noexcept { std::free(p); }
void operator delete(void* p, std::size_t) noexcept { std::free(p); }
void operator delete[](void* p, std::size_t) noexcept { std::free(p); }
void operator delete(void* p, const std::nothrow_t&) noexcept { std::free(p); }
void operator delete[](void* p, const std::nothrow_t&) noexcept { std::free(p); }
