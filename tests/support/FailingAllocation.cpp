#include "tests/support/FailingAllocation.h"

#include <cstddef>
#include <cstdlib>
#include <new>
#include <utility>

namespace tellurvane {
namespace {

bool isActive = false;
bool hasHappened = false;
int granted = 0;
int failing = 0;
int asked = 0;
bool (*counts)() = nullptr;

bool Fails() {
  if (!isActive || (counts != nullptr && !counts())) return false;
  ++asked;
  return asked > granted && asked - granted <= failing;
}

void* Allocated(std::size_t size) {
  if (Fails()) {
    hasHappened = true;
    throw std::bad_alloc();
  }
  if (void* const memory = std::malloc(size == 0 ? 1 : size)) return memory;
  throw std::bad_alloc();
}

}  // namespace

FailingAllocation::FailingAllocation(int toGrant, int toFail, bool (*toCount)()) {
  granted = toGrant;
  failing = toFail;
  counts = toCount;
  asked = 0;
  hasHappened = false;
  isActive = true;
}
FailingAllocation::~FailingAllocation() { isActive = false; }
bool FailingAllocation::Happened() { return hasHappened; }

AllocationPause::AllocationPause() : wasActive_(std::exchange(isActive, false)) {}
AllocationPause::~AllocationPause() { isActive = wasActive_; }

}  // namespace tellurvane

void* operator new(std::size_t size) { return tellurvane::Allocated(size); }
void* operator new[](std::size_t size) { return tellurvane::Allocated(size); }
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete[](void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
void operator delete[](void* memory, std::size_t) noexcept { std::free(memory); }
