#include "tests/support/PlatformCalls.h"

#include <vector>

namespace tellurvane {
namespace {

constexpr std::uint64_t kNothing = 0;
constexpr std::uint64_t kMinusOne = static_cast<std::uint64_t>(-1);  // INVALID_HANDLE_VALUE too
constexpr std::uint64_t kGdiError = GDI_ERROR;
constexpr std::uint64_t kNoColor = CLR_INVALID;
constexpr std::uint64_t kOutOfMemory = static_cast<DWORD>(E_OUTOFMEMORY);
constexpr std::uint64_t kGdiPlusOutOfMemory = 3;

const std::vector<RefusedCall> kWindows = {
    {{"CreateWindowExW"}, Gravity::kFatal},
    {{"RegisterClassExW"}, Gravity::kFatal},
    {{"SetWindowLongPtrW"}, Gravity::kFatal},
    {{"SetTimer"}, Gravity::kFatal},
    {{"VirtualAlloc"}, Gravity::kFatal},
    {{"BeginPaint"}, Gravity::kGivenUp, false},
    {{"AdjustWindowRectEx"}},
    {{"ChangeWindowMessageFilterEx", kNothing, ERROR_ACCESS_DENIED}},
    {{"EnumDisplayMonitors"}},
    {{"FindWindowExW"}},
    {{"GetClassInfoExW"}},
    {{"GetClassLongPtrW"}},
    {{"GetClientRect"}},
    {{"GetComboBoxInfo"}},
    {{"GetCursorPos", kNothing, ERROR_ACCESS_DENIED}},
    {{"GetDC"}},
    {{"GetMonitorInfoW"}},
    {{"GetSystemMetrics"}},
    {{"GetWindowRect"}},
    {{"GetWindowTextLengthW"}},
    {{"GetWindowTextW"}},
    {{"InitCommonControlsEx"}},
    {{"MoveWindow"}},
    {{"PostMessageW"}},
    {{"SetClassLongPtrW"}},
    {{"SetLayeredWindowAttributes"}},
    {{"SetWindowPos"}},
    {{"SetWindowRgn"}},
    {{"SetWindowTextW"}},
    {{"SystemParametersInfoW"}},
    {{"TrackMouseEvent"}},
};

const std::vector<RefusedCall> kMenusAndPictures = {
    {{"AppendMenuW"}},
    {{"CheckMenuRadioItem", kMinusOne}},
    {{"CreatePopupMenu"}},
    {{"SetMenuDefaultItem"}},
    {{"TrackPopupMenu"}},
    {{"Shell_NotifyIconW"}},
    {{"CreateIconFromResourceEx"}},
    {{"DrawIconEx"}},
    {{"ImageList_AddMasked", kMinusOne}},
    {{"ImageList_Create"}},
    {{"LoadBitmapW", kNothing, ERROR_RESOURCE_NAME_NOT_FOUND}},
    {{"LoadCursorW", kNothing, ERROR_RESOURCE_NAME_NOT_FOUND}},
    {{"LoadIconW", kNothing, ERROR_RESOURCE_NAME_NOT_FOUND}},
    {{"LoadImageW", kNothing, ERROR_RESOURCE_NAME_NOT_FOUND}},
};

const std::vector<RefusedCall> kDrawing = {
    {{"BitBlt"}},
    {{"CreateBitmap"}},
    {{"CreateCompatibleBitmap"}},
    {{"CreateCompatibleDC"}},
    {{"CreateFontIndirectW"}},
    {{"CreatePatternBrush"}},
    {{"CreatePen"}},
    {{"CreateRectRgn"}},
    {{"CreateSolidBrush"}},
    {{"DrawTextW"}},
    {{"ExtTextOutW"}},
    {{"FillRect"}},
    {{"FrameRect"}},
    {{"GdiAlphaBlend"}},
    {{"GetGlyphOutlineW", kGdiError}},
    {{"GetObjectW"}},
    {{"GetPixel", kNoColor}},
    {{"GetStockObject"}},
    {{"GetTextColor", kNoColor}},
    {{"GetTextExtentPoint32W"}},
    {{"IntersectClipRect"}},
    {{"LineTo"}},
    {{"MoveToEx"}},
    {{"Rectangle"}},
    {{"RestoreDC"}},
    {{"RoundRect"}},
    {{"SaveDC"}},
    {{"SelectObject"}},
    {{"SetBkColor", kNoColor}},
    {{"SetBkMode"}},
    {{"SetPixel", kNoColor}},
    {{"SetPixelV"}},
    {{"SetTextAlign", kGdiError}},
    {{"SetTextColor", kNoColor}},
    {{"GdipCreateFont", kGdiPlusOutOfMemory}},
    {{"GdipCreateFontFamilyFromName", kGdiPlusOutOfMemory}},
    {{"GdipCreateFromHDC", kGdiPlusOutOfMemory}},
    {{"GdipCreateSolidFill", kGdiPlusOutOfMemory}},
    {{"GdipDrawString", kGdiPlusOutOfMemory}},
    {{"GdipMeasureString", kGdiPlusOutOfMemory}},
    {{"GdipSetCompositingQuality", kGdiPlusOutOfMemory}},
    {{"GdipSetSmoothingMode", kGdiPlusOutOfMemory}},
    {{"GdipSetTextRenderingHint", kGdiPlusOutOfMemory}},
};

const std::vector<RefusedCall> kFilesAndTexts = {
    {{"FindResourceW", kNothing, ERROR_RESOURCE_NAME_NOT_FOUND}, Gravity::kFatal},
    {{"GetModuleFileNameW"}, Gravity::kFatal},
    {{"LoadResource"}, Gravity::kFatal},
    {{"LockResource"}, Gravity::kFatal},
    {{"SizeofResource"}, Gravity::kFatal},
    {{"GetPrivateProfileStringW", kNothing, ERROR_FILE_NOT_FOUND}, Gravity::kFatal},
    {{"SysAllocStringLen"}, Gravity::kFatal},
    {{"CLSIDFromProgID", static_cast<DWORD>(REGDB_E_CLASSNOTREG)}},
    {{"CoCreateInstance", kOutOfMemory}},
    {{"CoInitializeEx", kOutOfMemory}},
    {{"CopyFileW", kNothing, ERROR_ACCESS_DENIED}},
    {{"CreateMutexW", kNothing, ERROR_ACCESS_DENIED}},
    {{"CreateFileW", kMinusOne, ERROR_ACCESS_DENIED}},
    {{"DeleteUrlCacheEntryW", kNothing, ERROR_ACCESS_DENIED}},
    {{"GetClipboardData"}},
    {{"GlobalLock"}},
    {{"OpenClipboard", kNothing, ERROR_ACCESS_DENIED}},
    {{"FlushFileBuffers", kNothing, ERROR_DISK_FULL}},
    {{"GetCalendarInfoW"}},
    {{"GetFileAttributesW", INVALID_FILE_ATTRIBUTES, ERROR_ACCESS_DENIED}},
    {{"GetFileSizeEx", kNothing, ERROR_INVALID_HANDLE}},
    {{"GetLocaleInfoW"}},
    {{"LoadLibraryExW", kNothing, ERROR_MOD_NOT_FOUND}, Gravity::kFatal},
    {{"MoveFileExW", kNothing, ERROR_ACCESS_DENIED}},
    {{"MultiByteToWideChar"}},
    {{"ReadFile", kNothing, ERROR_CRC}},
    {{"RegDeleteKeyValueW", ERROR_ACCESS_DENIED}},
    {{"RegDeleteValueA", ERROR_ACCESS_DENIED}},
    {{"RegOpenKeyExW", ERROR_ACCESS_DENIED}},
    {{"RegSetValueExA", ERROR_ACCESS_DENIED}},
    {{"VarBstrFromDate", kOutOfMemory}},
    {{"VarDateFromStr", kOutOfMemory}},
    {{"WideCharToMultiByte"}},
    {{"WriteFile", kNothing, ERROR_DISK_FULL}},
    {{"WritePrivateProfileStringW", kNothing, ERROR_ACCESS_DENIED}},
};

}  // namespace

std::span<const RefusedCall> AllFailingCalls() {
  static const std::vector<RefusedCall> all = [] {
    std::vector<RefusedCall> joined;
    for (const auto& part : {kWindows, kMenusAndPictures, kDrawing, kFilesAndTexts}) {
      joined.insert(joined.end(), part.begin(), part.end());
    }
    return joined;
  }();
  return all;
}

}  // namespace tellurvane
