#include "packaging/kit/Report.h"

#include <algorithm>
#include <cmath>
#include <string_view>

namespace tellurvane {
namespace {

struct Counts {
  int passed = 0;
  size_t failed = 0;
  size_t skipped = 0;
  size_t endedEarly = 0;
};

Counts CountsOf(const ProgramOutcome& outcome) {
  return {outcome.results.passed, outcome.results.failed.size(), outcome.results.skipped.size(),
          outcome.endedEarly.size()};
}

std::string CountsText(const Counts& counts) {
  return "通過 " + std::to_string(counts.passed) + "，失敗 " + std::to_string(counts.failed) +
         "，提早結束 " + std::to_string(counts.endedEarly) + "，略過 " +
         std::to_string(counts.skipped);
}

// With each line set in, also after a CR LF.
std::string Indented(std::string_view text) {
  std::string lines;
  while (!text.empty()) {
    const size_t end = std::min(text.find('\n'), text.size());
    std::string_view line = text.substr(0, end);
    if (line.ends_with('\r')) line.remove_suffix(1);
    if (!line.empty()) lines.append("    ").append(line).append("\n");
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return lines;
}

void AppendNotes(std::string& text, const char* heading,
                 const std::vector<ProgramOutcome>& outcomes,
                 const std::vector<TestNote>& (*notesOf)(const ProgramOutcome&)) {
  std::string notes;
  for (const ProgramOutcome& outcome : outcomes) {
    for (const TestNote& note : notesOf(outcome)) {
      notes +=
          outcome.name + (note.test.empty() ? "" : " " + note.test) + "\n" + Indented(note.text);
    }
  }
  if (!notes.empty()) text += std::string("\n") + heading + "\n\n" + notes;
}

std::string WithCrLf(const std::string& text) {
  std::string lines;
  for (const char character : text) {
    if (character == '\n') lines += '\r';
    lines += character;
  }
  return lines;
}

}  // namespace

bool IsGood(const std::vector<ProgramOutcome>& outcomes) {
  return !outcomes.empty() && std::ranges::all_of(outcomes, &ProgramOutcome::IsGood);
}

std::string Summary(const std::vector<ProgramOutcome>& outcomes) {
  if (outcomes.empty()) return "沒有測試程式";
  Counts all;
  for (const ProgramOutcome& outcome : outcomes) {
    const Counts counts = CountsOf(outcome);
    all.passed += counts.passed;
    all.failed += counts.failed;
    all.skipped += counts.skipped;
    all.endedEarly += counts.endedEarly;
  }
  return (IsGood(outcomes) ? "沒有失敗：" : "有失敗：") + CountsText(all);
}

std::string ReportText(const std::string& version, const MachineFacts& facts,
                       const std::vector<ProgramOutcome>& outcomes) {
  std::string text = "Tellurvane " + version + " 測試報告\n\n" + Summary(outcomes) + "\n\n電腦\n\n";
  for (const std::string& fact : facts) text += fact + "\n";
  text += "\n測試程式\n\n";
  for (const ProgramOutcome& outcome : outcomes) {
    text += outcome.name + "：" + CountsText(CountsOf(outcome)) + "（" +
            std::to_string(std::lround(outcome.seconds)) + " 秒）\n";
  }
  AppendNotes(
      text, "提早結束（當機或逾時）", outcomes,
      [](const ProgramOutcome& outcome) -> auto& { return outcome.endedEarly; });
  AppendNotes(
      text, "失敗", outcomes,
      [](const ProgramOutcome& outcome) -> auto& { return outcome.results.failed; });
  AppendNotes(
      text, "略過", outcomes,
      [](const ProgramOutcome& outcome) -> auto& { return outcome.results.skipped; });
  return "\xEF\xBB\xBF" + WithCrLf(text);
}

}  // namespace tellurvane
