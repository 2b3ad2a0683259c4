// Whatever a handler throws, wherever the system calls it from, ends the program by its own way
// out. Each is tried in a process of its own.
#include <windows.h>

#include <gtest/gtest.h>

#include <stdexcept>

#include "SubclassTestSupport.h"
#include "tests/support/WindowTestSupport.h"
#include "ui/Boundary.h"
#include "ui/Form.h"
#include "ui/MessageLoop.h"
#include "ui/PictureBox.h"
#include "ui/Timer.h"

namespace tellurvane {
namespace {

using testing::ExitedWithCode;

constexpr UINT kEndedByTheHandler = 42;

[[noreturn]] void Throw() { throw std::runtime_error("the cause"); }

// Every handler of the form throws.
class ThrowingForm : public Form {
 public:
  UINT thrownAt = WM_NULL;

  void LoadPlain() {
    FormArgs args;
    args.widthTwips = 3000;
    args.heightTwips = 1500;
    Load(args);
    MouseDown = MouseUp = MouseMove = DblClick = [](const MouseEvent&) { Throw(); };
  }

 protected:
  LRESULT HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) override {
    if (message == thrownAt) Throw();
    return Form::HandleMessage(message, wParam, lParam);
  }
  bool Form_Unload() override { Throw(); }
  void Form_Enter() override { Throw(); }
  void Form_Escape() override { Throw(); }
};

// A tick that cannot even be copied, as when memory is short.
struct Uncopyable {
  Uncopyable() = default;
  Uncopyable(const Uncopyable& /*other*/) {
    if (isArmed) throw std::bad_alloc();
  }
  Uncopyable& operator=(const Uncopyable&) = delete;
  ~Uncopyable() = default;
  void operator()() const {}

  static inline bool isArmed = false;
};

class ThrowingHandlersDeathTest : public testing::Test {
 protected:
  void SetUp() override {
    SetFatalHandler([](const std::exception_ptr&) { ExitProcess(kEndedByTheHandler); });
  }
  void TearDown() override { SetFatalHandler(nullptr); }
};

TEST_F(ThrowingHandlersDeathTest, InAFormThatIsSentAMessage) {
  for (const auto& [message, wParam] : {std::pair<UINT, WPARAM>{WM_LBUTTONDOWN, MK_LBUTTON},
                                        {WM_LBUTTONUP, 0},
                                        {WM_MOUSEMOVE, 0},
                                        {WM_LBUTTONDBLCLK, MK_LBUTTON},
                                        {WM_CLOSE, 0},
                                        {WM_COMMAND, IDOK},
                                        {WM_COMMAND, IDCANCEL}}) {
    const auto send = [message, wParam] {
      ThrowingForm form;
      form.LoadPlain();
      SendMessageW(form.hwnd(), message, wParam, 0);
    };
    EXPECT_EXIT(send(), ExitedWithCode(kEndedByTheHandler), "") << message << ' ' << wParam;
  }
}

TEST_F(ThrowingHandlersDeathTest, InAFormThatIsBeingCreatedSizedPaintedOrDestroyed) {
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

TEST_F(ThrowingHandlersDeathTest, InAFormThatIsPostedAMessage) {
  const auto post = [] {
    ThrowingForm form;
    form.LoadPlain();
    PostMessageW(form.hwnd(), WM_LBUTTONDOWN, MK_LBUTTON, 0);
    ProcessPendingMessages();
  };
  EXPECT_EXIT(post(), ExitedWithCode(kEndedByTheHandler), "");
}

TEST_F(ThrowingHandlersDeathTest, InAPictureThatPaintsItself) {
  const auto paint = [] {
    ThrowingForm form;
    form.LoadPlain();
    PictureBox box;
    box.Create({.parent = form.hwnd(), .width = 10, .height = 10});
    box.Paint = [](HDC) { Throw(); };
    SetWindowPos(box.hwnd(), nullptr, 0, 0, 20, 20, SWP_NOZORDER);
  };
  EXPECT_EXIT(paint(), ExitedWithCode(kEndedByTheHandler), "");
}

TEST_F(ThrowingHandlersDeathTest, InATimer) {
  const auto tick = [](const std::function<void()>& handler) {
    Timer timer;
    timer.Tick = handler;
    timer.Interval(10);
    timer.Enabled(true);
    Uncopyable::isArmed = true;
    PumpUntil([] { return false; });
  };
  EXPECT_EXIT(tick(Throw), ExitedWithCode(kEndedByTheHandler), "");
  EXPECT_EXIT(tick(Uncopyable()), ExitedWithCode(kEndedByTheHandler), "");
}

TEST_F(ThrowingHandlersDeathTest, InTheOwnerOfASubclassedWindow) {
  for (const int when : {kBeforePrevious, kAfterPrevious}) {
    const auto send = [when] {
      TargetWindow target;
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

TEST_F(ThrowingHandlersDeathTest, InTheEngineThatAnOwnerCallsBack) {
  const auto send = [] {
    TargetWindow target;
    RecordingOwner owner;
    GXMSubclass engine;
    owner.onCall = [&](const SubclassCall& call) {
      engine.DeleteMessage(call.window, kOther, kBeforePrevious);
    };
    engine.Subclass(target.hwnd(), owner, 0);
    engine.AddMessage(target.hwnd(), kPing, kBeforePrevious);
    target.Send(kPing);
  };
  EXPECT_EXIT(send(), ExitedWithCode(kEndedByTheHandler), "");
}

}  // namespace
}  // namespace tellurvane
