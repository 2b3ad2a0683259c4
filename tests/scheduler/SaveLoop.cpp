// Waits for its turn, then saves one list after the other until it is killed:
//   SaveLoop LIST-FILE SHARE-NAME TURN-NAME
#include "tests/scheduler/SaveLoop.h"

#include <windows.h>

#include <optional>
#include <string>
#include <string_view>

#include "ui/Handle.h"

namespace tellurvane {
namespace {

// The real files. Writes the next step to the shared memory and stops at the wanted step.
class SteppingFiles : public Win32FileOperations {
 public:
  explicit SteppingFiles(SaveLoopShare& share) : share_(share) {}

  void Enter(SaveStep step) {
    share_.step = step;
    if (step != share_.stop || share_.acknowledged < share_.first) return;
    share_.hasStopped = true;
    Sleep(INFINITE);
  }

  bool CreateForWriting(const std::wstring& path) override {
    Enter(SaveStep::kCreate);
    return Win32FileOperations::CreateForWriting(path);
  }

  std::optional<size_t> Write(std::string_view bytes) override {
    Enter(SaveStep::kWrite);
    if (share_.stop != SaveStep::kWriteRest) return Win32FileOperations::Write(bytes);
    const size_t half = bytes.size() / 2;
    const auto written = Win32FileOperations::Write(bytes.substr(0, half));
    Enter(SaveStep::kWriteRest);
    const auto rest = Win32FileOperations::Write(bytes.substr(half));
    return written && rest ? std::optional(*written + *rest) : std::nullopt;
  }

  bool Flush() override {
    Enter(SaveStep::kFlush);
    return Win32FileOperations::Flush();
  }

  bool CloseWriting() override {
    Enter(SaveStep::kClose);
    return Win32FileOperations::CloseWriting();
  }

  bool MoveOver(const std::wstring& from, const std::wstring& to) override {
    Enter(SaveStep::kMove);
    const bool isMoved = Win32FileOperations::MoveOver(from, to);
    Enter(SaveStep::kReturn);
    return isMoved;
  }

 private:
  SaveLoopShare& share_;
};

[[noreturn]] void SaveForEver(SaveLoopShare& share, const std::wstring& path) {
  SteppingFiles files(share);
  TaskListFile file = RealTaskListFile(files, path);
  for (std::uint32_t generation = share.first;; ++generation) {
    if (file.Save(ListOfGeneration(generation))) {
      share.acknowledged = generation;
    } else {
      ++share.failures;
    }
  }
}

}  // namespace
}  // namespace tellurvane

int wmain(int argumentCount, wchar_t** arguments) {
  using namespace tellurvane;
  if (argumentCount != 4) return 2;
  const UniqueKernelHandle mapping(OpenFileMappingW(FILE_MAP_WRITE, FALSE, arguments[2]));
  if (!mapping) return 3;
  auto* const share = static_cast<SaveLoopShare*>(
      MapViewOfFile(mapping.Get(), FILE_MAP_WRITE, 0, 0, sizeof(SaveLoopShare)));
  if (share == nullptr) return 4;
  const UniqueKernelHandle turn(OpenEventW(SYNCHRONIZE, FALSE, arguments[3]));
  if (WaitForSingleObject(turn.Get(), INFINITE) != WAIT_OBJECT_0) return 5;
  SaveForEver(*share, arguments[1]);
}
