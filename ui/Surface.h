// A picture in memory: drawn on at any time, copied to the screen when needed.
#pragma once

#include <optional>

#include "ui/Color.h"
#include "ui/MemoryContext.h"

namespace tellurvane {

class Surface {
 public:
  // True when there is a new picture, blank in `back`, which may be a system colour reference.
  // Without an area there is none.
  bool Resize(int width, int height, Color back);

  // Null without an area or without memory.
  HDC Dc() const { return picture_ ? picture_->Dc() : nullptr; }

  void Clear(Color back);
  void CopyTo(HDC target, const RECT& area) const;

 private:
  std::optional<MemoryContext> picture_;
  int width_ = 0;
  int height_ = 0;
};

}  // namespace tellurvane
