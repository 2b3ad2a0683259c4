#include "bench/BareRead.h"

#include <cstring>

namespace tellurvane {
namespace {

std::wstring Widen(const std::string& bytes) {
  std::wstring text(bytes.size() / 2, L'\0');
  if constexpr (sizeof(wchar_t) == 2) {
    std::memcpy(text.data(), bytes.data(), text.size() * 2);
  } else {
    for (size_t i = 0; i < text.size(); ++i) {
      char16_t unit = 0;
      std::memcpy(&unit, bytes.data() + 2 * i, sizeof(unit));
      text[i] = static_cast<wchar_t>(unit);
    }
  }
  return text;
}

}  // namespace

size_t BareRead(FileOperations& files, const std::wstring& path) {
  if (files.OpenForReading(path) != OpenOutcome::kOpened) return 0;
  std::string bytes(static_cast<size_t>(files.SizeOfReading().value_or(0)), '\0');
  const auto got = files.Read(bytes.data(), bytes.size());
  files.CloseReading();
  bytes.resize(got.value_or(0));
  return Widen(bytes).size();
}

}  // namespace tellurvane
