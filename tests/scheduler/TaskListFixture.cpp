#include "tests/scheduler/TaskListFixture.h"

namespace tellurvane {

std::wstring Line(const std::wstring& name) {
  return L"0|30|1|3\t" + name + L"\tsource\t2011/2/13 下午 03:20:05\t2011/2/15\r\n";
}

TaskRecord Reminder(const std::wstring& name, const std::wstring& source) {
  TaskRecord task;
  task.Enabled = true;
  task.MediaType = kReminderNote;
  task.Name = name;
  task.Source = source;
  task.IntervalUnit = kMinutes;
  task.Interval = 30;
  task.LastRun = At(2011, 2, 13, 15, 20, 5);
  task.NextRun = At(2011, 2, 15);
  return task;
}

std::vector<std::string> TaskListFixture::Backups() const {
  std::vector<std::string> backups;
  for (const auto& [path, kept] : files.files) {
    if (path.ends_with(L".bak")) backups.push_back(kept.bytes);
  }
  return backups;
}

TaskListDialect TaskListFixture::Dialect() {
  return {.dateReader = [this] { return HostDateReader(*locale); },
          .writeDate = [this](std::wstring& text,
                              DateSerial date) { AppendHostDateText(text, date, *locale); },
          .decodeAnsi =
              [this](std::string_view bytes) {
                std::wstring text;
                for (const char byte : bytes) {
                  text += static_cast<wchar_t>(static_cast<unsigned char>(byte));
                }
                return DecodedText(text, isAnsiLossy);
              }};
}

}  // namespace tellurvane
