// The main window while the computer falls asleep and wakes up.
#include <gmock/gmock.h>

#include <chrono>

#include "tests/mainwin/FrmMainFixture.h"

namespace tellurvane {
namespace {

using testing::ElementsAre;

class FrmMainPowerTest : public FrmMainTest {
 protected:
  LRESULT Tell(WPARAM event) const {
    return SendMessageW(window->hwnd(), WM_POWERBROADCAST, event, 0);
  }
  void MakeDue() const { general->tasks[0].NextRun = Now() - 2; }
  bool HasRun() const { return general->tasks[0].LastRun != 0; }
  double LetRun() const {
    const ULONGLONG begun = GetTickCount64();
    EXPECT_TRUE(PumpUntil([&] { return HasRun(); }, std::chrono::seconds(40)));
    return static_cast<double>(GetTickCount64() - begun) / 1'000;
  }
};

TEST_F(FrmMainPowerTest, WhatPlaysIsStoppedWhenTheComputerFallsAsleep) {
  Tasks({{kInternetRadio, L"http://example.invalid/"}});
  Open();
  Select(0);
  window->RunSelectedTask();
  ASSERT_TRUE(IsOn(kStop));
  Taken();
  EXPECT_EQ(Tell(PBT_APMSUSPEND), TRUE);
  EXPECT_THAT(Taken(), ElementsAre(L"close", L"stop"));
  EXPECT_FALSE(IsOn(kStop));
}

TEST_F(FrmMainPowerTest, OtherNewsOfThePowerStopNothing) {
  Open();
  Taken();
  Tell(PBT_APMPOWERSTATUSCHANGE);
  Tell(PBT_APMRESUMESUSPEND);
  EXPECT_THAT(Taken(), ElementsAre());
}

TEST_F(FrmMainPowerTest, WhatIsDueRunsOnceTenSecondsAfterWakingUp) {
  Tasks({{kInternetRadio, L"http://example.invalid/"}});
  Open();
  Tell(PBT_APMSUSPEND);
  Tell(PBT_APMRESUMEAUTOMATIC);
  MakeDue();
  Taken();
  EXPECT_GT(LetRun(), 9.5);
  EXPECT_THAT(Taken(), ElementsAre(L"close", L"stop", L"url http://example.invalid/", L"play"));
  EXPECT_GT(general->tasks[0].NextRun, Now()) << "moved past what was slept through";
  // From now on as ever.
  general->tasks[0].LastRun = 0;
  MakeDue();
  EXPECT_LT(LetRun(), 5);
}

TEST_F(FrmMainPowerTest, RunningATaskByHandMeanwhileDoesNotShortenTheWait) {
  Tasks({{kReminderNote, L"a"}, {kInternetRadio, L"http://example.invalid/"}});
  Open();
  Tell(PBT_APMRESUMEAUTOMATIC);
  Select(1);
  window->RunSelectedTask();
  MakeDue();
  EXPECT_GT(LetRun(), 9.5);
}

// The timer that was set before the sleep can end before the system reports the waking up.
TEST_F(FrmMainPowerTest, TheWaitBeginsAgainWhereItEndedDuringTheSleep) {
  Tasks({{kInternetRadio, L"http://example.invalid/"}});
  Open();
  Tell(PBT_APMSUSPEND);
  MakeDue();
  milliseconds = [] { return 1'000'000'000'000; };
  const auto begun = std::chrono::steady_clock::now();
  EXPECT_TRUE(PumpUntil([&] { return HasRun(); }, std::chrono::seconds(40)));
  EXPECT_GT(std::chrono::steady_clock::now() - begun, std::chrono::seconds(18));
}

TEST_F(FrmMainPowerTest, AComputerThatDoesNotFallAsleepAfterAllGoesOn) {
  Tasks({{kInternetRadio, L"http://example.invalid/"}});
  Open();
  Tell(PBT_APMSUSPEND);
  MakeDue();
  EXPECT_GT(LetRun(), 1.5);
}

}  // namespace
}  // namespace tellurvane
