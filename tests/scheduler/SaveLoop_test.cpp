// The list survives a program that is killed at any moment, and a reader never sees half of it.
//   save_loop_tests [KILLS]
#include "tests/scheduler/SaveLoop.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <cwchar>
#include <deque>
#include <filesystem>
#include <map>
#include <new>
#include <optional>
#include <random>
#include <stop_token>
#include <string>
#include <thread>
#include <utility>

#include "tests/support/TemporaryFolder.h"
#include "ui/Handle.h"

namespace tellurvane {
namespace {

// So many kills at random moments, when no other number is asked for.
int randomKills = 200;
constexpr double kLongestLifeMilliseconds = 3;  // some six saves after the first
constexpr size_t kWaiting = 3;                  // loops that have started and wait for their turn

std::wstring BesideTheTests(const wchar_t* name) {
  wchar_t path[MAX_PATH] = {};
  GetModuleFileNameW(nullptr, path, MAX_PATH);
  return std::filesystem::path(path).replace_filename(name).wstring();
}

// Memory that the loop acknowledges its saves in.
class Share {
 public:
  Share()
      : mapping_(CreateFileMappingW(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0,
                                    sizeof(SaveLoopShare), name_.c_str())),
        view_(new (MapViewOfFile(mapping_.Get(), FILE_MAP_WRITE, 0, 0, sizeof(SaveLoopShare)))
                  SaveLoopShare) {}
  Share(const Share&) = delete;
  Share& operator=(const Share&) = delete;
  ~Share() { UnmapViewOfFile(view_); }

  const std::wstring& Name() const { return name_; }
  SaveLoopShare* operator->() const { return view_; }

 private:
  std::wstring name_ = L"save-loop-" + std::to_wstring(GetCurrentProcessId());
  UniqueKernelHandle mapping_;
  SaveLoopShare* view_;
};

struct Sight {
  enum Kind { kWhole, kTorn, kMissing, kFailed } kind = kMissing;
  std::uint32_t generation = 0;

