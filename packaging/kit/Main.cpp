// check [--limit SECONDS] [PROGRAM...]: runs the test programs of the kit, or only those that are
// named, and writes report.txt beside itself. Ends with 0 if nothing failed.
#include <windows.h>

#include <algorithm>
#include <cwchar>
#include <exception>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "Version.h"
#include "base/CodePage.h"
#include "packaging/kit/Desktop.h"
#include "packaging/kit/MachineReport.h"
#include "packaging/kit/ProgramCheck.h"
#include "packaging/kit/Report.h"
#include "packaging/kit/TestProcess.h"
#include "ui/Com.h"

namespace tellurvane {
namespace {

namespace fs = std::filesystem;

struct Options {
  std::chrono::seconds limit{120};  // of silence: a test that saves for long prints nothing
  std::vector<std::wstring> programs;
};

Options ReadOptions(int argumentCount, wchar_t** arguments) {
  Options options;
  for (int i = 1; i < argumentCount; ++i) {
    if (arguments[i] == std::wstring_view(L"--limit") && i + 1 < argumentCount) {
      options.limit = std::chrono::seconds(std::wcstol(arguments[++i], nullptr, 10));
    } else {
      options.programs.emplace_back(arguments[i]);
    }
  }
  return options;
}

// A console shows the text whatever its code page is; a file gets UTF-8.
void Print(const std::string& line) {
  const std::string bytes = line + "\r\n";
  const HANDLE output = GetStdHandle(STD_OUTPUT_HANDLE);
  DWORD written = 0;
  if (DWORD mode = 0; GetConsoleMode(output, &mode)) {
    const std::wstring text = FromCodePage(CP_UTF8, bytes).value_or(L"");
    WriteConsoleW(output, text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
  } else {
    WriteFile(output, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
  }
}

fs::path OwnFolder() {
  std::wstring path(32'768, L'\0');
  path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
  return fs::path(path).parent_path();
}

std::vector<std::wstring> ProgramsIn(const fs::path& folder) {
  std::vector<std::wstring> names;
  std::error_code ignored;
  for (const auto& entry : fs::directory_iterator(folder, ignored)) {
    const std::wstring name = entry.path().filename().wstring();
    if (name.ends_with(L"_tests.exe")) names.push_back(entry.path().stem().wstring());
  }
  std::ranges::sort(names);
  return names;
}

int Check(const Options& options) {
  // A program that crashes ends at once, without a box.
  SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX);
  const ComApartment com;
  const MachineFacts facts = FactsOfThisMachine();
  const fs::path kit = OwnFolder();
  const fs::path scratch =
      fs::temp_directory_path() / (L"Tellurvane-check-" + std::to_wstring(GetCurrentProcessId()));
  Print("測試進行中，約需數分鐘。請勿使用滑鼠與鍵盤。本視窗縮到最小，完成後還原。");
  const MinimisedConsole console;
  const Desktop desktop;
  std::vector<ProgramOutcome> outcomes;
  for (const std::wstring& name :
       options.programs.empty() ? ProgramsIn(kit / L"tests") : options.programs) {
    const fs::path program = kit / L"tests" / (name + L".exe");
    outcomes.push_back(CheckProgram(Utf8(name), [&](const std::string& filter) {
      return RunTestProcess(program, filter, scratch / name, options.limit);
    }));
    desktop.RestoreColors();
    Print(Utf8(name) + "：" + Summary({outcomes.back()}));
  }
  std::error_code ignored;
  fs::remove_all(scratch, ignored);
  const fs::path report = kit / L"report.txt";
  std::ofstream file(report, std::ios::binary);
  file << ReportText(TELLURVANE_VERSION, facts, outcomes);
  file.close();
  Print(Summary(outcomes));
  Print((file ? "報告：" : "無法寫入報告：") + Utf8(report.wstring()));
  return IsGood(outcomes) && file ? 0 : 1;
}

}  // namespace
}  // namespace tellurvane

int wmain(int argumentCount, wchar_t** arguments) {
  try {
    return tellurvane::Check(tellurvane::ReadOptions(argumentCount, arguments));
  } catch (const std::exception& fault) {
    tellurvane::Print(std::string("無法完成測試：") + fault.what());
    return 2;
  }
}
