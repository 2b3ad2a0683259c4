// What ends a process is tried in a process of its own.
#include "ui/Boundary.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <cstdio>
#include <stdexcept>

namespace tellurvane {
namespace {

using testing::ExitedWithCode;

constexpr UINT kEndedByTheHandler = 42;

int Throwing() { throw std::runtime_error("the cause"); }

// Tells what it was given, and that the program is ending.
void TellAndEnd(const std::exception_ptr& error) {
  try {
    std::rethrow_exception(error);
  } catch (const std::exception& cause) {
    (void)std::fprintf(stderr, "%s, ending: %d", cause.what(), IsEnding());
    (void)std::fflush(stderr);
  }
  ExitProcess(kEndedByTheHandler);
}

TEST(BoundaryTest, GivesBackWhatTheHandlerGives) {
  EXPECT_EQ(GuardBoundary([] { return 7; }), 7);
  bool isCalled = false;
  GuardBoundary([&] { isCalled = true; });
  EXPECT_TRUE(isCalled);
  EXPECT_FALSE(IsEnding());
}

TEST(BoundaryDeathTest, WhatIsThrownGoesToTheFatalHandler) {
  SetFatalHandler(TellAndEnd);
  EXPECT_EXIT(GuardBoundary(Throwing), ExitedWithCode(kEndedByTheHandler), "the cause, ending: 1");
  // Whatever its type.
  SetFatalHandler([](const std::exception_ptr& error) {
    try {
      std::rethrow_exception(error);
    } catch (int number) {
      ExitProcess(static_cast<UINT>(number));
    }
  });
  EXPECT_EXIT(GuardBoundary([] { throw 5; }), ExitedWithCode(5), "");
  SetFatalHandler(nullptr);
}

TEST(BoundaryDeathTest, WithoutAFatalHandlerTheProcessEnds) {
  EXPECT_EXIT(GuardBoundary(Throwing), ExitedWithCode(1), "");
}

TEST(BoundaryDeathTest, AFatalHandlerThatReturnsEndsTheProcessAllTheSame) {
  SetFatalHandler([](const std::exception_ptr&) {});
  EXPECT_EXIT(GuardBoundary(Throwing), ExitedWithCode(1), "");
  SetFatalHandler(nullptr);
}

TEST(BoundaryDeathTest, NoHandlerIsCalledWhileTheProgramIsEnding) {
  SetFatalHandler([](const std::exception_ptr&) {
    bool isCalled = false;
    GuardBoundary([&] { isCalled = true; });
    const int number = GuardBoundary([&] {
      isCalled = true;
      return 7;
    });
    ExitProcess(isCalled || number != 0 ? 1 : kEndedByTheHandler);
  });
  EXPECT_EXIT(GuardBoundary(Throwing), ExitedWithCode(kEndedByTheHandler), "");
  SetFatalHandler(nullptr);
}

TEST(BoundaryDeathTest, AnErrorWhileTheProgramIsEndingEndsItWithoutTheFatalHandler) {
  SetFatalHandler([](const std::exception_ptr& error) {
    static int calls = 0;
    if (++calls > 1) ExitProcess(kEndedByTheHandler);
    EndAfter(error);
  });
  EXPECT_EXIT(GuardBoundary(Throwing), ExitedWithCode(1), "");
  SetFatalHandler(nullptr);
}

}  // namespace
}  // namespace tellurvane
