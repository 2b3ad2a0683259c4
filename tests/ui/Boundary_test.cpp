// An exception in a handler that the system calls goes to the fatal handler. Each case runs in a
// process of its own.
#include "ui/Boundary.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <cstdio>
#include <stdexcept>

#include "SubclassTestSupport.h"
#include "tests/support/WindowTestSupport.h"
#include "ui/PictureBox.h"
#include "ui/Timer.h"

namespace tellurvane {
namespace {

using testing::ExitedWithCode;

constexpr UINT kEndedByTheHandler = 42;

[[noreturn]] void Throw() { throw std::runtime_error("the cause"); }

// Prints the error, and whether the program is ending.
void PrintAndEnd(const std::exception_ptr& error) {
  try {
    std::rethrow_exception(error);
  } catch (const std::exception& cause) {
    (void)std::fprintf(stderr, "%s, ending: %d", cause.what(), IsEnding());
  }
  (void)std::fflush(stderr);
  ExitProcess(kEndedByTheHandler);
}

class BoundaryDeathTest : public testing::Test {
 protected:
  void SetUp() override { SetFatalHandler(PrintAndEnd); }
  void TearDown() override { SetFatalHandler(nullptr); }
};

TEST_F(BoundaryDeathTest, AnExceptionGoesToTheFatalHandler) {
  EXPECT_EXIT(GuardBoundary(Throw), ExitedWithCode(kEndedByTheHandler), "the cause, ending: 1");
}

TEST_F(BoundaryDeathTest, TheProcessEndsThoughTheFatalHandlerReturnsFailsOrIsMissing) {
  SetFatalHandler([](const std::exception_ptr&) {});
  EXPECT_EXIT(GuardBoundary(Throw), ExitedWithCode(1), "");
  SetFatalHandler([](const std::exception_ptr& error) {
    static int calls = 0;
    if (++calls > 1) ExitProcess(kEndedByTheHandler);
    EndAfter(error);
  });
  EXPECT_EXIT(GuardBoundary(Throw), ExitedWithCode(1), "");
  SetFatalHandler(nullptr);
  EXPECT_EXIT(GuardBoundary(Throw), ExitedWithCode(1), "");
}

TEST_F(BoundaryDeathTest, NoHandlerIsCalledWhileTheProgramIsEnding) {
  SetFatalHandler([](const std::exception_ptr&) {
    bool isCalled = false;
    const int number = GuardBoundary([&] {
      isCalled = true;
      return 7;
    });
    ExitProcess(isCalled || number != 0 ? 1 : kEndedByTheHandler);
  });
  EXPECT_EXIT(GuardBoundary(Throw), ExitedWithCode(kEndedByTheHandler), "");
}

// Every handler of the form throws.
class ThrowingForm : public Form {
 public:
  UINT thrownAt = WM_NULL;

  void LoadPlain() {
    Load({.caption = L"throwing", .widthTwips = 3'000, .heightTwips = 1'500});
    MouseDown = [](const MouseEvent&) { Throw(); };
  }

 protected:
  LRESULT HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) override {
    if (message == thrownAt) Throw();
    return Form::HandleMessage(message, wParam, lParam);
  }
  bool Form_Unload() override { Throw(); }
  void Form_Enter() override { Throw(); }
};

TEST_F(BoundaryDeathTest, GuardsAForm) {
  struct Case {
    UINT message;
    WPARAM wParam;
  };
  for (const Case& row :
       {Case{WM_LBUTTONDOWN, MK_LBUTTON}, Case{WM_CLOSE, 0}, Case{WM_COMMAND, IDOK}}) {
    const auto send = [&] {
      ThrowingForm form;
      form.LoadPlain();
      SendMessageW(form.hwnd(), row.message, row.wParam, 0);
    };
    EXPECT_EXIT(send(), ExitedWithCode(kEndedByTheHandler), "") << row.message;
  }
  for (const UINT message :
       {UINT{WM_NCCREATE}, UINT{WM_CREATE}, UINT{WM_SIZE}, UINT{WM_PAINT}, UINT{WM_DESTROY}}) {
    const auto live = [message] {
      ThrowingForm form;
      form.thrownAt = message;
      form.LoadPlain();
      form.Show();
      DestroyWindow(form.hwnd());
    };
    EXPECT_EXIT(live(), ExitedWithCode(kEndedByTheHandler), "") << message;
  }
}

TEST_F(BoundaryDeathTest, GuardsATimer) {
  const auto tick = [] {
    Timer timer;
    timer.Tick = Throw;
    timer.Interval(10);
    timer.Enabled(true);
    PumpUntil([] { return false; });
  };
  EXPECT_EXIT(tick(), ExitedWithCode(kEndedByTheHandler), "");
}

TEST_F(BoundaryDeathTest, GuardsTheOwnerOfASubclassedWindow) {
  for (const int when : {kBeforePrevious, kAfterPrevious}) {
    const auto send = [when] {
      const TargetWindow target;
      RecordingOwner owner;
      owner.onCall = [](const SubclassCall&) { Throw(); };
      GXMSubclass engine;
      engine.Subclass(target.hwnd(), owner, 0);
      engine.AddMessage(target.hwnd(), kPing, when);
      target.Send(kPing);
    };
    EXPECT_EXIT(send(), ExitedWithCode(kEndedByTheHandler), "") << when;
  }
}

}  // namespace
}  // namespace tellurvane
