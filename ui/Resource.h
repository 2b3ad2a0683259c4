// Data that is part of the executable.
#pragma once

#include <windows.h>

#include <string>
#include <string_view>

namespace tellurvane {

// The bytes of a resource of one of our own types, such as L"CUSTOM"; they live as long as the
// process. Throws FatalError where there is none: the resources are part of the executable.
std::string_view ResourceBytes(int id, const wchar_t* type);

// An icon group with its images, as the bytes of an icon file. Throws like ResourceBytes.
std::string IconGroupBytes(const wchar_t* name);

}  // namespace tellurvane
