// Strips: small pictures of one size side by side in a bitmap resource, one resource for each size.
#pragma once

#include "ui/Color.h"
#include "ui/Handle.h"

namespace tellurvane {

struct Strip {
  UniqueBitmap bitmap;  // none where the system fails to load it
  int size = 0;         // the width of a picture in pixels
};

// The largest strip whose pictures are not wider than `wanted`, or else the smallest. The smallest
// is the resource `id`, of `designSize` pixels; each of the others is 100 * id + its size.
Strip LoadStrip(int id, int designSize, int wanted);

// Draws a pale line around the pictures, whose ground has the mask colour, for use on a dark
// ground.
void OutlinePictures(HBITMAP strip, Color mask);

}  // namespace tellurvane
