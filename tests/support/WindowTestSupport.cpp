#include "tests/support/WindowTestSupport.h"

#include <winternl.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <ostream>
#include <vector>

#include "tests/support/KernelHandles.h"
#include "ui/MessageLoop.h"

namespace tellurvane {
namespace {

// Under Wine the documented counters always return 0. The process environment block (PEB) has a
// pointer to the table of GDI objects at this offset.
constexpr size_t kGdiTableInPeb = 0xF8;
constexpr size_t kGdiEntries = 65'536;
constexpr size_t kGdiEntrySize = 24;
constexpr size_t kGdiOwnerAt = 8;
constexpr size_t kGdiTypeAt = 14;

long CountGdiObjects() {
  const DWORD documented = GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS);
  if (documented != 0) return static_cast<long>(documented);
  PROCESS_BASIC_INFORMATION process = {};
  NtQueryInformationProcess(GetCurrentProcess(), ProcessBasicInformation, &process, sizeof(process),
                            nullptr);
  const auto* const peb = reinterpret_cast<const char*>(process.PebBaseAddress);
  const char* table = nullptr;
  std::memcpy(&table, peb + kGdiTableInPeb, sizeof(table));
  const auto self = static_cast<USHORT>(GetCurrentProcessId());
  long count = 0;
  for (size_t i = 0; table != nullptr && i < kGdiEntries; ++i) {
    const char* const entry = table + i * kGdiEntrySize;
    USHORT owner = 0;
    std::memcpy(&owner, entry + kGdiOwnerAt, sizeof(owner));
    // Wine leaves the owner of its own table's entries empty.
    if (entry[kGdiTypeAt] != 0 && (owner == 0 || (owner & ~1U) == (self & ~1U))) ++count;
  }
  return count;
}

long CountWindows() {
  long count = 0;
  const auto countTree = [](HWND window, LPARAM counter) -> BOOL {
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    if (process != GetCurrentProcessId()) return TRUE;
    const auto countOne = [](HWND, LPARAM inner) -> BOOL {
      ++*reinterpret_cast<long*>(inner);
      return TRUE;
    };
    countOne(window, counter);
    EnumChildWindows(window, countOne, counter);
    return TRUE;
  };
  EnumWindows(countTree, reinterpret_cast<LPARAM>(&count));
  EnumChildWindows(HWND_MESSAGE, countTree, reinterpret_cast<LPARAM>(&count));
  return count;
}

// The smaller of two growths, or of two losses, else 0. A loss is an error too: the code closed
// something that it does not own.
long InBoth(long first, long second) {
  if (first > 0 && second > 0) return std::min(first, second);
  if (first < 0 && second < 0) return std::max(first, second);
  return 0;
}

int UsesToMake() {
  constexpr int kUsual = 60;
  const char* const asked = std::getenv("TELLURVANE_LEAK_USES");
  return asked == nullptr ? kUsual : std::max(std::atoi(asked), kUsual);
}

}  // namespace

bool PumpUntil(const std::function<bool()>& condition, std::chrono::milliseconds limit) {
  const auto end = std::chrono::steady_clock::now() + limit;
  for (;;) {
    ProcessPendingMessages();
    if (condition()) return true;
    if (std::chrono::steady_clock::now() >= end) return false;
    MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT);
  }
}

void Pump() { ProcessPendingMessages(); }

TestForm::TestForm(int width, int height) {
  FormArgs args;
  args.caption = L"test";
  args.border = FormBorder::kNone;
  Load(args);
  ResizeInside(width, height);
  Show();
  Pump();
}

Color PixelOf(HDC context, int x, int y) { return GetPixel(context, x, y); }

std::vector<Color> PixelsIn(HDC context, const RECT& area) {
  std::vector<Color> pixels;
  for (LONG y = area.top; y < area.bottom; ++y) {
    for (LONG x = area.left; x < area.right; ++x) pixels.push_back(PixelOf(context, x, y));
  }
  return pixels;
}

void SendMouse(HWND window, UINT message, int x, int y, WPARAM keys) {
  SendMessageW(window, message, keys, MAKELPARAM(x, y));
}

std::wstring WindowText(HWND window) {
  std::wstring text(static_cast<size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
  text.resize(
      static_cast<size_t>(GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
  return text;
}

ResourceCounts CountResources() {
  return {CountGdiObjects(), CountWindows(), static_cast<long>(KernelHandleCount())};
}

std::ostream& operator<<(std::ostream& out, const ResourceCounts& counts) {
  return out << counts.gdiObjects << " GDI objects, " << counts.windows << " windows, "
             << counts.kernelHandles << " kernel handles";
}

ResourceCounts LeakedBy(const std::function<void()>& useOnce) {
  constexpr int kWarmUp = 5;
  constexpr int kRounds = 3;
  const auto grownBy = [&](int uses) -> ResourceCounts {
    const ResourceCounts before = CountResources();
    for (int i = 0; i < uses; ++i) {
      useOnce();
      Pump();
    }
    const ResourceCounts after = CountResources();
    return {after.gdiObjects - before.gdiObjects, after.windows - before.windows,
            after.kernelHandles - before.kernelHandles};
  };
  grownBy(kWarmUp);
  // The system creates or frees some objects once, at any time. That shows in one round only. A
  // leak of each use shows in every round.
  const int uses = UsesToMake() / kRounds;
  ResourceCounts leaked = grownBy(uses);
  for (int round = 1; round < kRounds; ++round) {
    const ResourceCounts grown = grownBy(uses);
    leaked.gdiObjects = InBoth(leaked.gdiObjects, grown.gdiObjects);
    leaked.windows = InBoth(leaked.windows, grown.windows);
    leaked.kernelHandles = InBoth(leaked.kernelHandles, grown.kernelHandles);
  }
  return leaked;
}

}  // namespace tellurvane
