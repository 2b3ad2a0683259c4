// A bitmap in memory with the device context to draw on it.
#pragma once

#include <optional>
#include <utility>

#include "ui/Handle.h"

namespace tellurvane {

// Compatible with the display. Drawing on it touches nothing else.
class MemoryContext {
 public:
  // Nothing where the system refuses the context or the bitmap; then nothing is kept.
  static std::optional<MemoryContext> Create(int width, int height);

  MemoryContext(MemoryContext&&) noexcept = default;
  // Swaps, so that what was held goes in the destructor's order: taken over member by member, the
  // old bitmap would be deleted while it is still selected into the old context.
  MemoryContext& operator=(MemoryContext&& other) noexcept {
    std::swap(bitmap_, other.bitmap_);
    std::swap(context_, other.context_);
    return *this;
  }
  MemoryContext(const MemoryContext&) = delete;
  MemoryContext& operator=(const MemoryContext&) = delete;
  ~MemoryContext() = default;

  HDC Dc() const { return context_.Get(); }
  HBITMAP Bitmap() const { return bitmap_.Get(); }

 private:
  MemoryContext() = default;

  // The bitmap goes after the context that it is selected into.
  UniqueBitmap bitmap_;
  UniqueMemoryDc context_;
};

}  // namespace tellurvane
