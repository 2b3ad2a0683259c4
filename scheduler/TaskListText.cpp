#include "scheduler/TaskListText.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "base/Number.h"
#include "base/Text.h"
#include "scheduler/Schedule.h"

namespace tellurvane {
namespace {

constexpr std::wstring_view kLineEnd = L"\r\n";
constexpr std::string_view kMark = "\xFF\xFE";
constexpr size_t kFieldCount = 5;

enum Field : size_t { kCompound, kName, kSource, kLastRun, kNextRun };

using Fields = std::array<std::wstring_view, kFieldCount>;

struct CompoundField {
  std::int32_t intervalUnit = 0;
  std::int32_t interval = 0;
  bool enabled = false;
  std::int32_t mediaType = 0;
  bool hasSurplus = false;
};

std::wstring DecodeUtf16(std::string_view bytes) {
  std::wstring text(bytes.size() / 2, L'\0');
  // not covered: wchar_t has this size on Windows only, where the same tests run
  if constexpr (sizeof(wchar_t) == 2) {
    std::memcpy(text.data(), bytes.data(), text.size() * 2);
  } else {
    for (size_t i = 0; i < text.size(); ++i) {
      const auto low = static_cast<unsigned char>(bytes[2 * i]);
      const auto high = static_cast<unsigned char>(bytes[2 * i + 1]);
      text[i] = static_cast<wchar_t>(low | (high << 8));
    }
  }
  return text;
}

void AppendUtf16(std::string& bytes, std::wstring_view text) {
  const size_t start = bytes.size();
  bytes.resize(start + text.size() * 2);
  char* out = bytes.data() + start;
  // not covered: as above
  if constexpr (sizeof(wchar_t) == 2) {
    std::memcpy(out, text.data(), text.size() * 2);
  } else {
    for (const wchar_t unit : text) {
      *out++ = static_cast<char>(unit & 0xFF);
      *out++ = static_cast<char>((unit >> 8) & 0xFF);
    }
  }
}

// Takes the next line off the front; a last line without its end counts.
std::wstring_view TakeLine(std::wstring_view& rest) {
  const size_t end = rest.find(kLineEnd);
  const std::wstring_view line = rest.substr(0, end);
  rest.remove_prefix(end == std::wstring_view::npos ? rest.size() : end + kLineEnd.size());
  return line;
}

bool IsAllLineEnds(std::wstring_view text) {
  return text.find_first_not_of(kLineEnd) == std::wstring_view::npos;
}

// False when there are fewer than five. Surplus fields stay in `line`.
bool TakeFields(std::wstring_view& line, Fields& fields) {
  for (size_t i = 0; i < kFieldCount; ++i) {
    if (i > 0 && line.data() == nullptr) return false;
    const size_t end = line.find(L'\t');
    fields[i] = line.substr(0, end);
    line = end == std::wstring_view::npos ? std::wstring_view() : line.substr(end + 1);
  }
  return true;
}

std::optional<CompoundField> ReadCompound(std::wstring_view text) {
  std::wstring_view rest = text;
  std::array<std::wstring_view, 4> parts;
  for (std::wstring_view& part : parts) part = TakeField(rest, L'|');
  const auto unit = ParseInteger(parts[0]);
  const auto interval = ParseInteger(parts[1]);
  const auto enabled = ParseBoolean(parts[2]);
  const auto mediaType = ParseInteger(parts[3]);
  // A missing part is empty, which is not a number.
  if (!unit || !interval || !enabled || !mediaType) return std::nullopt;
  return CompoundField{*unit, *interval, *enabled, *mediaType, !rest.empty()};
}

DateSerial ReadDate(std::wstring_view text, const DateReader& dates, bool& hasLoss) {
  // A list written by hand leaves the last run of a new task empty.
  if (TrimBlanks(text).empty()) return 0;
  if (const auto date = dates.Read(text)) return *date;
  hasLoss = true;
  return 0;
}

// False when the line is malformed.
bool ReadTask(std::wstring_view line, const DateReader& dates, DateSerial now,
              TaskListReading& reading) {
  Fields fields;
  if (!TakeFields(line, fields)) return false;
  const auto compound = ReadCompound(fields[kCompound]);
  if (!compound) return false;
  if (compound->hasSurplus || !line.empty()) reading.hasLoss = true;

  const auto index = static_cast<std::int32_t>(reading.tasks.size());
  TaskRecord& task = reading.tasks.emplace_back();
  task.Index = index;
  task.Id = index + 1;
  task.IntervalUnit = compound->intervalUnit;
  task.Interval = compound->interval;
  task.Enabled = compound->enabled;
  task.MediaType = compound->mediaType;
  task.Name = fields[kName];
  task.Source = fields[kSource];
  task.LastRun = ReadDate(fields[kLastRun], dates, reading.hasLoss);
  task.NextRun = ReadDate(fields[kNextRun], dates, reading.hasLoss);
  task.NextRun = CaughtUpNextRun(task, now, CatchUp::kStrict);
  return true;
}

void AppendFieldText(std::wstring& text, std::wstring_view field) {
  const std::wstring_view trimmed = TrimBlanks(field);
  const auto mayBreakLine = [](wchar_t unit) {
    return unit == L'\t' || unit == L'\r' || unit == L'\n';
  };
  if (std::none_of(trimmed.begin(), trimmed.end(), mayBreakLine)) {
    text += trimmed;
    return;
  }
  std::wstring inOneLine;
  for (size_t i = 0; i < trimmed.size(); ++i) {
    const bool isLineEnd = trimmed.substr(i, kLineEnd.size()) == kLineEnd;
    inOneLine += isLineEnd || trimmed[i] == L'\t' ? L' ' : trimmed[i];
    if (isLineEnd) ++i;
  }
  // A separator at an end has become a blank there.
  text += TrimBlanks(inOneLine);
}

void AppendDate(std::wstring& text, DateSerial date, const DateWriter& writeDate) {
  writeDate(text, IsDateSerial(date) ? date : 0);
}

void AppendTask(std::wstring& text, const TaskRecord& task, const DateWriter& writeDate) {
  AppendInteger(text, task.IntervalUnit);
  text += L'|';
  AppendInteger(text, task.Interval);
  text += task.Enabled ? L"|1|" : L"|0|";
  AppendInteger(text, task.MediaType);
  text += L'\t';
  AppendFieldText(text, task.Name);
  text += L'\t';
  AppendFieldText(text, task.Source);
  text += L'\t';
  AppendDate(text, task.LastRun, writeDate);
  text += L'\t';
  AppendDate(text, task.NextRun, writeDate);
  text += kLineEnd;
}

// Enough for nearly every list, so that the text seldom has to be moved while it grows.
size_t LikelySize(std::span<const TaskRecord> tasks) {
  constexpr size_t kLikelyUnits = 60;  // the numbers, the dates and the separators of a line
  size_t units = 1;
  for (const TaskRecord& task : tasks) {
    units += task.Name.size() + task.Source.size() + kLikelyUnits;
  }
  return units * 2;
}

}  // namespace

std::optional<DecodedText> DecodeTaskListBytes(std::string_view bytes,
                                               const AnsiDecoder& decodeAnsi) {
  if (!bytes.starts_with(kMark)) return decodeAnsi(bytes);
  bytes.remove_prefix(kMark.size());
  if (bytes.size() % 2 != 0) return std::nullopt;
  return DecodedText{DecodeUtf16(bytes)};
}

TaskListReading ReadTaskListText(std::wstring_view text, const DateReader& dates, DateSerial now) {
  TaskListReading reading;
  while (!text.empty()) {
    const std::wstring_view line = TakeLine(text);
    if (line.empty()) {
      // Deliberate: an empty line ends the list.
      reading.hasLoss |= !IsAllLineEnds(text);
      break;
    }
    reading.hasLoss |= !ReadTask(line, dates, now, reading);
  }
  return reading;
}

std::wstring FieldText(std::wstring_view field) {
  std::wstring text;
  AppendFieldText(text, field);
  return text;
}

std::string TaskListBytes(std::span<const TaskRecord> tasks, const DateWriter& writeDate) {
  std::string bytes;
  bytes.reserve(LikelySize(tasks));
  bytes += kMark;
  // One line at a time: wide text of the whole list would double the memory.
  std::wstring line;
  for (const TaskRecord& task : tasks) {
    if (task.Deleted) continue;
    line.clear();
    AppendTask(line, task, writeDate);
    AppendUtf16(bytes, line);
  }
  return bytes;
}

}  // namespace tellurvane
