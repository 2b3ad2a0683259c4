#include "ui/AnsiText.h"

#include <windows.h>

namespace tellurvane {

std::string AnsiText(std::wstring_view text) {
  const int units = static_cast<int>(text.size());
  const int size = WideCharToMultiByte(CP_ACP, 0, text.data(), units, nullptr, 0, nullptr, nullptr);
  // With a size of 0 the second call would return a length without writing.
  if (size <= 0) return {};
  std::string ansi(static_cast<size_t>(size), '\0');
  const int written =
      WideCharToMultiByte(CP_ACP, 0, text.data(), units, ansi.data(), size, nullptr, nullptr);
  ansi.resize(static_cast<size_t>(written));
  return ansi;
}

}  // namespace tellurvane
