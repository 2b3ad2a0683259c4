// Lists the windows of every process whose program lies in a folder, one JSON object a line:
//   ListWindows FOLDER
// Top-level windows first to last from the front, each with all its child windows.
#include <windows.h>

#include <cstdio>
#include <string>
#include <vector>

#include "tests/program/Json.h"

namespace {

// Asked by message: for a control of another process the plain call would give nothing.
std::wstring TextOf(HWND window) {
  DWORD_PTR length = 0;
  SendMessageTimeoutW(window, WM_GETTEXTLENGTH, 0, 0, SMTO_ABORTIFHUNG, 2'000, &length);
  std::wstring text(length + 1, L'\0');
  SendMessageTimeoutW(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()),
                      SMTO_ABORTIFHUNG, 2'000, &length);
  text.resize(length);
  return text;
}

std::wstring ClassOf(HWND window) {
  wchar_t name[256] = {};
  GetClassNameW(window, name, static_cast<int>(std::size(name)));
  return name;
}

BOOL CALLBACK Collect(HWND window, LPARAM windows) {
  reinterpret_cast<std::vector<HWND>*>(windows)->push_back(window);
  return TRUE;
}

std::string Members(HWND window) {
  RECT rect = {};
  GetWindowRect(window, &rect);
  RECT inside = {};
  GetClientRect(window, &inside);
  char numbers[300] = {};
  std::snprintf(numbers, sizeof(numbers),
                "\"handle\": %llu, \"parent\": %llu, \"visible\": %s, \"enabled\": %s, "
                "\"rect\": [%ld, %ld, %ld, %ld], \"inside\": [%ld, %ld]",
                reinterpret_cast<unsigned long long>(window),
                reinterpret_cast<unsigned long long>(GetAncestor(window, GA_PARENT)),
                IsWindowVisible(window) ? "true" : "false",
                IsWindowEnabled(window) ? "true" : "false", rect.left, rect.top, rect.right,
                rect.bottom, inside.right, inside.bottom);
  return std::string(numbers) + ", \"class\": " + Json(ClassOf(window)) +
         ", \"text\": " + Json(TextOf(window));
}

std::wstring ProgramOf(HWND window) {
  DWORD id = 0;
  GetWindowThreadProcessId(window, &id);
  const HANDLE process = OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, id);
  if (process == nullptr) return L"";
  wchar_t path[1'024] = {};
  auto size = static_cast<DWORD>(std::size(path));
  QueryFullProcessImageNameW(process, 0, path, &size);
  CloseHandle(process);
  return path;
}

bool LiesIn(const std::wstring& path, const std::wstring& folder) {
  const auto length = static_cast<int>(folder.size());
  return path.size() > folder.size() &&
         CompareStringOrdinal(path.data(), length, folder.data(), length, TRUE) == CSTR_EQUAL;
}

}  // namespace

int wmain(int argumentCount, wchar_t** arguments) {
  if (argumentCount != 2) return 2;
  const std::wstring folder = arguments[1];
  std::vector<HWND> windows;
  EnumWindows(Collect, reinterpret_cast<LPARAM>(&windows));
  for (const HWND window : windows) {
    if (!LiesIn(ProgramOf(window), folder)) continue;
    std::vector<HWND> children;
    EnumChildWindows(window, Collect, reinterpret_cast<LPARAM>(&children));
    std::string line = "{" + Members(window) + ", \"children\": [";
    for (const HWND child : children) {
      line += (child == children.front() ? "{" : ", {") + Members(child) + "}";
    }
    std::puts((line + "]}").c_str());
  }
  return 0;
}
