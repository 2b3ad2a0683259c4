// Pages of the radio directories' formats, as long as one likes.
#pragma once

#include <string>
#include <string_view>

namespace tellurvane {

// As a directory sends them; all `size` characters long. SHOUTcast's has the 200 stations that are
// taken, and those are as long as it needs.
std::wstring ShoutcastPage(size_t size);
std::wstring IcecastPage(size_t size);
std::wstring LiveDoorPage(size_t size);
std::wstring HinetPage(size_t size);

// The same piece over and over.
std::wstring Flood(std::wstring_view piece, size_t size);

}  // namespace tellurvane
