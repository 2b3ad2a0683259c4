#include "ui/Boundary.h"

#include <windows.h>

namespace tellurvane {
namespace {

FatalHandler fatalHandler = nullptr;
bool isEnding = false;

}  // namespace

void SetFatalHandler(FatalHandler handler) { fatalHandler = handler; }

bool IsEnding() { return isEnding; }

void EndAfter(const std::exception_ptr& error) noexcept {
  if (!isEnding && fatalHandler != nullptr) {
    isEnding = true;
    fatalHandler(error);
  }
  ExitProcess(1);
}

}  // namespace tellurvane
