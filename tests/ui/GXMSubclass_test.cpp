#include "ui/GXMSubclass.h"

#include <gtest/gtest.h>

#include "SubclassTestSupport.h"
#include "tests/support/FailingImport.h"
#include "tests/support/WindowTestSupport.h"

namespace tellurvane {
namespace {

constexpr int kBoth = kBeforePrevious | kAfterPrevious;
constexpr UINT kTableSize = 32;
constexpr char kOverflow[] = "Message table overflow. Max message entries exceeded.";

class GXMSubclassTest : public testing::Test {
 protected:
  void SetUp() override { engine.Subclass(target.hwnd(), owner, 0); }

  void Add(UINT message, int when) { engine.AddMessage(target.hwnd(), message, when); }
  void Delete(UINT message, int when) { engine.DeleteMessage(target.hwnd(), message, when); }

  // Who is called for the message, in order.
  CallLog CallsFor(UINT message) {
    log.clear();
    target.Send(message);
    return log;
  }
  bool Shows(UINT message) { return CallsFor(message) != CallLog{"previous"}; }

  void Fill(int when) {
    for (UINT i = 0; i < kTableSize; ++i) Add(kPing + i, when);
  }

  CallLog log;
  TargetWindow target{&log};
  RecordingOwner owner{&log};
  GXMSubclass engine;
};

TEST_F(GXMSubclassTest, ShowsAMessageOnlyInTheTablesThatHaveIt) {
  EXPECT_FALSE(Shows(kPing));
  struct Case {
    int when;
    CallLog expected;
  };
  const Case cases[] = {{kBeforePrevious, {"before", "previous"}},
                        {kAfterPrevious, {"previous", "after"}},
                        {kBoth, {"before", "previous", "after"}}};
  for (const Case& row : cases) {
    Add(kPing, row.when);
    EXPECT_EQ(CallsFor(kPing), row.expected);
    EXPECT_FALSE(Shows(kOther));
    Delete(kPing, row.when);
  }
  Add(kPing, kBoth);
  Delete(kPing, kBeforePrevious);
  EXPECT_EQ(CallsFor(kPing), (CallLog{"previous", "after"}));
}

TEST_F(GXMSubclassTest, ATableTakesThirtyTwoMessagesAndUsesFreedSlotsAgain) {
  for (const int when : {kBeforePrevious, kAfterPrevious}) {
    Fill(when);
    EXPECT_TRUE(Shows(kPing));
    EXPECT_TRUE(Shows(kPing + kTableSize - 1));
    EXPECT_EQ(ErrorOf([&] { Add(kPing + kTableSize, when); }), kOverflow);
    EXPECT_FALSE(Shows(kPing + kTableSize));
    EXPECT_EQ(ErrorOf([&] { Add(kPing, when); }), "") << "it is in the full table already";

    Delete(kPing + 5, when);
    Add(kPing + 100, when);
    EXPECT_FALSE(Shows(kPing + 5));
    EXPECT_TRUE(Shows(kPing + 100));
    EXPECT_EQ(ErrorOf([&] { Add(kPing + 101, when); }), kOverflow);
    Delete(kAllMessages, when);
  }
}

TEST_F(GXMSubclassTest, KeepsOneEntryOfAMessageThatIsAddedTwice) {
  Add(kOther, kBeforePrevious);
  Add(kPing, kBeforePrevious);
  Delete(kOther, kBeforePrevious);
  Add(kPing, kBeforePrevious);
  EXPECT_EQ(CallsFor(kPing), (CallLog{"before", "previous"}));
  Delete(kPing, kBeforePrevious);
  EXPECT_FALSE(Shows(kPing)) << "though a slot before it was free";
}

TEST_F(GXMSubclassTest, MinusOneMeansEveryMessage) {
  Add(kAllMessages, kBoth);
  for (const UINT message : {kPing, kOther, UINT{WM_NULL}, UINT{WM_GETTEXTLENGTH}}) {
    EXPECT_EQ(CallsFor(message), (CallLog{"before", "previous", "after"})) << message;
  }
  Add(kPing, kBoth);
  EXPECT_NE(ErrorOf([&] { Delete(kPing, kBoth); }), "");
  Delete(kAllMessages, kBoth);
  EXPECT_FALSE(Shows(kPing));
  Fill(kAfterPrevious);
  EXPECT_TRUE(Shows(kPing));
}

TEST_F(GXMSubclassTest, DeletingAMessageThatIsNotInTheTableFails) {
  Add(kPing, kBoth);
  Add(kOther, kBoth);
  Delete(kPing, kBoth);
  EXPECT_FALSE(Shows(WM_NULL)) << "a freed slot holds 0";
  struct Case {
    UINT message;
    const char* text;
  };
  const Case cases[] = {{WM_NULL, "Message &H0 not found in table"},
                        {WM_PAINT, "Message &HF not found in table"},
                        {WM_MOUSEMOVE, "Message &H200 not found in table"},
                        {0xABCD, "Message &HABCD not found in table"}};
  for (const Case& row : cases) {
    for (const int when : {kBeforePrevious, kAfterPrevious}) {
      EXPECT_EQ(ErrorOf([&] { Delete(row.message, when); }), row.text);
    }
  }
}

TEST(GXMSubclassErrorTest, SubclassNeedsAWindowOfThisProcess) {
  RecordingOwner owner;
  GXMSubclass engine;
  TargetWindow target;
  const HWND gone = target.hwnd();
  target.Destroy();
  for (const HWND window : {HWND{nullptr}, gone}) {
    EXPECT_EQ(ErrorOf([&] { engine.Subclass(window, owner, 0); }), "error window handle");
  }
  // The desktop belongs to the system.
  EXPECT_EQ(ErrorOf([&] { engine.Subclass(GetDesktopWindow(), owner, 0); }),
            "Window handle belongs to another process");
}

TEST(GXMSubclassErrorTest, ASecondSubclassOfOneWindowFailsAndKeepsTheFirst) {
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

TEST(GXMSubclassErrorTest, ReportsWhetherSubclassingWasStarted) {
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

TEST(GXMSubclassErrorTest, ReportsTheSystemsError) {
  struct Case {
    PlatformCall call;
    const char* text;
  };
  const Case cases[] = {
      {{"VirtualAlloc", 0, ERROR_NOT_ENOUGH_MEMORY}, "VirtualAlloc failed, error: 8"},
      {{"SetWindowLongPtrW", 0, ERROR_ACCESS_DENIED}, "SetWindowLong failed, error #5"}};
  for (const Case& row : cases) {
    TargetWindow target;
    RecordingOwner owner;
    GXMSubclass engine;
    const size_t blocks = LiveSubclassBlocks();
    FailingImport call(row.call);
    call.Fail(1);
    EXPECT_EQ(ErrorOf([&] { engine.Subclass(target.hwnd(), owner, 0); }), row.text);
    EXPECT_EQ(ProcedureOf(target.hwnd()), TargetWindow::Procedure);
    EXPECT_EQ(LiveSubclassBlocks(), blocks);
    EXPECT_EQ(ErrorOf([&] { engine.AddMessage(target.hwnd(), kPing, kBoth); }),
              "Window handle isn't subclassed");
    EXPECT_TRUE(engine.Subclass(target.hwnd(), owner, 0));
  }
}

TEST_F(GXMSubclassTest, KeepsAUserValueForEachWindow) {
  TargetWindow second;
  TargetWindow unknown;
  engine.Subclass(second.hwnd(), owner, 22);
  EXPECT_EQ(engine.p_ParamUser(second.hwnd()), 22);
  const LONG_PTR wide = LONG_PTR{1} << 40;
  engine.p_ParamUser(second.hwnd(), wide);
  EXPECT_EQ(engine.p_ParamUser(second.hwnd()), wide);
  EXPECT_EQ(engine.p_ParamUser(target.hwnd()), 0);
  engine.p_ParamUser(unknown.hwnd(), 9);
  EXPECT_EQ(engine.p_ParamUser(unknown.hwnd()), 0);

  engine.p_ParamUser(target.hwnd(), 5);
  Add(kPing, kBoth);
  owner.onCall = [](const SubclassCall& call) { call.userParam *= 2; };
  target.Send(kPing);
  EXPECT_EQ(engine.p_ParamUser(target.hwnd()), 20) << "the owner gets it by reference";
}

TEST_F(GXMSubclassTest, CallsTheOldProcedureWithoutTheOwner) {
  Add(kAllMessages, kBoth);
  EXPECT_EQ(engine.CallOldWndProc(target.hwnd(), kPing, 3, 0), kPreviousAnswer + 3);
  EXPECT_EQ(log, CallLog{"previous"});
  TargetWindow unknown;
  EXPECT_EQ(engine.CallOldWndProc(unknown.hwnd(), kPing, 1, 0), 0);
}

TEST_F(GXMSubclassTest, HandsOverTheWholeMessage) {
  Add(kPing, kBeforePrevious);
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
  Add(kPing, kBoth);
  owner.onCall = [](const SubclassCall& call) {
    if (call.before) {
      call.result = 1;  // not handled: the previous procedure still runs
      return;
    }
    EXPECT_EQ(call.result, kPreviousAnswer + 3);
    call.result = 55;
  };
  EXPECT_EQ(target.Send(kPing, 3), 55);
}

TEST_F(GXMSubclassTest, AHandledMessageDoesNotReachThePreviousProcedure) {
  Add(kPing, kBoth);
  owner.onCall = [](const SubclassCall& call) {
    call.handled = true;
    if (call.before) call.result = 42;
  };
  EXPECT_EQ(target.Send(kPing), 42);
  EXPECT_EQ(log, (CallLog{"before", "after"}));
}

TEST_F(GXMSubclassTest, NestsWhenAHandlerSendsToItsOwnWindow) {
  Add(kPing, kBoth);
  Add(kOther, kBeforePrevious);
  owner.onCall = [&](const SubclassCall& call) {
    if (call.message == kPing && call.before) {
      EXPECT_EQ(target.Send(kOther, 8), kPreviousAnswer + 8);
    }
  };
  EXPECT_EQ(target.Send(kPing, 2), kPreviousAnswer + 2);
  EXPECT_EQ(log, (CallLog{"before", "before", "previous", "previous", "after"}));
}

TEST(GXMSubclassChainTest, TheEngineThatAttachedLastSeesAMessageFirst) {
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
