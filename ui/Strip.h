// Strips: small pictures of one size side by side in a bitmap resource, one resource for each size.
#pragma once

#include "ui/Handle.h"

namespace tellurvane {

struct Strip {
  UniqueBitmap bitmap;  // none where the system fails to load it
  int size = 0;         // the width of a picture in pixels
};

// The largest strip whose pictures are not wider than `wanted`, or else the smallest. The smallest
// is the resource `id`, of `designSize` pixels; each of the others is 100 * id + its size.
Strip LoadStrip(int id, int designSize, int wanted);

}  // namespace tellurvane
