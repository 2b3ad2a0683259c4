// Memory that runs out: the operators new of the test program, made to fail.
#pragma once

namespace tellurvane {

// While it lives, all but the first `granted` allocations fail with std::bad_alloc.
class FailingAllocation {
 public:
  explicit FailingAllocation(int granted);
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