  bool operator==(const Sight&) const = default;
};

// The generation that the first line names; nothing when the bytes are not that whole list.
std::optional<std::uint32_t> WholeGeneration(const std::string& bytes) {
  const auto decoded = DecodeTaskListBytes(bytes, [](std::string_view) { return std::wstring(); });
  if (!decoded) return std::nullopt;
  const std::wstring& text = decoded->text;
  const size_t from = text.find(L'\t');
  if (from == std::wstring::npos) return std::nullopt;
  const auto generation =
      static_cast<std::uint32_t>(std::wcstoul(text.c_str() + from, nullptr, 10));
  if (TaskListBytes(ListOfGeneration(generation), AppendPlainDate) != bytes) return {};
  return generation;
}

// One look at the file, as short as it can be: while it is open it cannot be replaced.
Sight Look(const std::wstring& path) {
  UniqueKernelHandle file;
  // On Windows it may fail in the moment of the replacement.
  (void)BecomesTrue(
      [&] {
        file = OwnedFile(CreateFileW(path.c_str(), GENERIC_READ,
                                     FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                     nullptr, OPEN_EXISTING, 0, nullptr));
        if (file) return true;
        const DWORD error = GetLastError();
        return error != ERROR_ACCESS_DENIED && error != ERROR_SHARING_VIOLATION;
      },
      50);
  if (!file) {
    return {.kind = GetLastError() == ERROR_FILE_NOT_FOUND ? Sight::kMissing : Sight::kFailed};
  }
  std::string bytes(65'536, '\0');
  DWORD size = 0;
  const BOOL isRead =
      ReadFile(file.Get(), bytes.data(), static_cast<DWORD>(bytes.size()), &size, nullptr);
  file.Reset();
  if (!isRead) return {.kind = Sight::kFailed};
  bytes.resize(size);
  const auto generation = WholeGeneration(bytes);
  if (!generation) return {.kind = Sight::kTorn};
  return {.kind = Sight::kWhole, .generation = *generation};
}

// Looks at the file again and again for as long as it lives.
class Reader {
 public:
  explicit Reader(std::wstring path)
      : path_(std::move(path)), thread_([this](const std::stop_token& stop) { Run(stop); }) {}

  int Looks() const { return looks_; }

  void Stop() {
    thread_.request_stop();
    thread_.join();
  }

  // To be read once it has stopped.
  std::map<Sight::Kind, int> seen;
  int backward = 0;  // an older list after a newer one

 private:
  void Run(const std::stop_token& stop) {
    std::uint32_t newest = 0;
    while (!stop.stop_requested()) {
      // Leaves the file alone for most of the time, or the loop would seldom get to replace it.
      Sleep(3);
      const Sight sight = Look(path_);
      ++seen[sight.kind];
      ++looks_;
      if (sight.kind != Sight::kWhole) continue;
      if (sight.generation < newest) ++backward;
      newest = sight.generation;
    }
  }

  std::wstring path_;
  std::atomic<int> looks_ = 0;
  std::jthread thread_;
};

// A process that saves in a loop once it gets its turn.
class SaveLoop {
 public:
  SaveLoop(const std::wstring& path, const Share& share) {
    static int made = 0;
    const std::wstring turn = share.Name() + L"-turn-" + std::to_wstring(++made);
    turn_.Reset(CreateEventW(nullptr, TRUE, FALSE, turn.c_str()));
    const std::wstring command = L"\"" + BesideTheTests(L"SaveLoop.exe") + L"\" \"" + path +
                                 L"\" " + share.Name() + L" " + turn;
    // On a busy machine Wine sometimes fails with this error while another process is being killed.
    DWORD error = 0;
    EXPECT_TRUE(BecomesTrue([&] {
      error = Start(command);
      return error != ERROR_INTERNAL_ERROR;
    }));
    EXPECT_EQ(error, 0U);
  }
  SaveLoop(SaveLoop&&) = default;
  SaveLoop& operator=(SaveLoop&&) = delete;
  SaveLoop(const SaveLoop&) = delete;
  SaveLoop& operator=(const SaveLoop&) = delete;
  ~SaveLoop() {
    if (process_) Kill();
  }

  void Begin() { EXPECT_TRUE(SetEvent(turn_.Get())); }

  // Waits until it is gone with all that it held.
  void Kill() {
    const UniqueKernelHandle process = std::move(process_);
    EXPECT_TRUE(TerminateProcess(process.Get(), kKilled));
    EXPECT_EQ(WaitForSingleObject(process.Get(), 20'000), WAIT_OBJECT_0);
    DWORD code = 0;
    EXPECT_TRUE(GetExitCodeProcess(process.Get(), &code));
    EXPECT_EQ(code, kKilled) << "it ended by itself";
  }

 private:
  // The last error where the system does not create the process.
  DWORD Start(std::wstring command) {
    STARTUPINFOW startup = {};
    startup.cb = sizeof(startup);
    PROCESS_INFORMATION created = {};
    if (!CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                        &startup, &created)) {
      return GetLastError();
    }
    thread_.Reset(created.hThread);
    process_.Reset(created.hProcess);
    return 0;
  }

  static constexpr DWORD kKilled = 77;
  UniqueKernelHandle turn_;
  UniqueKernelHandle process_;
  UniqueKernelHandle thread_;
};

// To a fraction of a millisecond, which Sleep cannot do: a save takes half of one.
void SpinFor(double milliseconds) {
  LARGE_INTEGER frequency = {}, start = {}, now = {};
  QueryPerformanceFrequency(&frequency);
  QueryPerformanceCounter(&start);
  do {
    QueryPerformanceCounter(&now);
  } while (static_cast<double>(now.QuadPart - start.QuadPart) * 1'000 <
           milliseconds * static_cast<double>(frequency.QuadPart));
}

class SaveLoopTest : public testing::Test {
 protected:
  void SetUp() override {
    Win32FileOperations files;
    ASSERT_TRUE(RealTaskListFile(files, path_).Save(ListOfGeneration(0)));
    ASSERT_GT(ReadBytes(path_).size(), 15'000U);
  }

  // Starts processes ahead: a start takes much longer than the life that follows it.
  SaveLoop NextLoop() {
    while (waiting_.size() < kWaiting) waiting_.emplace_back(path_, share_);
    SaveLoop loop = std::move(waiting_.front());
    waiting_.pop_front();
    return loop;
  }

  // Lets a loop begin after the generation that was saved last. Its first save replaces what the
  // last kill left.
  void Begin(SaveLoop& loop, SaveStep stop) {
    share_->first = saved_ + 1;
    share_->stop = stop;
    share_->hasStopped = false;
    loop.Begin();
  }

  bool HasLeftover() const { return std::filesystem::exists(path_ + L".tmp"); }

  TemporaryFolder folder_;
  const std::wstring path_ = folder_.File(L"JobList.dbs");
  Share share_;
  std::uint32_t saved_ = 0;

 private:
  std::deque<SaveLoop> waiting_;
};

TEST_F(SaveLoopTest, AKillBeforeAnyStepLeavesTheOldListOrTheNewOne) {
  const struct {
    SaveStep step;
    bool isNew, hasLeftover;
  } rows[] = {
      {SaveStep::kCreate, false, false},   {SaveStep::kWrite, false, true},
      {SaveStep::kWriteRest, false, true}, {SaveStep::kFlush, false, true},
      {SaveStep::kClose, false, true},     {SaveStep::kMove, false, true},
      {SaveStep::kReturn, true, false},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(kSaveStepNames[static_cast<size_t>(row.step)]);
    SaveLoop loop = NextLoop();
    Begin(loop, row.step);
    ASSERT_TRUE(BecomesTrue([&] { return share_->hasStopped.load(); }));
    loop.Kill();
    const std::uint32_t old = saved_ + 1;
    EXPECT_EQ(share_->acknowledged, old);
    EXPECT_EQ(Look(path_), (Sight{Sight::kWhole, row.isNew ? old + 1 : old}));
    EXPECT_EQ(HasLeftover(), row.hasLeftover);
    saved_ = row.isNew ? old + 1 : old;
  }
  EXPECT_EQ(share_->failures, 0U);
}

TEST_F(SaveLoopTest, KillsAtRandomMomentsLoseNothing) {
  Reader reader(path_);
  std::mt19937_64 random(std::random_device{}());
  std::uniform_real_distribution<double> life(0, kLongestLifeMilliseconds);
  for (int kill = 0; kill < randomKills && !testing::Test::HasFailure(); ++kill) {
    SCOPED_TRACE(kill);
    SaveLoop loop = NextLoop();
    Begin(loop, kNoStop);
    ASSERT_TRUE(BecomesTrue([&] { return share_->acknowledged > saved_; }));
    // At least one look for each life, while it saves.
    const int looks = reader.Looks();
    ASSERT_TRUE(BecomesTrue([&] { return reader.Looks() > looks; }));
    SpinFor(life(random));
    loop.Kill();
    const Sight sight = Look(path_);
    EXPECT_EQ(sight.kind, Sight::kWhole);
    EXPECT_GE(sight.generation, share_->acknowledged) << "a save that returned is lost";
    saved_ = sight.generation;
  }
  reader.Stop();

  EXPECT_EQ(share_->failures, 0U);
  EXPECT_EQ(reader.seen[Sight::kTorn], 0);
  EXPECT_EQ(reader.seen[Sight::kMissing], 0);
  EXPECT_EQ(reader.seen[Sight::kFailed], 0);
  EXPECT_EQ(reader.backward, 0);
  EXPECT_GE(reader.seen[Sight::kWhole], randomKills);
}

}  // namespace
}  // namespace tellurvane

int main(int argumentCount, char** arguments) {
  testing::InitGoogleTest(&argumentCount, arguments);
  if (argumentCount > 1) {
    tellurvane::randomKills = static_cast<int>(std::strtol(arguments[1], nullptr, 10));
  }
  return RUN_ALL_TESTS();
}
