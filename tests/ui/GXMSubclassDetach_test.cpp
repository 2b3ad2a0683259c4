#include <gtest/gtest.h>

#include <algorithm>
#include <memory>

#include "SubclassTestSupport.h"
#include "tests/support/FailingImport.h"
#include "tests/support/WindowTestSupport.h"
#include "ui/GXMSubclass.h"

namespace tellurvane {
namespace {

class GXMSubclassDetachTest : public testing::Test {
 protected:
  void SetUp() override { Attach(kBoth); }
  // Whatever the test did, its blocks are freed.
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
  // The window has its own procedure again, and the block is freed.
  void ExpectDone() const {
    EXPECT_TRUE(IsRestored());
    EXPECT_EQ(OwnBlocks(), 0U);
  }

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
  ExpectDone();
  EXPECT_EQ(log, CallLog{"previous"});
}

TEST_F(GXMSubclassDetachTest, TerminateAndTheEnginesEndDetachEveryWindow) {
  TargetWindow second;
  for (const bool endEngine : {false, true}) {
    engine->Subclass(second.hwnd(), owner, 0);
    endEngine ? engine.reset() : engine->Terminate();
    target.Send(kOther);
    second.Send(kOther);
    EXPECT_EQ(ProcedureOf(second.hwnd()), TargetWindow::Procedure);
    ExpectDone();
    if (engine) Attach(kBoth);
  }
}

TEST_F(GXMSubclassDetachTest, WorksInsideAHandler) {
  struct Case {
    const char* name;
    bool inBefore;
    bool handled;
    LRESULT answer;
    CallLog log;
  };
  const Case cases[] = {
      {"before", true, false, kPreviousAnswer + 1, {"before", "previous"}},
      {"before, handled", true, true, 3, {"before"}},
      {"after", false, false, 3, {"before", "previous", "after"}},
  };
  for (const Case& row : cases) {
    SCOPED_TRACE(row.name);
    if (row.name != cases[0].name) Attach(kBoth);
    owner.onCall = [&](const SubclassCall& call) {
      if (call.before != row.inBefore) return;
      call.handled = row.handled;
      call.result = 3;
      engine->UnSubclass(call.window);
    };
    log.clear();
    EXPECT_EQ(target.Send(kPing, 1), row.answer);
    EXPECT_EQ(log, row.log);
    ExpectDone();
  }
}

TEST_F(GXMSubclassDetachTest, FromANestedMessageWaitsForTheOuterOne) {
  engine->AddMessage(target.hwnd(), kOther, kBeforePrevious);
  owner.onCall = [&](const SubclassCall& call) {
    if (call.message == kOther) {
      engine->UnSubclass(call.window);
      return;
    }
    target.Send(kOther);
    EXPECT_EQ(OwnBlocks(), 1U);
    EXPECT_FALSE(IsRestored());
  };
  EXPECT_EQ(target.Send(kPing, 6), kPreviousAnswer + 6);
  EXPECT_EQ(log, (CallLog{"before", "before", "previous", "previous"}));
  ExpectDone();
}

TEST_F(GXMSubclassDetachTest, OneOfTwoEnginesDetachesAndTheOtherStays) {
  for (const bool upperFirst : {true, false}) {
    const TargetWindow window;
    RecordingOwner lower, upper;
    GXMSubclass lowerEngine, upperEngine;
    lowerEngine.Subclass(window.hwnd(), lower, 0);
    lowerEngine.AddMessage(window.hwnd(), kPing, kBeforePrevious);
    upperEngine.Subclass(window.hwnd(), upper, 0);
    upperEngine.AddMessage(window.hwnd(), kPing, kBeforePrevious);
    (upperFirst ? upperEngine : lowerEngine).UnSubclass(window.hwnd());
    for (int i = 0; i < 2; ++i) EXPECT_EQ(window.Send(kPing, 5), kPreviousAnswer + 5);
    EXPECT_EQ((upperFirst ? lower : upper).calls, 2);
    EXPECT_EQ((upperFirst ? upper : lower).calls, 0);
    EXPECT_EQ(OwnBlocks(), 2U) << "one of them the fixture's";
    (upperFirst ? lowerEngine : upperEngine).UnSubclass(window.hwnd());
    window.Send(kPing);
    EXPECT_EQ(ProcedureOf(window.hwnd()), TargetWindow::Procedure);
    EXPECT_EQ(OwnBlocks(), 1U);
  }
}

TEST_F(GXMSubclassDetachTest, KeepsAForeignProcedureThatCameLater) {
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

TEST_F(GXMSubclassDetachTest, StaysWithoutAnOwnerIfTheProcedureCannotBeRestored) {
  {
    FailingImport call({"SetWindowLongPtrW", 0, 5});
    call.Fail(1);
    engine->UnSubclass(target.hwnd());
    for (int i = 0; i < 2; ++i) EXPECT_EQ(target.Send(kPing, 1), kPreviousAnswer + 1);
  }
  EXPECT_FALSE(IsRestored());
  EXPECT_EQ(OwnBlocks(), 0U);
  EXPECT_EQ(owner.calls, 0);
  Attach(kBeforePrevious);
  EXPECT_EQ(target.Send(kPing, 1), kPreviousAnswer + 1);
  EXPECT_EQ(owner.calls, 1);
}

TEST_F(GXMSubclassDetachTest, TheEndOfTheWindowDetaches) {
  const HWND window = target.hwnd();
  engine->AddMessage(window, WM_NCDESTROY, kBoth);
  log.clear();
  target.Destroy();
  EXPECT_EQ(std::count(log.begin(), log.end(), "before"), 1);
  EXPECT_EQ(log.back(), "after") << "the owner sees the last message whole";
  EXPECT_EQ(OwnBlocks(), 0U);
  engine->p_ParamUser(window, 5);
  EXPECT_EQ(engine->p_ParamUser(window), 0);
  EXPECT_EQ(ErrorOf([&] { engine->AddMessage(window, kPing, kBoth); }),
            "Window handle isn't subclassed");
  engine->UnSubclass(window);
}

TEST_F(GXMSubclassDetachTest, AHandlerMayDestroyTheWindow) {
  for (const bool inBefore : {true, false}) {
    TargetWindow window;
    engine->Subclass(window.hwnd(), owner, 0);
    engine->AddMessage(window.hwnd(), kPing, kBoth);
    owner.calls = 0;
    owner.onCall = [&](const SubclassCall& call) {
      if (call.before == inBefore) window.Destroy();
    };
    EXPECT_EQ(window.Send(kPing, 1), inBefore ? 0 : kPreviousAnswer + 1);
    EXPECT_EQ(owner.calls, inBefore ? 1 : 2);
    EXPECT_EQ(OwnBlocks(), 1U);  // the fixture's own
  }
}

TEST_F(GXMSubclassDetachTest, AHandlerMayEndTheEngineAndItsOwner) {
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
  owner.onCall = [&](const SubclassCall&) {
    engine.reset();
    target.Destroy();
  };
  target.Send(kPing);
  EXPECT_EQ(OwnBlocks(), 0U);
}

}  // namespace
}  // namespace tellurvane
