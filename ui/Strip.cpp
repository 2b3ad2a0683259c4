#include "ui/Strip.h"

namespace tellurvane {

UniqueBitmap LoadStrip(int id, int designSize, int size) {
  const int resource = size == designSize ? id : 100 * id + size;
  return UniqueBitmap(LoadBitmapW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(resource)));
}

}  // namespace tellurvane
