#include "bench/SampleList.h"

#include <array>
#include <span>

#include "scheduler/TaskListFile.h"
#include "scheduler/TaskListText.h"

namespace tellurvane {
namespace {

struct Sample {
  MediaType mediaType;
  const wchar_t* name;
  const wchar_t* source;
};

constexpr std::array<Sample, 8> kSamples = {{
    {kReminderNote, L"喝水", L"起來走一走\\r\\n順便喝杯水"},
    {kInternetRadio, L"早晨的古典音樂", L"http://radio.example.com:8000/classical-128-mp3"},
    {kLocalMusic, L"午休鈴聲", L"D:\\音樂\\鈴聲\\午休.mp3"},
    {kApplication, L"備份文件", L"robocopy.exe \"D:\\文件\" \"E:\\備份\\文件\" /MIR /R:1 /W:1"},
    {kReminderNote, L"繳費提醒", L"水費、電費、電話費\\r\\n記得在期限以前繳\\r\\n收據放進右邊抽屜"},
    {kLocalMusic, L"下班", L"C:\\Users\\Public\\Music\\closing-time.wav"},
    {kInternetRadio, L"整點新聞", L"mms://bcr.example.com/RA000012"},
    {kApplication, L"開啟記事本", L"notepad.exe Setting.ini"},
}};

// Spreads the tasks over all minutes of the week, the same in every run.
constexpr std::int64_t kStepSeconds = 7'980;  // 133 minutes
// 27 December 2026, 23:59:59: no date of today is longer as text.
const DateSerial kLongestDate = SerialFromSeconds(46'384 * kSecondsPerDay - 1);

constexpr std::int64_t kSecondsPerWeek = 7 * kSecondsPerDay;

TaskRecord SampleTask(size_t index, DateSerial firstRun) {
  const Sample& sample = kSamples[index % kSamples.size()];
  const auto number = static_cast<std::int64_t>(index);
  TaskRecord task;
  task.Enabled = index % 5 != 0;
  task.MediaType = sample.mediaType;
  task.Index = static_cast<std::int32_t>(index);
  task.Id = task.Index + 1;
  task.Name = sample.name + (L" " + std::to_wstring(index + 1));
  task.Source = sample.source;
  task.IntervalUnit = static_cast<std::int32_t>(index % 3);
  task.Interval = static_cast<std::int32_t>(index % 7 + 1);
  // A task is due at a whole minute, as a user sets it, and starts then or a second later.
  const std::int64_t first = SecondsFromSerial(firstRun) / 60 * 60;
  const std::int64_t offset = number * kStepSeconds % kSecondsPerWeek;
  task.NextRun = SerialFromSeconds(first + offset);
  task.LastRun = SerialFromSeconds(first - kSecondsPerWeek + offset + number / 2 % 2);
  return task;
}

}  // namespace

TaskList SampleTasks(size_t count, DateSerial firstRun) {
  TaskList tasks;
  tasks.reserve(count);
  for (size_t i = 0; i < count; ++i) tasks.push_back(SampleTask(i, firstRun));
  return tasks;
}

TaskList FullSampleTasks(DateSerial firstRun, const DateWriter& writeDate) {
  const size_t markSize = TaskListBytes({}, writeDate).size();
  TaskList tasks;
  size_t size = markSize;
  for (;;) {
    TaskRecord task = SampleTask(tasks.size(), firstRun);
    tasks.push_back(task);
    task.LastRun = task.NextRun = kLongestDate;
    size += TaskListBytes(std::span(&task, 1), writeDate).size() - markSize;
    if (size < kTaskListSizeLimit) continue;
    tasks.pop_back();
    return tasks;
  }
}

}  // namespace tellurvane
