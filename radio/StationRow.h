// One station of a directory.
#pragma once

#include <string>

namespace tellurvane {

inline constexpr const wchar_t* kUnknownBitRate = L"未知";
inline constexpr const wchar_t* kUnknownListeners = L"收聽人數：未知";

// All fields are texts as the result list holds them, in the order of its columns.
struct StationRow {
  std::wstring name = {};
  std::wstring type = {};
  std::wstring bitRate = {};
  std::wstring url = {};  // the stream, or the playlist that names it
  std::wstring listeners = {};
  std::wstring reserved = {};  // always empty

  bool operator==(const StationRow&) const = default;
};

}  // namespace tellurvane
