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

// Files that have memory enough, and tell whether one stayed open.
class RoomyFiles : public FileOperations {
 public:
  explicit RoomyFiles(FileOperations& files) : files_(files) {}

  OpenOutcome OpenForReading(const std::wstring& path) override {
    const AllocationPause pause;
    const OpenOutcome outcome = files_.OpenForReading(path);
    if (outcome == OpenOutcome::kOpened) ++opened;
    return outcome;
  }
  std::optional<std::uint64_t> SizeOfReading() override { return files_.SizeOfReading(); }
  std::optional<size_t> Read(char* buffer, size_t size) override {
    const AllocationPause pause;
    return files_.Read(buffer, size);
  }
  void CloseReading() override {
    files_.CloseReading();
    --opened;
  }
  bool CreateForWriting(const std::wstring& path) override {
    const AllocationPause pause;
    return files_.CreateForWriting(path);
  }
  std::optional<size_t> Write(std::string_view bytes) override {
    const AllocationPause pause;
    return files_.Write(bytes);
  }
  bool Flush() override {
    const AllocationPause pause;
    return files_.Flush();
  }
  bool CloseWriting() override {
    const AllocationPause pause;
    return files_.CloseWriting();
  }
  bool MoveOver(const std::wstring& from, const std::wstring& to) override {
    const AllocationPause pause;
    return files_.MoveOver(from, to);
  }
  CopyOutcome CopyToNew(const std::wstring& from, const std::wstring& to) override {
    const AllocationPause pause;
    return files_.CopyToNew(from, to);
  }
  void Remove(const std::wstring& path) override {
    const AllocationPause pause;
    files_.Remove(path);
  }

  int opened = 0;

 private:
  FileOperations& files_;
};

std::string List(const std::wstring& names) {
  std::wstring text;
  for (const wchar_t name : names) text += Line(std::wstring(40, name));
  return Utf16Bytes(text);
}

// Does it with one allocation more each time until none fails; returns how often one did.
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

struct ListCase {
  const char* name;
  std::string before;
  std::string after;
  bool isLoad;
};
std::ostream& operator<<(std::ostream& out, const ListCase& each) { return out << each.name; }

class ListOutOfMemoryTest : public testing::TestWithParam<ListCase> {};

TEST_P(ListOutOfMemoryTest, LeavesTheOldListOrTheNewOne) {
  const ListCase& deed = GetParam();
  std::unique_ptr<TaskListFixture> list;
  std::unique_ptr<RoomyFiles> files;
  std::unique_ptr<TaskListFile> file;
  TaskList tasks;
  const auto prepare = [&] {
    list = std::make_unique<TaskListFixture>(deed.before);
    files = std::make_unique<RoomyFiles>(list->files);
    file = std::make_unique<TaskListFile>(*files, kListPath, list->Dialect(),
                                          [&] { return list->now; });
    tasks.clear();
    if (!deed.isLoad) tasks = {Reminder(std::wstring(40, L'n'), L"source")};
  };
  const auto act = [&] {
    if (deed.isLoad) {
      file->Load(tasks);
    } else {
      file->Save(tasks);
    }
  };
  const auto look = [&] {
    const std::string bytes = list->Bytes();
    EXPECT_TRUE(bytes == deed.before || bytes == deed.after) << bytes.size();
    EXPECT_EQ(files->opened, 0) << "the list stays open, and nobody can replace it";
    // With memory again everything goes on.
    EXPECT_TRUE(file->Load(tasks));
    EXPECT_TRUE(file->Save(tasks));
    EXPECT_EQ(list->files.files.count(kTemporaryPath), 0U);
  };
  EXPECT_GT(WithEachAllocationFailing(prepare, act, look), 3);
}

INSTANTIATE_TEST_SUITE_P(
    Deeds, ListOutOfMemoryTest,
    testing::Values(ListCase{"load", List(L"ab"), List(L"ab"), true},
                    ListCase{"lossy", List(L"ab") + Utf16Bytes(L"malformed\r\n").substr(2),
                             List(L"ab"), true},
                    ListCase{"save", List(L"ab"), Utf16Bytes(Line(std::wstring(40, L'n'))), false}),
    [](const auto& each) { return each.param.name; });

TEST(EditorOutOfMemoryTest, KeepsEveryTask) {
  TaskList tasks;
  std::unique_ptr<ScheduleEditor> editor;
  const std::wstring longName(40, L'x');
  const auto prepare = [&] {
    tasks = {Reminder(std::wstring(40, L'a'), L"source"), Reminder(std::wstring(40, L'b'), L"s")};
    editor = std::make_unique<ScheduleEditor>(
        tasks,
        TaskSurroundings{.clock = [] { return At(2011, 2, 14, 12); },
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
