#include <gtest/gtest.h>

#include <algorithm>
#include <memory>

#include "SubclassTestSupport.h"
#include "tests/support/WindowTestSupport.h"
#include "ui/GXMSubclass.h"

namespace tellurvane {
namespace {

constexpr int kBoth = kBeforePrevious | kAfterPrevious;

class GXMSubclassDetachTest : public testing::Test {
 protected:
  void SetUp() override { Attach(kBoth); }
  // The test's own blocks are all given back, whatever it did.
  void TearDown() override {
    engine.reset();
    target.Destroy();
    EXPECT_EQ(LiveSubclassBlocks(), blocksBefore);
  }

  void Attach(int when) {
    engine->Subclass(target.hwnd(), owner, 0);
    engine->AddMessage(target.hwnd(), kPing, when);
  }
  size_t OwnBlocks() const { return LiveSubclassBlocks() - blocksBefore; }
  bool IsRestored() const { return ProcedureOf(target.hwnd()) == TargetWindow::Procedure; }

  const size_t blocksBefore = LiveSubclassBlocks();
  CallLog log;
  TargetWindow target{&log};
  RecordingOwner owner{&log};
  std::unique_ptr<GXMSubclass> engine = std::make_unique<GXMSubclass>();
};

TEST_F(GXMSubclassDetachTest, IsCompletedByTheNextMessage) {
  EXPECT_FALSE(IsRestored());
  engine->UnSubclass(target.hwnd());
  EXPECT_FALSE(IsRestored());
  EXPECT_EQ(OwnBlocks(), 1U);
  EXPECT_EQ(target.Send(kPing, 4), kPreviousAnswer + 4);
  EXPECT_TRUE(IsRestored());
  EXPECT_EQ(OwnBlocks(), 0U);
  EXPECT_EQ(log, CallLog{"previous"});
}

TEST_F(GXMSubclassDetachTest, AWindowThatIsNotSubclassedIsLeftAlone) {
  engine->UnSubclass(nullptr);
  engine->UnSubclass(GetDesktopWindow());
  GXMSubclass unused;
  unused.UnSubclass(target.hwnd());
  target.Send(kPing);
  EXPECT_EQ(owner.calls, 2);
}

TEST_F(GXMSubclassDetachTest, OfEveryWindowByTerminateAndByTheEnginesEnd) {
  TargetWindow second;
  for (const bool endEngine : {false, true}) {
    engine->Subclass(second.hwnd(), owner, 0);
    if (endEngine) {
      engine.reset();
    } else {
      engine->Terminate();
    }
    target.Send(kOther);
    second.Send(kOther);
    EXPECT_TRUE(IsRestored());
    EXPECT_EQ(ProcedureOf(second.hwnd()), TargetWindow::Procedure);
    EXPECT_EQ(OwnBlocks(), 0U);
    if (engine) Attach(kBoth);
  }
}

TEST_F(GXMSubclassDetachTest, InsideTheBeforeHandlerStillRunsThePreviousProcedureOnce) {
  owner.onCall = [&](const SubclassCall& call) { engine->UnSubclass(call.window); };
  EXPECT_EQ(target.Send(kPing, 1), kPreviousAnswer + 1);
  EXPECT_EQ(log, (CallLog{"before", "previous"}));
  EXPECT_TRUE(IsRestored());
  EXPECT_EQ(OwnBlocks(), 0U);
}

TEST_F(GXMSubclassDetachTest, InsideAHandlerThatHandlesTheMessageStopsThePreviousProcedure) {
  owner.onCall = [&](const SubclassCall& call) {
    call.handled = true;
    call.result = 3;
    engine->UnSubclass(call.window);
  };
  EXPECT_EQ(target.Send(kPing), 3);
  EXPECT_EQ(log, CallLog{"before"});
  EXPECT_TRUE(IsRestored());
}

TEST_F(GXMSubclassDetachTest, InsideTheAfterHandlerKeepsItsAnswer) {
  owner.onCall = [&](const SubclassCall& call) {
    if (call.before) return;
    engine->UnSubclass(call.window);
    call.result = 12;
  };
  EXPECT_EQ(target.Send(kPing), 12);
  EXPECT_TRUE(IsRestored());
  EXPECT_EQ(OwnBlocks(), 0U);
}

TEST_F(GXMSubclassDetachTest, FromANestedMessageWaitsForTheOuterOne) {
  engine->AddMessage(target.hwnd(), kOther, kBeforePrevious);
  owner.onCall = [&](const SubclassCall& call) {
    if (call.message == kOther) {
      engine->UnSubclass(call.window);
      return;
    }
    target.Send(kOther);
    // The nested message is through, and this one is still inside.
    EXPECT_EQ(OwnBlocks(), 1U);
    EXPECT_FALSE(IsRestored());
  };
  EXPECT_EQ(target.Send(kPing, 6), kPreviousAnswer + 6);
  EXPECT_EQ(log, (CallLog{"before", "before", "previous", "previous"}));
  EXPECT_TRUE(IsRestored());
  EXPECT_EQ(OwnBlocks(), 0U);
}

TEST_F(GXMSubclassDetachTest, FromInsideThePreviousProcedureWaitsForItsReturn) {
  // A lower engine's handler stands for whatever the previous procedure calls.
  TargetWindow window;
  TwoEngines two(window.hwnd());
  two.AddPing(kBeforePrevious, kBoth);
  two.lower.onCall = [&](const SubclassCall& call) { two.upperEngine.UnSubclass(call.window); };
  const size_t blocks = LiveSubclassBlocks();
  EXPECT_EQ(window.Send(kPing, 2), kPreviousAnswer + 2);
  EXPECT_EQ(two.upper.calls, 1);
  EXPECT_EQ(LiveSubclassBlocks(), blocks - 1);
  window.Send(kPing);
  EXPECT_EQ(two.lower.calls, 2);
}

TEST_F(GXMSubclassDetachTest, AndAttachingAgainInTheSameHandler) {
  owner.onCall = [&](const SubclassCall& call) {
    if (!call.before || owner.calls > 1) return;
    engine->UnSubclass(call.window);
    engine->Subclass(call.window, owner, 8);
    engine->AddMessage(call.window, kPing, kBeforePrevious);
  };
  target.Send(kPing);
  // The new hold does not see the message that was under way.
  EXPECT_EQ(log, (CallLog{"before", "previous"}));
  EXPECT_EQ(OwnBlocks(), 1U);
  EXPECT_EQ(engine->p_ParamUser(target.hwnd()), 8);
  log.clear();
  target.Send(kPing);
  EXPECT_EQ(log, (CallLog{"before", "previous"}));
}

TEST_F(GXMSubclassDetachTest, AndAttachingAgainBeforeTheNextMessage) {
  engine->UnSubclass(target.hwnd());
  Attach(kBeforePrevious);
  EXPECT_EQ(target.Send(kPing, 1), kPreviousAnswer + 1);
  EXPECT_EQ(log, (CallLog{"before", "previous"}));
  EXPECT_EQ(OwnBlocks(), 1U);
  engine->UnSubclass(target.hwnd());
  target.Send(kPing);
  EXPECT_TRUE(IsRestored());
}

TEST_F(GXMSubclassDetachTest, OfTwoEnginesInEitherOrder) {
  for (const bool upperFirst : {true, false}) {
    TargetWindow window;
    TwoEngines two(window.hwnd());
    two.AddPing(kBeforePrevious, kBeforePrevious);
    (upperFirst ? two.upperEngine : two.lowerEngine).UnSubclass(window.hwnd());
    EXPECT_EQ(window.Send(kPing, 5), kPreviousAnswer + 5);
    EXPECT_EQ(two.lower.calls, upperFirst ? 1 : 0);
    EXPECT_EQ(two.upper.calls, upperFirst ? 0 : 1);
    EXPECT_NE(ProcedureOf(window.hwnd()), TargetWindow::Procedure);
    (upperFirst ? two.lowerEngine : two.upperEngine).UnSubclass(window.hwnd());
    window.Send(kPing);
    EXPECT_EQ(ProcedureOf(window.hwnd()), TargetWindow::Procedure);
    EXPECT_EQ(two.lower.calls + two.upper.calls, 1);
    EXPECT_EQ(OwnBlocks(), 1U);
  }
}

TEST_F(GXMSubclassDetachTest, LeavesAForeignProcedureThatWasPutOnTop) {
  static WNDPROC below = nullptr;
  const WNDPROC foreign = [](HWND window, UINT message, WPARAM wParam, LPARAM lParam) -> LRESULT {
    return CallWindowProcW(below, window, message, wParam, lParam) + 1'000;
  };
  below = reinterpret_cast<WNDPROC>(
      SetWindowLongPtrW(target.hwnd(), GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(foreign)));
  engine->UnSubclass(target.hwnd());
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(target.Send(kPing, 1), 1'000 + kPreviousAnswer + 1);
    EXPECT_EQ(ProcedureOf(target.hwnd()), foreign);
  }
  EXPECT_EQ(OwnBlocks(), 0U);
}

TEST_F(GXMSubclassDetachTest, HappensByItselfWhenTheWindowDies) {
  const HWND window = target.hwnd();
  target.Destroy();
  EXPECT_EQ(OwnBlocks(), 0U);
  engine->p_ParamUser(window, 5);
  EXPECT_EQ(engine->p_ParamUser(window), 0);
  EXPECT_EQ(ErrorOf([&] { engine->AddMessage(window, kPing, kBoth); }),
            "Window handle isn't subclassed");
  engine->UnSubclass(window);
}

TEST_F(GXMSubclassDetachTest, AfterTheLastMessageOfTheWindowWasShown) {
  engine->AddMessage(target.hwnd(), WM_NCDESTROY, kBoth);
  log.clear();
  target.Destroy();
  EXPECT_EQ(std::count(log.begin(), log.end(), "before"), 1);
  EXPECT_EQ(log.back(), "after");
  EXPECT_EQ(OwnBlocks(), 0U);
}

TEST_F(GXMSubclassDetachTest, WhenTheWindowIsDestroyedInsideAHandler) {
  for (const bool inBefore : {true, false}) {
    TargetWindow window;
    engine->Subclass(window.hwnd(), owner, 0);
    engine->AddMessage(window.hwnd(), kPing, kBoth);
    owner.calls = 0;
    owner.onCall = [&](const SubclassCall& call) {
      if (call.before == inBefore) window.Destroy();
    };
    window.Send(kPing);
    EXPECT_EQ(owner.calls, inBefore ? 1 : 2);
    EXPECT_EQ(OwnBlocks(), 1U);  // the fixture's own
  }
}

TEST_F(GXMSubclassDetachTest, AMessageOfADeadWindowStopsThere) {
  owner.onCall = [&](const SubclassCall&) { target.Destroy(); };
  EXPECT_EQ(target.Send(kPing, 1), 0);
}

TEST_F(GXMSubclassDetachTest, WhenTheEngineAndItsOwnerEndInsideTheirHandler) {
  struct Control {
    RecordingOwner owner;
    GXMSubclass engine;
  };
  for (const bool inBefore : {true, false}) {
    TargetWindow window;
    auto control = std::make_unique<Control>();
    control->engine.Subclass(window.hwnd(), control->owner, 0);
    control->engine.AddMessage(window.hwnd(), kPing, kBoth);
    control->owner.onCall = [&](const SubclassCall& call) {
      if (call.before == inBefore) control.reset();
    };
    EXPECT_EQ(window.Send(kPing, 9), kPreviousAnswer + 9);
    EXPECT_EQ(control, nullptr);
    EXPECT_EQ(ProcedureOf(window.hwnd()), TargetWindow::Procedure);
    EXPECT_EQ(OwnBlocks(), 1U);
  }
}

TEST_F(GXMSubclassDetachTest, WhenEngineAndWindowEndInsideOneHandler) {
  owner.onCall = [&](const SubclassCall&) {
    engine.reset();
    target.Destroy();
  };
  target.Send(kPing);
  EXPECT_EQ(OwnBlocks(), 0U);
}

TEST_F(GXMSubclassDetachTest, AWindowThatGetsTheNumberOfADeadOneStartsClean) {
  const auto number = reinterpret_cast<ULONG_PTR>(target.hwnd()) & 0xFFFF;
  target.Destroy();
  // Numbers come back after a while; the full handles seldom do, so any window will have to serve
  // where the system does not give the same one again.
  std::vector<std::unique_ptr<TargetWindow>> windows;
  for (int i = 0; i < 200; ++i) {
    windows.push_back(std::make_unique<TargetWindow>());
    if ((reinterpret_cast<ULONG_PTR>(windows.back()->hwnd()) & 0xFFFF) == number) break;
  }
  const TargetWindow& window = *windows.back();
  EXPECT_EQ(ProcedureOf(window.hwnd()), TargetWindow::Procedure);
  EXPECT_TRUE(engine->Subclass(window.hwnd(), owner, 3));
  EXPECT_EQ(engine->p_ParamUser(window.hwnd()), 3);
  window.Send(kPing);
  EXPECT_EQ(owner.calls, 0);
}

TEST_F(GXMSubclassDetachTest, LeavesNothingBehind) {
  const size_t blocks = LiveSubclassBlocks();
  EXPECT_EQ(LeakedBy([] {
              TargetWindow window;
              RecordingOwner first;
              RecordingOwner second;
              GXMSubclass lower;
              GXMSubclass upper;
              lower.Subclass(window.hwnd(), first, 0);
              upper.Subclass(window.hwnd(), second, 0);
              lower.AddMessage(window.hwnd(), kAllMessages, kBoth);
              window.Send(kPing);
              lower.UnSubclass(window.hwnd());
              window.Send(kPing);
            }),
            ResourceCounts());
  EXPECT_EQ(LiveSubclassBlocks(), blocks);
}

}  // namespace
}  // namespace tellurvane
