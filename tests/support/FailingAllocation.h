// Memory that runs out: the operators new of the test program, made to fail.
#pragma once

#include <climits>

namespace tellurvane {

// While it lives, allocations fail with std::bad_alloc: `failing` of them, after the first
// `granted` ones. Where `counts` is given, those that it is false for succeed and are not counted;
// it must not allocate.
class FailingAllocation {
 public:
  explicit FailingAllocation(int granted, int failing = INT_MAX, bool (*counts)() = nullptr);
  FailingAllocation(const FailingAllocation&) = delete;
  FailingAllocation& operator=(const FailingAllocation&) = delete;
  ~FailingAllocation();

  // Whether one has failed.
  static bool Happened();
};

// While it lives, allocations succeed again and are not counted: what belongs to the test's own
// stand-ins does not run out of memory.
class AllocationPause {
 public:
  AllocationPause();
  AllocationPause(const AllocationPause&) = delete;
  AllocationPause& operator=(const AllocationPause&) = delete;
  ~AllocationPause();

 private:
  bool wasActive_;
};

}  // namespace tellurvane
