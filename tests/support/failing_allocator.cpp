#include "support/failing_allocator.h"

#include <cstdlib>
#include <new>

namespace ktltest {

int failCountdown = -1;

}  // namespace ktltest

namespace {

void* allocate(std::size_t size) {
  return std::malloc(size ? size : 1);
}

void* allocateOrFail(std::size_t size) {
  if (ktltest::failCountdown == 0) {
    ktltest::failCountdown = -1;
    return nullptr;
  }
  if (ktltest::failCountdown > 0) --ktltest::failCountdown;
  return allocate(size);
}

void* allocateOrThrow(std::size_t size) {
  void* memory = allocate(size);
  if (!memory) throw std::bad_alloc();
  return memory;
}

}  // namespace

// Every form goes through malloc and free, so that memory from either kind of new can be
// released by either kind of delete without a mismatch.
void* operator new(std::size_t size) {
  return allocateOrThrow(size);
}
void* operator new[](std::size_t size) {
  return allocateOrThrow(size);
}
void* operator new(std::size_t size, std::nothrow_t const&) noexcept {
  return allocateOrFail(size);
}
void* operator new[](std::size_t size, std::nothrow_t const&) noexcept {
  return allocateOrFail(size);
}
void operator delete(void* memory) noexcept {
  std::free(memory);
}
void operator delete[](void* memory) noexcept {
  std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
  std::free(memory);
}
void operator delete[](void* memory, std::size_t) noexcept {
  std::free(memory);
}
void operator delete(void* memory, std::nothrow_t const&) noexcept {
  std::free(memory);
}
void operator delete[](void* memory, std::nothrow_t const&) noexcept {
  std::free(memory);
}
