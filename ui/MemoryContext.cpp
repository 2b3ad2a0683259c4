#include "ui/MemoryContext.h"

namespace tellurvane {

std::optional<MemoryContext> MemoryContext::Create(int width, int height) {
  const WindowDc screen(nullptr);
  MemoryContext made;
  made.context_.Reset(CreateCompatibleDC(screen.Get()));
  made.bitmap_.Reset(CreateCompatibleBitmap(screen.Get(), width, height));
  if (!made.context_ || !made.bitmap_) return std::nullopt;
  SelectObject(made.Dc(), made.Bitmap());
  return made;
}

}  // namespace tellurvane
