// Strips: small pictures of one size side by side in a bitmap resource, one resource for each size.
#pragma once

#include "ui/Handle.h"

namespace tellurvane {

// The strip whose pictures are `size` pixels wide: the resource `id` for the size of 96 dpi, and
// 100 * id + size for the others. None where the system refuses it.
UniqueBitmap LoadStrip(int id, int designSize, int size);

}  // namespace tellurvane
