// The main window while the computer falls asleep and wakes up.
#include <gmock/gmock.h>

#include <chrono>

#include "tests/mainwin/FrmMainFixture.h"
#include "tests/support/FailingImport.h"

namespace tellurvane {
namespace {

using testing::ElementsAre;

class FrmMainPowerTest : public FrmMainTest {
 protected:
  LRESULT Send(WPARAM event) const {
    return SendMessageW(window->hwnd(), WM_POWERBROADCAST, event, 0);
  }
  void MakeDue() const { general->tasks[0].NextRun = Now() - 2; }
  bool HasRun() const { return general->tasks[0].LastRun != 0; }
  // Seconds until the task has run.
  double LetRun() const {
    const ULONGLONG begun = GetTickCount64();
    EXPECT_TRUE(PumpUntil([&] { return HasRun(); }, std::chrono::seconds(40)));
    return static_cast<double>(GetTickCount64() - begun) / 1'000;
  }
};

TEST_F(FrmMainPowerTest, StopsPlaybackWhenTheComputerFallsAsleep) {
  Tasks({{kInternetRadio, L"http://example.invalid/"}});
  Open();
  Select(0);
  window->RunSelectedTask();
  ASSERT_TRUE(IsOn(kStop));
  Taken();
  Send(PBT_APMPOWERSTATUSCHANGE);
  Send(PBT_APMRESUMESUSPEND);
  EXPECT_THAT(Taken(), ElementsAre());
  EXPECT_EQ(Send(PBT_APMSUSPEND), TRUE);
  EXPECT_THAT(Taken(), ElementsAre(L"close", L"stop"));
  EXPECT_FALSE(IsOn(kStop));
}

TEST_F(FrmMainPowerTest, ALostStreamIsTriedAgainAfterTheWakeUp) {
  std::uint64_t passed = 1'000'000;
  milliseconds = [&] { return passed; };
  Tasks({{kInternetRadio, L"http://example.invalid/"}});
  Open();
  player.state = kReadyState;
  Select(0);
  window->RunSelectedTask();
  passed += 3'000;
  window->Open();
  Taken();
  Send(PBT_APMSUSPEND);
  EXPECT_TRUE(IsOn(kStop));
  // Like a whole night.
  passed += 30'000'000;
  Send(PBT_APMRESUMEAUTOMATIC);
  const ULONGLONG begun = GetTickCount64();
  EXPECT_TRUE(PumpUntil([&] { return !player.calls.empty(); }, std::chrono::seconds(40)));
  EXPECT_GT(GetTickCount64() - begun, 8'500U);
  EXPECT_THAT(Taken(), ElementsAre(L"url http://example.invalid/", L"play"));
}

TEST_F(FrmMainPowerTest, TheComputerStaysAwakeWhileSomethingPlays) {
  Tasks({{kInternetRadio, L"http://example.invalid/"}});
  Open();
  FailingImport calls({"SetThreadExecutionState"});
  player.state = kPlayingState;
  Select(0);
  window->RunSelectedTask();
  EXPECT_TRUE(PumpUntil([&] { return calls.Calls() == 1; }));
  // The call returns the state before it.
  EXPECT_EQ(SetThreadExecutionState(ES_CONTINUOUS | ES_SYSTEM_REQUIRED),
            ES_CONTINUOUS | ES_SYSTEM_REQUIRED);
  Send(PBT_APMSUSPEND);
  EXPECT_EQ(SetThreadExecutionState(ES_CONTINUOUS), static_cast<EXECUTION_STATE>(ES_CONTINUOUS));
}

TEST_F(FrmMainPowerTest, DueTasksRunOnceTenSecondsAfterWakingUp) {
  Tasks({{kInternetRadio, L"http://example.invalid/"}, {kInternetRadio, L"http://b.invalid/"}});
  Open();
  Send(PBT_APMSUSPEND);
  Send(PBT_APMRESUMEAUTOMATIC);
  // A run by hand does not shorten the pause.
  player.state = kPlayingState;
  Select(1);
  window->RunSelectedTask();
  MakeDue();
  Taken();
  EXPECT_GT(LetRun(), 9.5);
  EXPECT_THAT(Taken(), ElementsAre(L"close", L"stop", L"url http://example.invalid/", L"play"));
  EXPECT_GT(general->tasks[0].NextRun, Now());
  // Without a pause from now on.
  general->tasks[0].LastRun = 0;
  MakeDue();
  EXPECT_LT(LetRun(), 5);
}

// The timer can end after the sleep before the system reports it.
TEST_F(FrmMainPowerTest, ThePauseBeginsAgainAfterTheSleep) {
  Tasks({{kInternetRadio, L"http://example.invalid/"}});
  Open();
  Send(PBT_APMSUSPEND);
  MakeDue();
  milliseconds = [] { return 1'000'000'000'000; };
  const auto begun = std::chrono::steady_clock::now();
  EXPECT_TRUE(PumpUntil([&] { return HasRun(); }, std::chrono::seconds(40)));
  EXPECT_GT(std::chrono::steady_clock::now() - begun, std::chrono::seconds(18));
}

}  // namespace
}  // namespace tellurvane
