// Memory that runs out: the operators new of the test program, made to fail.
#pragma once

#include <climits>

namespace tellurvane {

// During its life the first `granted` allocations succeed, and the next `failing` ones throw
// std::bad_alloc. If `counts` is given, allocations for which it returns false succeed and are not
// counted. `counts` must not allocate.
class FailingAllocation {
 public:
  explicit FailingAllocation(int granted, int failing = INT_MAX, bool (*counts)() = nullptr);
  FailingAllocation(const FailingAllocation&) = delete;
  FailingAllocation& operator=(const FailingAllocation&) = delete;
  ~FailingAllocation();

  // Whether one has failed.
  static bool Happened();
};

// During its life allocations succeed and are not counted. For the fakes of a test, which must not
// run out of memory.
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
