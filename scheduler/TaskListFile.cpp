#include "scheduler/TaskListFile.h"

#include <utility>

#include "base/PictureFormat.h"

namespace tellurvane {
namespace {

class ReadingCloser {
 public:
  explicit ReadingCloser(FileOperations& files) : files_(files) {}
  ReadingCloser(const ReadingCloser&) = delete;
  ReadingCloser& operator=(const ReadingCloser&) = delete;
  ~ReadingCloser() { files_.CloseReading(); }

 private:
  FileOperations& files_;
};

// A backup's name holds the time to the second. If a name is taken, the next second is tried.
constexpr int kBackupNames = 60;

std::wstring BackupStamp(DateSerial moment) { return FormatMoment(L"yyyymmdd-hhmmss", moment, {}); }

}  // namespace

TaskListFile::TaskListFile(FileOperations& files, std::wstring path, TaskListDialect dialect,
                           Clock clock)
    : files_(files),
      path_(std::move(path)),
      temporaryPath_(path_ + L".tmp"),
      dialect_(std::move(dialect)),
      clock_(std::move(clock)) {}

bool TaskListFile::Load(TaskList& tasks) {
  tasks.clear();
  isUnread_ = false;
  TaskListReading reading = Read();
  isBackupNeeded_ = reading.hasLoss;
  tasks = std::move(reading.tasks);
  // When the rewrite fails, the next save makes up for it.
  if (Write(tasks)) isUnread_ = false;
  return !tasks.empty();
}

bool TaskListFile::Save(std::span<const TaskRecord> tasks) {
  if (isUnread_ && tasks.empty()) return false;
  isUnread_ = false;
  return Write(tasks);
}

bool TaskListFile::Write(std::span<const TaskRecord> tasks) {
  const std::string bytes = TaskListBytes(tasks, dialect_.writeDate);
  // The next load would not read such a file: the whole list would be lost.
  if (bytes.size() >= kTaskListSizeLimit) return false;
  std::wstring backup;
  if (isBackupNeeded_ && !KeepBackup(backup)) return false;
  if (WriteBeside(bytes) && files_.MoveOver(temporaryPath_, path_)) {
    isBackupNeeded_ = false;
    return true;
  }
  files_.Remove(temporaryPath_);
  // The file still stands whole: a copy for each attempt would only pile up.
  if (!backup.empty()) files_.Remove(backup);
  return false;
}

TaskListReading TaskListFile::Read() {
  const OpenOutcome opened = files_.OpenForReading(path_);
  if (opened == OpenOutcome::kMissing) return {};
  isUnread_ = opened == OpenOutcome::kFailed;
  if (isUnread_) return {.tasks = {}, .hasLoss = true};
  const auto bytes = ReadBytes();
  if (!bytes) return {.tasks = {}, .hasLoss = true};
  if (bytes->empty()) return {};
  const auto decoded = DecodeTaskListBytes(*bytes, dialect_.decodeAnsi);
  if (!decoded) return {.tasks = {}, .hasLoss = true};
  TaskListReading reading = ReadTaskListText(decoded->text, dialect_.dateReader(), clock_());
  reading.hasLoss |= decoded->hasLoss;
  return reading;
}

std::optional<std::string> TaskListFile::ReadBytes() {
  // Closes the file also if an allocation fails: an open file cannot be replaced.
  const ReadingCloser end(files_);
  const auto size = files_.SizeOfReading();
  isUnread_ = !size;
  if (!size || *size >= kTaskListSizeLimit) return std::nullopt;
  std::string bytes(static_cast<size_t>(*size), '\0');
  size_t filled = 0;
  while (filled < bytes.size()) {
    const auto got = files_.Read(bytes.data() + filled, bytes.size() - filled);
    // Half a list must not replace the whole: a file that ends too early counts as unread.
    isUnread_ = !got || *got == 0;
    if (isUnread_) return std::nullopt;
    filled += *got;
  }
  return bytes;
}

bool TaskListFile::KeepBackup(std::wstring& made) {
  const std::int64_t now = SecondsFromSerial(clock_());
  for (int i = 0; i < kBackupNames; ++i) {
    const std::wstring copy = path_ + L"." + BackupStamp(SerialFromSeconds(now + i)) + L".bak";
    const CopyOutcome outcome = files_.CopyToNew(path_, copy);
    if (outcome == CopyOutcome::kTargetExists) continue;
    if (outcome == CopyOutcome::kCopied) made = copy;
    // A file that is gone needs no backup.
    return outcome == CopyOutcome::kCopied || outcome == CopyOutcome::kSourceMissing;
  }
  return false;
}

bool TaskListFile::WriteBeside(std::string_view bytes) {
  if (!files_.CreateForWriting(temporaryPath_)) return false;
  const bool written = WriteAndFlush(bytes);
  return files_.CloseWriting() && written;
}

bool TaskListFile::WriteAndFlush(std::string_view bytes) {
  const auto written = files_.Write(bytes);
  return written && *written == bytes.size() && files_.Flush();
}

}  // namespace tellurvane
