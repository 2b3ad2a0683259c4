// Ownership of the platform's handles. Nothing else deletes, releases or closes them.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include <utility>

namespace tellurvane {

// Owns one handle; null means none. Traits name its type and the function that closes it.
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

  explicit operator bool() const { return handle_ != nullptr; }
  Type Get() const { return handle_; }

  // For calls that hand a handle out; what was owned before is given back first.
  Type* Receive() {
    Reset();
    return &handle_;
  }

  Type Release() { return std::exchange(handle_, nullptr); }

  void Reset(Type handle = nullptr) {
    const Type old = std::exchange(handle_, handle);
    if (old != nullptr) Traits::Close(old);
  }

 private:
  Type handle_ = nullptr;
};

struct KernelHandleTraits {
  using Type = HANDLE;
  static void Close(Type handle) { CloseHandle(handle); }
};

template <typename Handle>
struct GdiObjectTraits {
  using Type = Handle;
  static void Close(Type handle) { DeleteObject(handle); }
};

struct MemoryDcTraits {
  using Type = HDC;
  static void Close(Type handle) { DeleteDC(handle); }
};

struct IconTraits {
  using Type = HICON;
  static void Close(Type handle) { DestroyIcon(handle); }
};

struct MenuTraits {
  using Type = HMENU;
  static void Close(Type handle) { DestroyMenu(handle); }
};

struct ImageListTraits {
  using Type = HIMAGELIST;
  static void Close(Type handle) { ImageList_Destroy(handle); }
};

struct KeyTraits {
  using Type = HKEY;
  static void Close(Type handle) { RegCloseKey(handle); }
};

// Processes, threads, pipe ends and mutexes; files by way of OwnedFile.
using UniqueKernelHandle = UniqueHandle<KernelHandleTraits>;
using UniqueFont = UniqueHandle<GdiObjectTraits<HFONT>>;
using UniqueBrush = UniqueHandle<GdiObjectTraits<HBRUSH>>;
using UniquePen = UniqueHandle<GdiObjectTraits<HPEN>>;
using UniqueBitmap = UniqueHandle<GdiObjectTraits<HBITMAP>>;
using UniqueMemoryDc = UniqueHandle<MemoryDcTraits>;
using UniqueRegion = UniqueHandle<GdiObjectTraits<HRGN>>;
using UniqueIcon = UniqueHandle<IconTraits>;
using UniqueKey = UniqueHandle<KeyTraits>;
using UniqueMenu = UniqueHandle<MenuTraits>;
using UniqueImageList = UniqueHandle<ImageListTraits>;

// The result of CreateFileW, which has another value than null for none.
inline UniqueKernelHandle OwnedFile(HANDLE opened) {
  return UniqueKernelHandle(opened == INVALID_HANDLE_VALUE ? nullptr : opened);
}

// An object selected into a device context, and the one before it selected back at the end.
class SelectedObject {
 public:
  SelectedObject(HDC context, HGDIOBJ object)
      : context_(context), previous_(SelectObject(context, object)) {}
  SelectedObject(const SelectedObject&) = delete;
  SelectedObject& operator=(const SelectedObject&) = delete;
  ~SelectedObject() { SelectObject(context_, previous_); }

 private:
  HDC context_;
  HGDIOBJ previous_;
};

// The device context of a window, or of the screen for none, for as long as this lives.
class WindowDc {
 public:
  explicit WindowDc(HWND window) : window_(window), context_(GetDC(window)) {}
  WindowDc(const WindowDc&) = delete;
  WindowDc& operator=(const WindowDc&) = delete;
  ~WindowDc() { ReleaseDC(window_, context_); }

  HDC Get() const { return context_; }

 private:
  HWND window_;
  HDC context_;
};

}  // namespace tellurvane
