// A folder of its own for each test, and plain access to the bytes of the files in it.
#pragma once

#include <windows.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

namespace tellurvane {

class TemporaryFolder {
 public:
  TemporaryFolder() {
    static int made = 0;
    path_ =
        std::filesystem::temp_directory_path() /
        (L"tellurvane-" + std::to_wstring(GetCurrentProcessId()) + L"-" + std::to_wstring(++made));
    std::filesystem::create_directories(path_);
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;
  ~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }

  std::wstring Path() const { return path_.wstring(); }
  std::wstring File(std::wstring_view name) const { return (path_ / name).wstring(); }

  // How many entries the folder holds: shows that no file is left.
  size_t Count() const {
    return static_cast<size_t>(std::distance(std::filesystem::directory_iterator(path_), {}));
  }

 private:
  std::filesystem::path path_;
};

inline void WriteBytes(const std::wstring& path, std::string_view bytes) {
  std::ofstream file(std::filesystem::path(path), std::ios::binary);
  file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  ASSERT_TRUE(file.good());
}

// Empty when the file is not there.
inline std::string ReadBytes(const std::wstring& path) {
  std::ifstream file(std::filesystem::path(path), std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

// Asks again and again until it holds or the time is up.
template <typename Condition>
bool BecomesTrue(Condition condition, DWORD milliseconds = 20'000) {
  const ULONGLONG deadline = GetTickCount64() + milliseconds;
  while (!condition()) {
    if (GetTickCount64() > deadline) return false;
    Sleep(5);
  }
  return true;
}

}  // namespace tellurvane
