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

}  // namespace tellurvane
