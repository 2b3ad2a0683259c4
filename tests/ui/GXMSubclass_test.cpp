#include "ui/GXMSubclass.h"

#include <gtest/gtest.h>

#include <optional>

#include "SubclassTestSupport.h"
#include "tests/support/FailingImport.h"
#include "tests/support/WindowTestSupport.h"

namespace tellurvane {
namespace {

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
                        {0xABCD, "Message &HABCD not found in table"}};
  for (const Case& row : cases) {
    for (const int when : {kBeforePrevious, kAfterPrevious}) {
      EXPECT_EQ(ErrorOf([&] { Delete(row.message, when); }), row.text);
    }
  }
}

TEST_F(GXMSubclassTest, SubclassFailsWithItsReasonAndChangesNothing) {
  TargetWindow other;
  TargetWindow gone;
  const HWND goneWindow = gone.hwnd();
  gone.Destroy();
  struct Case {
    HWND window;
    PlatformCall failing;
    const char* text;
  };
  const Case cases[] = {
      {nullptr, {}, "error window handle"},
      {goneWindow, {}, "error window handle"},
      {GetDesktopWindow(), {}, "Window handle belongs to another process"},
      {target.hwnd(), {}, "Window handle is already subclassed"},
      {target.hwnd(), {"VirtualAlloc", 0, 8}, "VirtualAlloc failed, error: 8"},
      {other.hwnd(), {"VirtualAlloc", 0, 8}, "VirtualAlloc failed, error: 8"},
      {other.hwnd(), {"SetWindowLongPtrW", 0, 5}, "SetWindowLong failed, error #5"}};
  const size_t blocks = LiveSubclassBlocks();
  for (const Case& row : cases) {
    RecordingOwner second;
    std::optional<FailingImport> call;
    if (row.failing.name != nullptr) call.emplace(row.failing).Fail(1);
    EXPECT_EQ(ErrorOf([&] { engine.Subclass(row.window, second, 2); }), row.text);
    EXPECT_EQ(LiveSubclassBlocks(), blocks) << row.text;
    EXPECT_EQ(ProcedureOf(other.hwnd()), TargetWindow::Procedure) << row.text;
  }
  Add(kPing, kBeforePrevious);
  EXPECT_TRUE(Shows(kPing)) << "the first owner is kept";
  EXPECT_TRUE(engine.Subclass(other.hwnd(), owner, 0));
}

TEST_F(GXMSubclassTest, MessagesNeedASubclassedWindow) {
  TargetWindow other;
  GXMSubclass fresh;
  const auto expectBoth = [&](const char* text) {
    EXPECT_EQ(ErrorOf([&] { fresh.AddMessage(target.hwnd(), kPing, kBoth); }), text);
    EXPECT_EQ(ErrorOf([&] { fresh.DeleteMessage(target.hwnd(), kPing, kBoth); }), text);
  };
  expectBoth("Subclassing hasn't been started");
  fresh.Subclass(other.hwnd(), owner, 0);
  expectBoth("Window handle isn't subclassed");
  fresh.Terminate();
  expectBoth("Subclassing hasn't been started");
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

TEST_F(GXMSubclassTest, TheOwnerSeesTheMessageAndMayAnswerIt) {
  Add(kPing, kBoth);
  const auto wParam = static_cast<WPARAM>(0x1234567890ABCDEF);
  const auto lParam = static_cast<LPARAM>(0x0FEDCBA987654321);
  const auto previousAnswer = static_cast<LRESULT>(kPreviousAnswer + wParam);
  bool isHandled = false;
  owner.onCall = [&](const SubclassCall& call) {
    EXPECT_EQ(call.window, target.hwnd());
    EXPECT_EQ(call.message, kPing);
    EXPECT_EQ(call.wParam, wParam);
    EXPECT_EQ(call.lParam, lParam);
    if (call.before) {
      EXPECT_FALSE(call.handled);
      EXPECT_EQ(call.result, 0);
      call.handled = isHandled;
      call.result = 42;
    } else {
      EXPECT_EQ(call.result, isHandled ? 42 : previousAnswer);
      if (!isHandled) call.result = 55;
    }
  };
  EXPECT_EQ(target.Send(kPing, wParam, lParam), 55);
  EXPECT_EQ(log, (CallLog{"before", "previous", "after"}));
  isHandled = true;
  log.clear();
  EXPECT_EQ(target.Send(kPing, wParam, lParam), 42);
  EXPECT_EQ(log, (CallLog{"before", "after"}));
}

TEST(GXMSubclassChainTest, TheEngineThatAttachedLastSeesAMessageFirst) {
  CallLog log;
  TargetWindow target(&log);
  RecordingOwner lower(&log, "lower ");
  RecordingOwner upper(&log, "upper ");
  GXMSubclass lowerEngine;
  GXMSubclass upperEngine;
  lowerEngine.Subclass(target.hwnd(), lower, 0);
  upperEngine.Subclass(target.hwnd(), upper, 0);
  lowerEngine.AddMessage(target.hwnd(), kPing, kBoth);
  upperEngine.AddMessage(target.hwnd(), kPing, kBoth);
  EXPECT_EQ(target.Send(kPing, 1), kPreviousAnswer + 1);
  EXPECT_EQ(log,
            (CallLog{"upper before", "lower before", "previous", "lower after", "upper after"}));
  log.clear();
  upperEngine.CallOldWndProc(target.hwnd(), kPing, 0, 0);
  EXPECT_EQ(log, (CallLog{"lower before", "previous", "lower after"}));
  log.clear();
  upper.onCall = [](const SubclassCall& call) { call.handled = true; };
  target.Send(kPing);
  EXPECT_EQ(log, (CallLog{"upper before", "upper after"}));
}

}  // namespace
}  // namespace tellurvane
