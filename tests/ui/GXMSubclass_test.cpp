#include "ui/GXMSubclass.h"

#include <gtest/gtest.h>

#include "SubclassTestSupport.h"
#include "tests/support/WindowTestSupport.h"

namespace tellurvane {
namespace {

constexpr int kBoth = kBeforePrevious | kAfterPrevious;
constexpr UINT kTableSize = 32;

class GXMSubclassTest : public testing::Test {
 protected:
  void SetUp() override { engine.Subclass(target.hwnd(), owner, 0); }

  // How often the owner is called for the message.
  int CallsFor(UINT message) {
    owner.calls = 0;
    target.Send(message);
    return owner.calls;
  }

  void Fill(int when) {
    for (UINT i = 0; i < kTableSize; ++i) engine.AddMessage(target.hwnd(), kPing + i, when);
  }

  CallLog log;
  TargetWindow target{&log};
  RecordingOwner owner{&log};
  GXMSubclass engine;
};

TEST_F(GXMSubclassTest, ShowsNothingUntilAMessageIsAdded) {
  EXPECT_EQ(target.Send(kPing, 7), kPreviousAnswer + 7);
  EXPECT_EQ(log, CallLog{"previous"});
}

TEST_F(GXMSubclassTest, ShowsAMessageOnlyInTheTablesThatItWasAddedTo) {
  struct Case {
    int when;
    CallLog expected;
  };
  const Case cases[] = {{kBeforePrevious, {"before", "previous"}},
                        {kAfterPrevious, {"previous", "after"}},
                        {kBoth, {"before", "previous", "after"}}};
  for (const Case& row : cases) {
    engine.AddMessage(target.hwnd(), kPing, row.when);
    log.clear();
    target.Send(kPing);
    EXPECT_EQ(log, row.expected);
    log.clear();
    target.Send(kOther);
    EXPECT_EQ(log, CallLog{"previous"});
    engine.DeleteMessage(target.hwnd(), kPing, row.when);
  }
}

TEST_F(GXMSubclassTest, DeletesFromTheNamedTableOnly) {
  engine.AddMessage(target.hwnd(), kPing, kBoth);
  engine.DeleteMessage(target.hwnd(), kPing, kBeforePrevious);
  log.clear();
  target.Send(kPing);
  EXPECT_EQ(log, (CallLog{"previous", "after"}));
}

TEST_F(GXMSubclassTest, TakesThirtyTwoMessagesAndRefusesTheNext) {
  for (const int when : {kBeforePrevious, kAfterPrevious}) {
    Fill(when);
    EXPECT_EQ(CallsFor(kPing), 1);
    EXPECT_EQ(CallsFor(kPing + kTableSize - 1), 1);
    EXPECT_EQ(ErrorOf([&] { engine.AddMessage(target.hwnd(), kPing + kTableSize, when); }),
              "Message table overflow. Max message entries exceeded.");
    EXPECT_EQ(CallsFor(kPing + kTableSize), 0);
    engine.DeleteMessage(target.hwnd(), kAllMessages, when);
  }
}

TEST_F(GXMSubclassTest, UsesTheSlotOfADeletedMessageAgain) {
  Fill(kBeforePrevious);
  engine.DeleteMessage(target.hwnd(), kPing + 5, kBeforePrevious);
  engine.AddMessage(target.hwnd(), kPing + 100, kBeforePrevious);
  EXPECT_EQ(CallsFor(kPing + 5), 0);
  EXPECT_EQ(CallsFor(kPing + 100), 1);
  EXPECT_EQ(CallsFor(kPing + 31), 1);
  EXPECT_EQ(ErrorOf([&] { engine.AddMessage(target.hwnd(), kPing + 101, kBeforePrevious); }),
            "Message table overflow. Max message entries exceeded.");
}

TEST_F(GXMSubclassTest, KeepsOneEntryOfAMessageThatIsAddedTwice) {
  engine.AddMessage(target.hwnd(), kPing, kBeforePrevious);
  engine.AddMessage(target.hwnd(), kPing, kBeforePrevious);
  EXPECT_EQ(CallsFor(kPing), 1);
  engine.DeleteMessage(target.hwnd(), kPing, kBeforePrevious);
  EXPECT_EQ(CallsFor(kPing), 0);
  EXPECT_NE(ErrorOf([&] { engine.DeleteMessage(target.hwnd(), kPing, kBeforePrevious); }), "");
}

TEST_F(GXMSubclassTest, KeepsOneEntryThoughASlotBeforeItIsFree) {
  engine.AddMessage(target.hwnd(), kOther, kBeforePrevious);
  engine.AddMessage(target.hwnd(), kPing, kBeforePrevious);
  engine.DeleteMessage(target.hwnd(), kOther, kBeforePrevious);
  engine.AddMessage(target.hwnd(), kPing, kBeforePrevious);
  engine.DeleteMessage(target.hwnd(), kPing, kBeforePrevious);
  EXPECT_EQ(CallsFor(kPing), 0);
}

TEST_F(GXMSubclassTest, AddingAMessageThatIsInAFullTableIsNoOverflow) {
  Fill(kBeforePrevious);
  EXPECT_EQ(ErrorOf([&] { engine.AddMessage(target.hwnd(), kPing, kBeforePrevious); }), "");
}

TEST_F(GXMSubclassTest, ShowsEveryMessageBeforeAndAfterForMinusOne) {
  engine.AddMessage(target.hwnd(), kAllMessages, kBoth);
  for (const UINT message : {kPing, kOther, UINT{WM_NULL}, UINT{WM_GETTEXTLENGTH}}) {
    log.clear();
    target.Send(message);
    EXPECT_EQ(log, (CallLog{"before", "previous", "after"})) << message;
  }
  // One message more changes nothing, and cannot be taken out.
  engine.AddMessage(target.hwnd(), kPing, kBoth);
  EXPECT_EQ(CallsFor(kOther), 2);
  EXPECT_NE(ErrorOf([&] { engine.DeleteMessage(target.hwnd(), kPing, kBoth); }), "");
}

TEST_F(GXMSubclassTest, DeletingMinusOneEmptiesTheTable) {
  engine.AddMessage(target.hwnd(), kAllMessages, kBeforePrevious);
  Fill(kAfterPrevious);
  engine.DeleteMessage(target.hwnd(), kAllMessages, kBoth);
  EXPECT_EQ(CallsFor(kPing), 0);
  Fill(kAfterPrevious);
  EXPECT_EQ(CallsFor(kPing), 1);
}

TEST_F(GXMSubclassTest, AFreedSlotDoesNotShowTheMessageZero) {
  engine.AddMessage(target.hwnd(), kPing, kBoth);
  engine.AddMessage(target.hwnd(), kOther, kBoth);
  engine.DeleteMessage(target.hwnd(), kPing, kBoth);
  EXPECT_EQ(CallsFor(WM_NULL), 0);
  EXPECT_EQ(ErrorOf([&] { engine.DeleteMessage(target.hwnd(), WM_NULL, kBeforePrevious); }),
            "Message &H0 not found in table");
}

TEST_F(GXMSubclassTest, DeletingWhatIsNotInTheTableNamesItInHexadecimal) {
  struct Case {
    UINT message;
    const char* text;
  };
  const Case cases[] = {{WM_PAINT, "Message &HF not found in table"},
                        {WM_MOUSEMOVE, "Message &H200 not found in table"},
                        {0xABCD, "Message &HABCD not found in table"}};
  for (const Case& row : cases) {
    for (const int when : {kBeforePrevious, kAfterPrevious}) {
      EXPECT_EQ(ErrorOf([&] { engine.DeleteMessage(target.hwnd(), row.message, when); }), row.text);
    }
  }
}

TEST(GXMSubclassErrorTest, RefusesAWindowThatDoesNotExist) {
  RecordingOwner owner;
  GXMSubclass engine;
  TargetWindow target;
  const HWND gone = target.hwnd();
  target.Destroy();
  for (const HWND window : {HWND{nullptr}, gone}) {
    EXPECT_EQ(ErrorOf([&] { engine.Subclass(window, owner, 0); }), "error window handle");
  }
}

TEST(GXMSubclassErrorTest, RefusesAWindowOfAnotherProcess) {
  RecordingOwner owner;
  GXMSubclass engine;
  // The desktop belongs to the system.
  EXPECT_EQ(ErrorOf([&] { engine.Subclass(GetDesktopWindow(), owner, 0); }),
            "Window handle belongs to another process");
}

TEST(GXMSubclassErrorTest, RefusesASecondHoldOfOneEngineAndKeepsTheFirst) {
  TargetWindow target;
  RecordingOwner first;
  RecordingOwner second;
  GXMSubclass engine;
  engine.Subclass(target.hwnd(), first, 1);
  engine.AddMessage(target.hwnd(), kPing, kBeforePrevious);
  const size_t blocks = LiveSubclassBlocks();
  EXPECT_EQ(ErrorOf([&] { engine.Subclass(target.hwnd(), second, 2); }),
            "Window handle is already subclassed");
  EXPECT_EQ(LiveSubclassBlocks(), blocks);
  EXPECT_EQ(engine.p_ParamUser(target.hwnd()), 1);
  target.Send(kPing);
  EXPECT_EQ(first.calls, 1);
  EXPECT_EQ(second.calls, 0);
}

TEST(GXMSubclassErrorTest, TellsWhetherSubclassingWasStartedAtAll) {
  TargetWindow target;
  TargetWindow other;
  RecordingOwner owner;
  GXMSubclass engine;
  const auto expectBoth = [&](const char* text) {
    EXPECT_EQ(ErrorOf([&] { engine.AddMessage(target.hwnd(), kPing, kBoth); }), text);
    EXPECT_EQ(ErrorOf([&] { engine.DeleteMessage(target.hwnd(), kPing, kBoth); }), text);
  };
  expectBoth("Subclassing hasn't been started");
  engine.Subclass(other.hwnd(), owner, 0);
  expectBoth("Window handle isn't subclassed");
  engine.Terminate();
  expectBoth("Subclassing hasn't been started");
}

class GXMSubclassRefusalTest : public testing::Test {
 protected:
  ~GXMSubclassRefusalTest() override { TheSubclassPlatform() = {}; }

