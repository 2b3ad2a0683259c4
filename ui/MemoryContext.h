// A bitmap in memory with the device context to draw on it.
#pragma once

#include <optional>
#include <utility>

#include "ui/Handle.h"

namespace tellurvane {

// Compatible with the display. Drawing on it touches nothing else.
class MemoryContext {
 public:
  // Nothing when the context or the bitmap cannot be made.
  static std::optional<MemoryContext> Create(int width, int height);

  MemoryContext(MemoryContext&&) noexcept = default;
  // Swaps, because the old bitmap must not be deleted while the old context has it selected.
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
