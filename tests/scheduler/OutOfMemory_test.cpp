// Each allocation made to fail in turn: no list is lost, torn or left locked.
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <new>
#include <string>

#include "base/Text.h"
#include "scheduler/ScheduleEditor.h"
#include "tests/scheduler/TaskListFixture.h"
#include "tests/support/FailingAllocation.h"
#include "tests/support/Utf16.h"

namespace tellurvane {
namespace {

// As on the disk, a write that has begun takes no memory.
class Files : public MemoryFiles {
 public:
  std::optional<size_t> Write(std::string_view bytes) override {
    const AllocationPause pause;
    return MemoryFiles::Write(bytes);
  }
  bool Flush() override {
    const AllocationPause pause;
    return MemoryFiles::Flush();
  }
  bool CloseWriting() override {
    const AllocationPause pause;
    return MemoryFiles::CloseWriting();
  }
};

std::string List(const std::wstring& names) {
  std::wstring text;
  for (const wchar_t name : names) text += Line(std::wstring(40, name));
  return Utf16Bytes(text);
}

// Acts with one more allocation granted each time, until none fails. Returns how many failed.
int WithEachAllocationFailing(const std::function<void()>& prepare,
                              const std::function<void()>& act, const std::function<void()>& look) {
  for (int granted = 0;; ++granted) {
    prepare();
    bool hasFailed = false;
    {
      const FailingAllocation failing(granted);
      try {
        act();
      } catch (const std::bad_alloc&) {
      }
      hasFailed = FailingAllocation::Happened();
    }
    look();
    if (!hasFailed || testing::Test::HasFailure()) return granted;
  }
}

TEST(ListOutOfMemoryTest, LeavesTheOldListOrTheNewOne) {
  const struct {
    const char* name;
    bool isLoad;
    std::string before, after;
  } scenarios[] = {
      {"load", true, List(L"ab"), List(L"ab")},
      {"lossy", true, List(L"ab") + Utf16Bytes(L"malformed\r\n").substr(2), List(L"ab")},
      {"save", false, List(L"ab"), Utf16Bytes(Line(std::wstring(40, L'n')))},
  };
  for (const auto& scenario : scenarios) {
    SCOPED_TRACE(scenario.name);
    TaskListFixture fixture;
    std::unique_ptr<Files> files;
    std::unique_ptr<TaskListFile> file;
    TaskList tasks;
    const auto prepare = [&] {
      files = std::make_unique<Files>();
      files->files[kListPath].bytes = scenario.before;
      file = std::make_unique<TaskListFile>(*files, kListPath, fixture.Dialect(),
                                            [&] { return fixture.now; });
      tasks = {Reminder(std::wstring(40, L'n'), L"source")};
    };
    const auto act = [&] { scenario.isLoad ? file->Load(tasks) : file->Save(tasks); };
    const auto look = [&] {
      const std::string bytes = files->files.at(kListPath).bytes;
      EXPECT_TRUE(bytes == scenario.before || bytes == scenario.after) << bytes.size();
      EXPECT_TRUE(files->MoveOver(kListPath, L"aside") && files->MoveOver(L"aside", kListPath))
          << "the list stays open and cannot be replaced";
      // With memory again everything goes on.
      EXPECT_TRUE(file->Load(tasks));
      EXPECT_TRUE(file->Save(tasks));
      EXPECT_EQ(files->files.count(kTemporaryPath), 0U);
    };
    EXPECT_GT(WithEachAllocationFailing(prepare, act, look), 3);
  }
}

TEST(EditorOutOfMemoryTest, KeepsEveryTask) {
  TaskList tasks;
  std::unique_ptr<ScheduleEditor> editor;
  const std::wstring longName(40, L'x');
  const auto prepare = [&] {
    tasks = {Reminder(std::wstring(40, L'a'), L"source"), Reminder(std::wstring(40, L'b'), L"s")};
    editor = std::make_unique<ScheduleEditor>(
        tasks,
        ValidationCallbacks{.clock = [] { return At(2011, 2, 14, 12); },
                            .pathExists = [](const std::wstring&) { return true; },
                            .isSameName = EqualsIgnoringAsciiCase},
        [] {});
    editor->New();
  };
  const auto act = [&] {
    TaskFields fields = editor->Fields();
    fields.name = longName;
    fields.mediaType = kReminderNote;
    fields.source = std::wstring(40, L's');
    fields.interval = L"5";
    EXPECT_EQ(editor->Save(fields), std::nullopt);
  };
  const auto look = [&] {
    ASSERT_GE(tasks.size(), 2U);
    EXPECT_EQ(tasks[0].Name, std::wstring(40, L'a'));
    EXPECT_EQ(tasks[1].Name, std::wstring(40, L'b'));
    EXPECT_LE(tasks.size(), 3U);
    if (tasks.size() == 3) {
      EXPECT_EQ(tasks[2].Name, longName);
    }
  };
  EXPECT_GT(WithEachAllocationFailing(prepare, act, look), 3);
}

}  // namespace
}  // namespace tellurvane