  TargetWindow target;
  RecordingOwner owner;
  GXMSubclass engine;
};

TEST_F(GXMSubclassRefusalTest, ReportsThatMemoryWasRefused) {
  TheSubclassPlatform().allocate = [](void*, SIZE_T, DWORD, DWORD) -> void* {
    SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return nullptr;
  };
  EXPECT_EQ(ErrorOf([&] { engine.Subclass(target.hwnd(), owner, 0); }),
            "VirtualAlloc failed, error: 8");
  EXPECT_EQ(ProcedureOf(target.hwnd()), TargetWindow::Procedure);
  TheSubclassPlatform() = {};
  EXPECT_TRUE(engine.Subclass(target.hwnd(), owner, 0));
}

TEST_F(GXMSubclassRefusalTest, AsksForMemoryThatIsNotExecutable) {
  static DWORD protection = 0;
  TheSubclassPlatform().allocate = [](void* place, SIZE_T size, DWORD kind, DWORD asked) {
    protection = asked;
    return VirtualAlloc(place, size, kind, asked);
  };
  engine.Subclass(target.hwnd(), owner, 0);
  EXPECT_EQ(protection, DWORD{PAGE_READWRITE});
}

TEST_F(GXMSubclassRefusalTest, ReportsThatTheProcedureCouldNotBeSwapped) {
  const size_t blocks = LiveSubclassBlocks();
  TheSubclassPlatform().setWindowLong = [](HWND, int, LONG_PTR) -> LONG_PTR {
    SetLastError(ERROR_ACCESS_DENIED);
    return 0;
  };
  EXPECT_EQ(ErrorOf([&] { engine.Subclass(target.hwnd(), owner, 0); }),
            "SetWindowLong failed, error #5");
  EXPECT_EQ(LiveSubclassBlocks(), blocks);
  EXPECT_EQ(ErrorOf([&] { engine.AddMessage(target.hwnd(), kPing, kBoth); }),
            "Window handle isn't subclassed");
  TheSubclassPlatform() = {};
  EXPECT_TRUE(engine.Subclass(target.hwnd(), owner, 0));
}

TEST_F(GXMSubclassTest, KeepsAUserValueForEachWindow) {
  TargetWindow second;
  engine.Subclass(second.hwnd(), owner, 22);
  EXPECT_EQ(engine.p_ParamUser(target.hwnd()), 0);
  EXPECT_EQ(engine.p_ParamUser(second.hwnd()), 22);
  const LONG_PTR wide = LONG_PTR{1} << 40;
  engine.p_ParamUser(second.hwnd(), wide);
  EXPECT_EQ(engine.p_ParamUser(second.hwnd()), wide);
  EXPECT_EQ(engine.p_ParamUser(target.hwnd()), 0);
}

TEST_F(GXMSubclassTest, HandsTheUserValueToTheOwnerByReference) {
  engine.p_ParamUser(target.hwnd(), 5);
  engine.AddMessage(target.hwnd(), kPing, kBoth);
  owner.onCall = [](const SubclassCall& call) { call.userParam *= 2; };
  target.Send(kPing);
  EXPECT_EQ(engine.p_ParamUser(target.hwnd()), 20);
}

TEST_F(GXMSubclassTest, AWindowThatIsNotSubclassedHasNoUserValueAndNoOldProcedure) {
  TargetWindow other;
  engine.p_ParamUser(other.hwnd(), 9);
  EXPECT_EQ(engine.p_ParamUser(other.hwnd()), 0);
  EXPECT_EQ(engine.CallOldWndProc(other.hwnd(), kPing, 1, 0), 0);
}

TEST_F(GXMSubclassTest, CallsTheOldProcedureWithoutTheOwner) {
  engine.AddMessage(target.hwnd(), kAllMessages, kBoth);
  EXPECT_EQ(engine.CallOldWndProc(target.hwnd(), kPing, 3, 0), kPreviousAnswer + 3);
  EXPECT_EQ(log, CallLog{"previous"});
}

TEST_F(GXMSubclassTest, HandsOverTheWholeMessage) {
  engine.AddMessage(target.hwnd(), kPing, kBeforePrevious);
  const auto wParam = static_cast<WPARAM>(0x1234567890ABCDEF);
  const auto lParam = static_cast<LPARAM>(0x0FEDCBA987654321);
  owner.onCall = [&](const SubclassCall& call) {
    EXPECT_EQ(call.window, target.hwnd());
    EXPECT_EQ(call.message, kPing);
    EXPECT_EQ(call.wParam, wParam);
    EXPECT_EQ(call.lParam, lParam);
    EXPECT_FALSE(call.handled);
    EXPECT_EQ(call.result, 0);
  };
  target.Send(kPing, wParam, lParam);
  EXPECT_EQ(owner.calls, 1);
}

TEST_F(GXMSubclassTest, ShowsThePreviousAnswerAfterwardsAndMayChangeIt) {
  engine.AddMessage(target.hwnd(), kPing, kBoth);
  owner.onCall = [](const SubclassCall& call) {
    if (call.before) {
      call.result = 1;  // nobody's answer: the previous procedure still runs
      return;
    }
    EXPECT_EQ(call.result, kPreviousAnswer + 3);
    call.result = 55;
  };
  EXPECT_EQ(target.Send(kPing, 3), 55);
}

TEST_F(GXMSubclassTest, AHandledMessageDoesNotReachThePreviousProcedure) {
  engine.AddMessage(target.hwnd(), kPing, kBoth);
  owner.onCall = [](const SubclassCall& call) {
    if (!call.before) {
      EXPECT_EQ(call.result, 42);
      return;
    }
    call.handled = true;
    call.result = 42;
  };
  EXPECT_EQ(target.Send(kPing), 42);
  EXPECT_EQ(log, (CallLog{"before", "after"}));
}

TEST_F(GXMSubclassTest, NestsWhenAHandlerSendsToItsOwnWindow) {
  engine.AddMessage(target.hwnd(), kPing, kBoth);
  engine.AddMessage(target.hwnd(), kOther, kBeforePrevious);
  owner.onCall = [&](const SubclassCall& call) {
    if (call.message == kPing && call.before) {
      EXPECT_EQ(target.Send(kOther, 8), kPreviousAnswer + 8);
    }
  };
  EXPECT_EQ(target.Send(kPing, 2), kPreviousAnswer + 2);
  EXPECT_EQ(log, (CallLog{"before", "before", "previous", "previous", "after"}));
}

TEST(GXMSubclassChainTest, ShowsAMessageFirstToTheEngineThatAttachedLast) {
  CallLog log;
  TargetWindow target(&log);
  TwoEngines two(target.hwnd(), &log);
  two.AddPing(kBoth, kBoth);
  EXPECT_EQ(target.Send(kPing, 1), kPreviousAnswer + 1);
  EXPECT_EQ(log,
            (CallLog{"upper before", "lower before", "previous", "lower after", "upper after"}));
  log.clear();
  two.upperEngine.CallOldWndProc(target.hwnd(), kPing, 0, 0);
  EXPECT_EQ(log, (CallLog{"lower before", "previous", "lower after"}));
  log.clear();
  two.upper.onCall = [](const SubclassCall& call) { call.handled = true; };
  target.Send(kPing);
  EXPECT_EQ(log, (CallLog{"upper before", "upper after"}));
}

}  // namespace
}  // namespace tellurvane
