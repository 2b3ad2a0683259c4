#include "tests/support/PlatformCalls.h"

namespace tellurvane {
namespace {

constexpr std::uint64_t kZero = 0;
constexpr std::uint64_t kMinusOne = static_cast<std::uint64_t>(-1);  // INVALID_HANDLE_VALUE too
constexpr std::uint64_t kOutOfMemory = static_cast<DWORD>(E_OUTOFMEMORY);

constexpr FailingCall kCalls[] = {
    {{"CreateFileW", kMinusOne, ERROR_ACCESS_DENIED}},
    {{"GetFileSizeEx", kZero, ERROR_INVALID_HANDLE}},
    {{"ReadFile", kZero, ERROR_CRC}},
    {{"WriteFile", kZero, ERROR_DISK_FULL}},
    {{"FlushFileBuffers", kZero, ERROR_DISK_FULL}},
    {{"MoveFileExW", kZero, ERROR_ACCESS_DENIED}},
    {{"CopyFileW", kZero, ERROR_ACCESS_DENIED}},
    {{"GetFileAttributesW", INVALID_FILE_ATTRIBUTES, ERROR_ACCESS_DENIED}},
    {{"GetPrivateProfileStringW", kZero, ERROR_FILE_NOT_FOUND}, Severity::kFatal},
    {{"WritePrivateProfileStringW", kZero, ERROR_ACCESS_DENIED}},
    {{"RegOpenKeyExW", ERROR_ACCESS_DENIED}},
    {{"RegSetValueExA", ERROR_ACCESS_DENIED}},
    {{"RegDeleteValueA", ERROR_ACCESS_DENIED}},
    {{"RegDeleteKeyValueW", ERROR_ACCESS_DENIED}},
    {{"CreateWindowExW"}, Severity::kFatal},
    {{"Shell_NotifyIconW"}},
    {{"OpenClipboard", kZero, ERROR_ACCESS_DENIED}},
    {{"CLSIDFromProgID", static_cast<DWORD>(REGDB_E_CLASSNOTREG)}},
    {{"CoCreateInstance", kOutOfMemory}},
    {{"CreateMutexW", kZero, ERROR_ACCESS_DENIED}},
};

}  // namespace

std::span<const FailingCall> AllFailingCalls() { return kCalls; }

}  // namespace tellurvane
