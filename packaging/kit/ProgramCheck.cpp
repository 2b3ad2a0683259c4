#include "packaging/kit/ProgramCheck.h"

#include <string_view>

namespace tellurvane {
namespace {

constexpr size_t kMostEarlyEnds = 5;

// The last words of a program often name the reason.
std::string LastLines(std::string_view output) {
  constexpr int kLines = 12;
  while (output.ends_with('\n') || output.ends_with('\r')) output.remove_suffix(1);
  size_t begin = output.size();
  for (int line = 0; line < kLines && begin != 0; ++line) {
    const size_t lineEnd = output.rfind('\n', begin - 1);
    begin = lineEnd == std::string_view::npos ? 0 : lineEnd;
  }
  return std::string(output.substr(begin));
}

std::string Reason(const ProgramRun& run, const std::string& unfinished) {
  if (!run.fault.empty()) return run.fault;
  return unfinished.empty() ? "沒有結果檔" : "提早結束";
}

}  // namespace

ProgramOutcome CheckProgram(const std::string& name, const RunProgram& run) {
  ProgramOutcome outcome;
  outcome.name = name;
  std::string filter = "*";
  while (outcome.endedEarly.size() < kMostEarlyEnds) {
    const ProgramRun made = run(filter);
    outcome.seconds += made.seconds;
    const std::optional<TestResults> results = ReadTestXml(made.xml);
    outcome.results = results ? *results : PrintedResults(made.output);
    if (results && made.fault.empty()) {
      // A program without tests shows nothing.
      if (results->passed == 0 && results->skipped.empty() && outcome.IsGood()) {
        outcome.endedEarly.push_back({"", "沒有執行任何測試"});
      }
      break;
    }
    const std::string test = results ? "" : UnfinishedTest(made.output);
    outcome.endedEarly.push_back({test, Reason(made, test) + "\n" + LastLines(made.output)});
    if (test.empty()) break;
    filter += (filter == "*" ? "-" : ":") + test;
  }
  return outcome;
}

}  // namespace tellurvane
