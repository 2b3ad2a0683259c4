// The list survives a program that is killed at any moment, and a reader never sees half of it.
#include "tests/scheduler/SaveLoop.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <memory>
#include <mutex>
#include <new>
#include <optional>
#include <random>
#include <string>
#include <thread>

#include "tests/app/TemporaryFolder.h"
#include "ui/Handle.h"

namespace tellurvane {
namespace {

constexpr int kKills = 1'000;
constexpr double kLongestLifeMilliseconds = 6;  // some ten saves after the first

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
  const SaveLoopShare* operator->() const { return view_; }

 private:
  std::wstring name_ = L"save-loop-" + std::to_wstring(GetCurrentProcessId());
  UniqueKernelHandle mapping_;
  SaveLoopShare* view_;
};

struct Sight {
  enum Kind { kWhole, kTorn, kMissing, kRefused } kind = kMissing;
  std::uint32_t generation = 0;
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
  const HANDLE file = CreateFileW(path.c_str(), GENERIC_READ,
                                  FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                  OPEN_EXISTING, 0, nullptr);
  if (file == INVALID_HANDLE_VALUE) {
    return {.kind = GetLastError() == ERROR_FILE_NOT_FOUND ? Sight::kMissing : Sight::kRefused};
  }
  std::string bytes(64 * 1024, '\0');
  DWORD size = 0;
  const BOOL isRead =
      ReadFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &size, nullptr);
  CloseHandle(file);
  if (!isRead) return {.kind = Sight::kRefused};
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

  void Stop() {
    thread_.request_stop();
    thread_.join();
  }

  std::map<Sight::Kind, int> seen;
  int backward = 0;  // an older list after a newer one

 private:
  void Run(const std::stop_token& stop) {
    std::uint32_t newest = 0;
    while (!stop.stop_requested()) {
      // Leaves the file alone for most of the time, or the loop would seldom get to replace it.
      Sleep(1);
      const Sight sight = Look(path_);
      ++seen[sight.kind];
      if (sight.kind != Sight::kWhole) continue;
      if (sight.generation < newest) ++backward;
      newest = sight.generation;
    }
  }

  std::wstring path_;
  std::jthread thread_;
};

class SaveLoop {
 public:
  SaveLoop(const std::wstring& path, const Share& share, std::uint32_t firstGeneration) {
    std::wstring command = L"\"" + BesideTheTests(L"SaveLoop.exe") + L"\" \"" + path + L"\" " +
                           share.Name() + L" " + std::to_wstring(firstGeneration);
    STARTUPINFOW startup = {};
    startup.cb = sizeof(startup);
    PROCESS_INFORMATION created = {};
    EXPECT_TRUE(CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr,
                               nullptr, &startup, &created))
        << GetLastError();
    thread_.Reset(created.hThread);
    process_.Reset(created.hProcess);
  }

  // Waits until it is gone with all that it held.
  void Kill() {
    EXPECT_TRUE(TerminateProcess(process_.Get(), kKilled));
    EXPECT_EQ(WaitForSingleObject(process_.Get(), 20'000), WAIT_OBJECT_0);
    DWORD code = 0;
    EXPECT_TRUE(GetExitCodeProcess(process_.Get(), &code));
    EXPECT_EQ(code, kKilled) << "it ended by itself";
  }

 private:
  static constexpr DWORD kKilled = 77;
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

TEST(SaveLoopTest, AThousandKillsLoseNothing) {
  const TemporaryFolder folder;
  const std::wstring path = folder.File(L"JobList.dbs");
  const Share share;
  Win32FileOperations files;
  ASSERT_TRUE(RealTaskListFile(files, path).Save(ListOfGeneration(0)));
  ASSERT_GT(ReadBytes(path).size(), 15'000U);

  Reader reader(path);
  std::mt19937_64 random(std::random_device{}());
  std::uniform_real_distribution<double> life(0, kLongestLifeMilliseconds);
  int lost = 0;
  int unsound = 0;
  int leftovers = 0;
  std::uint32_t saved = 0;
  for (int kill = 0; kill < kKills && !testing::Test::HasFailure(); ++kill) {
    const std::uint32_t before = share->acknowledged;
    SaveLoop loop(path, share, saved + 1);
    // The first save of each life goes over what the last kill left behind.
    ASSERT_TRUE(BecomesTrue([&] { return share->acknowledged != before; })) << "kill " << kill;
    SpinFor(life(random));
    loop.Kill();
    const Sight sight = Look(path);
    if (sight.kind != Sight::kWhole) ++unsound;
    if (sight.generation < share->acknowledged) ++lost;
    if (std::filesystem::exists(path + L".tmp")) ++leftovers;
    saved = std::max(sight.generation, saved);
  }
  reader.Stop();

  EXPECT_EQ(lost, 0);
  EXPECT_EQ(unsound, 0);
  EXPECT_EQ(share->failures, 0U);
  EXPECT_EQ(reader.seen[Sight::kTorn], 0);
  EXPECT_EQ(reader.seen[Sight::kMissing], 0);
  EXPECT_EQ(reader.seen[Sight::kRefused], 0);
  EXPECT_EQ(reader.backward, 0);
  // Otherwise the kills would not have come in the middle of saves, nor the looks between them.
  EXPECT_GT(leftovers, 0);
  EXPECT_GT(reader.seen[Sight::kWhole], kKills);
  RecordProperty("leftovers", leftovers);
  std::printf("%d kills, %u saves, %d whole reads, %d leftover temporary files\n", kKills, saved,
              reader.seen[Sight::kWhole], leftovers);
}

}  // namespace
}  // namespace tellurvane
