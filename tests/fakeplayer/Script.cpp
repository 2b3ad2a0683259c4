#include "tests/fakeplayer/Script.h"

#include <cstdlib>
#include <sstream>

namespace fakeplayer {
namespace {

constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
constexpr const char* kNothing = "null";

std::wstring Folder() {
  std::wstring folder(MAX_PATH, L'\0');
  folder.resize(GetEnvironmentVariableW(L"TELLURVANE_PLAYER", folder.data(), MAX_PATH));
  return folder;
}

}  // namespace

Script::Script()
    : path_(Folder() + L"\\player.script"),
      calls_(CreateFileW((Folder() + L"\\player.calls").c_str(), FILE_APPEND_DATA, kShareAll,
                         nullptr, OPEN_ALWAYS, 0, nullptr)) {
  Read();
}

Script::~Script() { CloseHandle(calls_); }

void Script::Write(const std::string& line) {
  const std::string text = line + "\n";
  DWORD written = 0;
  WriteFile(calls_, text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
}

void Script::Read() {
  HANDLE const file =
      CreateFileW(path_.c_str(), GENERIC_READ, kShareAll, nullptr, OPEN_EXISTING, 0, nullptr);
  if (file == INVALID_HANDLE_VALUE) return;
  std::string text(4'096, '\0');
  DWORD length = 0;
  ReadFile(file, text.data(), static_cast<DWORD>(text.size()), &length, nullptr);
  CloseHandle(file);
  text.resize(length);

  values_.clear();
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);) {
    const size_t equals = line.find('=');
    if (equals != std::string::npos) values_[line.substr(0, equals)] = line.substr(equals + 1);
  }
}

std::string Script::Value(const std::string& key) const {
  const auto found = values_.find(key);
  return found == values_.end() ? "" : found->second;
}

std::wstring Script::Text(const std::string& key) const {
  const std::string value = Value(key);
  const int size = static_cast<int>(value.size());
  std::wstring text(value.size(), L'\0');
  text.resize(static_cast<size_t>(MultiByteToWideChar(CP_UTF8, 0, value.data(), size, text.data(),
                                                      static_cast<int>(text.size()))));
  return text;
}

double Script::Number(const std::string& key) const {
  return std::strtod(Value(key).c_str(), nullptr);
}

bool Script::GivesNothing(const std::string& member) const {
  return Value("fail." + member) == kNothing;
}

HRESULT Script::Result(const std::string& member) const {
  const std::string value = Value("fail." + member);
  if (value == kNothing) return S_OK;
  return static_cast<HRESULT>(std::strtoul(value.c_str(), nullptr, 16));
}

}  // namespace fakeplayer
