// Functions of the platform that fail on demand.
#pragma once

#include <windows.h>

#include <cstdint>

namespace tellurvane {

// A function of the platform, and what a caller sees when it fails.
struct PlatformCall {
  const char* name = nullptr;
  std::uint64_t answer = 0;
  DWORD error = ERROR_NOT_ENOUGH_MEMORY;  // the last error then
};

// During its life the program's own calls of the function are counted, and selected calls fail. It
// replaces the entries of the program's import tables, delay-loaded ones too. Calls inside the
// system's libraries are not affected. At most one object for each function at a time.
class FailingImport {
 public:
  explicit FailingImport(const PlatformCall& call);
  FailingImport(const FailingImport&) = delete;
  FailingImport& operator=(const FailingImport&) = delete;
  ~FailingImport();

  // False if the program does not import the function. Then no call fails.
  bool IsImported() const;

  // Starts counting again: the next call is number 1. The calls from `first` to `last` fail.
  void Fail(int first, int last);
  void Fail(int number) { Fail(number, number); }
  // Starts counting again. No call fails.
  void LetAllThrough();
  // From now on the calls that do not fail reach this function, which has the platform's signature.
  template <typename Function>
  void Replace(Function* function) {
    ReplaceWith(reinterpret_cast<void*>(function));
  }
  int Calls() const;

 private:
  struct Hook;

  static Hook& HookOf(const PlatformCall& call);
  void ReplaceWith(void* function);

  Hook& hook_;
};

}  // namespace tellurvane
