#include "ui/Strip.h"

#include <algorithm>

namespace tellurvane {

Strip LoadStrip(int id, int designSize, int wanted) {
  const HMODULE module = GetModuleHandleW(nullptr);
  const auto name = [&](int size) {
    return MAKEINTRESOURCEW(size == designSize ? id : 100 * id + size);
  };
  int size = std::max(wanted, designSize);
  while (size > designSize && FindResourceW(module, name(size), RT_BITMAP) == nullptr) --size;
  return {UniqueBitmap(LoadBitmapW(module, name(size))), size};
}

void OutlinePictures(HBITMAP strip, Color mask) {
  constexpr Color kOutline = Rgb(0xFE, 0xFE, 0xFE);  // white is a common mask
  BITMAP extent = {};
  const UniqueMemoryDc context(CreateCompatibleDC(nullptr));
  if (!context || GetObjectW(strip, sizeof(extent), &extent) == 0) return;
  const SelectedObject selected(context.Get(), strip);
  const auto isPicture = [&](int x, int y) {
    const Color color = GetPixel(context.Get(), x, y);
    return color != CLR_INVALID && color != mask && color != kOutline;
  };
  for (int y = 0; y < extent.bmHeight; ++y) {
    for (int x = 0; x < extent.bmWidth; ++x) {
      if (isPicture(x, y)) continue;
      if (isPicture(x - 1, y) || isPicture(x + 1, y) || isPicture(x, y - 1) ||
          isPicture(x, y + 1)) {
        SetPixelV(context.Get(), x, y, kOutline);
      }
    }
  }
}

}  // namespace tellurvane
