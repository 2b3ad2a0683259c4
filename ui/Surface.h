// A picture in memory that a window shows: drawn on at any time, copied to the screen when needed.
#pragma once

#include <optional>

#include "ui/Color.h"
#include "ui/MemoryContext.h"

namespace tellurvane {

class Surface {
 public:
  // True when the picture was made anew, and so is blank, in `back`. Sizes below 1 count as 1. A
  // back colour may be a system colour reference.
  bool Resize(int width, int height, Color back);

  // None before the first Resize, or where the system refuses the memory.
  HDC Dc() const { return picture_ ? picture_->Dc() : nullptr; }

  void Clear(Color back);
  void CopyTo(HDC target, const RECT& area) const;

 private:
  std::optional<MemoryContext> picture_;
  int width_ = 0;
  int height_ = 0;
};

}  // namespace tellurvane
