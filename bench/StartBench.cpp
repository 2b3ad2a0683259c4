// Measures how long a program takes from its creation until its window is visible.
//   start_bench ROUNDS CAPTION PROGRAM [CAPTION PROGRAM]...
// Starts each program in turn, ROUNDS times, and ends it once its window is there. The caption * is
// any caption: those of the system's programs depend on its language. Prints
// "PROGRAM median minimum" lines, in nanoseconds.
#include <windows.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cwchar>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "ui/Handle.h"

namespace tellurvane {
namespace {

constexpr double kMostSeconds = 30;
// The system cleans up after the program before.
constexpr DWORD kRestMilliseconds = 100;

struct Program {
  std::wstring caption;
  std::wstring path;
  std::vector<double> nanoseconds = {};
};

// A window that is being looked for: by its process and caption, since others may be there before
// it that nobody sees, or that belong to it.
struct Wanted {
  DWORD process;
  const std::wstring& caption;
  bool isShown = false;
};

BOOL CALLBACK LookAt(HWND window, LPARAM wanted) {
  Wanted& search = *reinterpret_cast<Wanted*>(wanted);
  DWORD process = 0;
  GetWindowThreadProcessId(window, &process);
  if (process != search.process || !IsWindowVisible(window)) return TRUE;
  std::wstring caption(search.caption.size() + 2, L'\0');
  caption.resize(static_cast<size_t>(
      GetWindowTextW(window, caption.data(), static_cast<int>(caption.size()))));
  search.isShown = search.caption == L"*" ? !caption.empty() : caption == search.caption;
  return search.isShown ? FALSE : TRUE;
}

bool IsShown(const std::wstring& caption, DWORD process) {
  Wanted wanted = {.process = process, .caption = caption};
  EnumWindows(LookAt, reinterpret_cast<LPARAM>(&wanted));
  return wanted.isShown;
}

// Nothing when no window comes. The program is ended the hard way: how it ends is not measured.
std::optional<double> NanosecondsToWindow(const Program& program) {
  std::wstring command = L"\"" + program.path + L"\"";
  STARTUPINFOW startup = {};
  startup.cb = sizeof(startup);
  PROCESS_INFORMATION created = {};
  const auto start = std::chrono::steady_clock::now();
  if (!CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                      &startup, &created)) {
    return std::nullopt;
  }
  const UniqueKernelHandle process(created.hProcess);
  const UniqueKernelHandle thread(created.hThread);

  std::chrono::duration<double, std::nano> taken = {};
  bool shown = false;
  do {
    Sleep(1);
    shown = IsShown(program.caption, created.dwProcessId);
    taken = std::chrono::steady_clock::now() - start;
  } while (!shown && taken.count() < kMostSeconds * 1e9);
  TerminateProcess(process.Get(), 0);
  WaitForSingleObject(process.Get(), INFINITE);
  if (!shown) return std::nullopt;
  return taken.count();
}

int Main(int rounds, std::vector<Program> programs) {
  // The first round finds nothing in the caches and is not counted.
  for (int round = 0; round <= rounds; ++round) {
    // In alternating order, so that no program always follows the same other one.
    std::reverse(programs.begin(), programs.end());
    for (Program& program : programs) {
      Sleep(kRestMilliseconds);
      const auto taken = NanosecondsToWindow(program);
      if (!taken) {
        std::fprintf(stderr, "start_bench: no window of %ls\n", program.path.c_str());
        return 1;
      }
      if (round > 0) program.nanoseconds.push_back(*taken);
    }
  }
  for (Program& program : programs) {
    std::vector<double>& values = program.nanoseconds;
    std::sort(values.begin(), values.end());
    std::printf("%ls %.0f %.0f\n", program.path.c_str(), values[values.size() / 2], values.front());
  }
  return 0;
}

}  // namespace
}  // namespace tellurvane

int wmain(int count, wchar_t** arguments) {
  std::vector<tellurvane::Program> programs;
  for (int i = 2; i + 1 < count; i += 2) programs.push_back({arguments[i], arguments[i + 1]});
  const int rounds = count > 1 ? static_cast<int>(std::wcstol(arguments[1], nullptr, 10)) : 0;
  if (rounds < 1 || programs.empty()) {
    std::fprintf(stderr, "usage: start_bench ROUNDS CAPTION PROGRAM [CAPTION PROGRAM]...\n");
    return 2;
  }
  return tellurvane::Main(rounds, std::move(programs));
}
