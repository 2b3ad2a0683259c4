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

// While it lives, this program's own calls of the function are counted, and those that are asked to
// fail do. The entry of the program's import table is exchanged for it, of the plain one and of the
// one that is filled at the first call: what the system's libraries call among themselves is not
// touched. One for each function at a time.
class FailingImport {
 public:
  explicit FailingImport(const PlatformCall& call);
  FailingImport(const FailingImport&) = delete;
  FailingImport& operator=(const FailingImport&) = delete;
  ~FailingImport();

  // False where the program does not call the function at all: then none ever fails.
  bool IsImported() const;

  // From here on calls are counted anew, from 1; those from the first to the last fail.
  void Fail(int first, int last);
  void Fail(int number) { Fail(number, number); }
  // Counted anew, and none fails.
  void LetAllThrough();
  int Calls() const;

 private:
  struct Hook;

  static Hook& HookOf(const PlatformCall& call);

  Hook& hook_;
};

}  // namespace tellurvane
