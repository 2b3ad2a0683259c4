// Tests that rely on facts of Wine.
#pragma once

#include <windows.h>

#include <gtest/gtest.h>

namespace tellurvane {

inline bool IsWine() {
  return GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr;
}

}  // namespace tellurvane

// The kit runs the tests on Windows too. tests/under-wine fails where a test is skipped.
#define SKIP_UNLESS_WINE(reason) \
  if (!tellurvane::IsWine()) GTEST_SKIP() << "Wine only: " << (reason)
