#include "scheduler/RunOutcome.h"

#include <gtest/gtest.h>

namespace tellurvane {
namespace {

TEST(RunOutcomeTest, HasTheReasonOfAFailureInWords) {
  const struct {
    RunOutcome outcome;
    std::wstring reason;
  } cases[] = {
      {{}, L""},
      {FileIsMissing(), L"找不到檔案"},
      {CannotPlay(), L"無法播放"},
      {StreamIsLost(), L"無法連線，將再次嘗試"},
      {ProgramNotStarted(L""), L"無法啟動程式"},
      {ProgramNotStarted(L"存取被拒。"), L"無法啟動程式：存取被拒。"},
  };
  for (const auto& [outcome, reason] : cases) {
    EXPECT_EQ(outcome.reason, reason);
    EXPECT_EQ(outcome.HasFailed(), !reason.empty());
  }
}

TEST(RunOutcomesTest, KeepsTheLatestOutcomeOfEachTask) {
  RunOutcomes outcomes;
  EXPECT_EQ(outcomes.Of(7), RunOutcome());
  outcomes.Set(2, FileIsMissing());
  outcomes.Set(0, CannotPlay());
  EXPECT_EQ(outcomes.Of(0), CannotPlay());
  EXPECT_EQ(outcomes.Of(1), RunOutcome());
  EXPECT_EQ(outcomes.Of(2), FileIsMissing());
  outcomes.Set(2, {});
  EXPECT_EQ(outcomes.Of(2), RunOutcome());
}

TEST(RunOutcomesTest, FollowTheirTasksThroughAnEdit) {
  RunOutcomes outcomes;
  TaskList tasks(3);
  for (const std::size_t row : {std::size_t{0}, std::size_t{2}}) outcomes.Set(row, StreamIsLost());
  outcomes.Set(1, FileIsMissing());
  EXPECT_EQ(outcomes.FailedCount(tasks), 3);
  tasks[0].Deleted = true;
  EXPECT_EQ(outcomes.FailedCount(tasks), 2) << "a removed task does not count";
  // A new task, which may have the name of the removed one.
  tasks.emplace_back();
  outcomes.DropRemoved(tasks);
  tasks.erase(tasks.begin());
  EXPECT_EQ(outcomes.Of(0), FileIsMissing());
  EXPECT_EQ(outcomes.Of(1), StreamIsLost());
  EXPECT_EQ(outcomes.Of(2), RunOutcome());
  EXPECT_EQ(outcomes.FailedCount(tasks), 2);
  tasks.clear();
  EXPECT_EQ(outcomes.FailedCount(tasks), 0) << "of the present list";
}

}  // namespace
}  // namespace tellurvane
