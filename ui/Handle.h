// Ownership of the platform's handles.
#pragma once

#include <windows.h>

#include <utility>

namespace tellurvane {

// Owns one handle. Traits name its type, the value that means none, and how it is given back.
template <typename Traits>
class UniqueHandle {
 public:
  using Type = typename Traits::Type;

  UniqueHandle() = default;
  explicit UniqueHandle(Type handle) : handle_(handle) {}
  UniqueHandle(UniqueHandle&& other) noexcept : handle_(other.Release()) {}
  UniqueHandle& operator=(UniqueHandle&& other) noexcept {
    if (this != &other) Reset(other.Release());
    return *this;
  }
  UniqueHandle(const UniqueHandle&) = delete;
  UniqueHandle& operator=(const UniqueHandle&) = delete;
  ~UniqueHandle() { Reset(); }

  explicit operator bool() const { return handle_ != Traits::kNone; }
  Type Get() const { return handle_; }

  // For calls that hand a handle out; what was owned before is given back first.
  Type* Receive() {
    Reset();
    return &handle_;
  }

  Type Release() { return std::exchange(handle_, Traits::kNone); }

  void Reset(Type handle = Traits::kNone) {
    const Type old = std::exchange(handle_, handle);
    if (old != Traits::kNone) Traits::Close(old);
  }

 private:
  Type handle_ = Traits::kNone;
};

struct KernelHandleTraits {
  using Type = HANDLE;
  static constexpr Type kNone = nullptr;
  static void Close(Type handle) { CloseHandle(handle); }
};

// Processes, threads, pipe ends and mutexes. Files too, once INVALID_HANDLE_VALUE is ruled out.
using UniqueKernelHandle = UniqueHandle<KernelHandleTraits>;

}  // namespace tellurvane
