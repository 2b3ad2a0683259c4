// The subclassing engine: a control sees the messages of the windows that it manages.
#pragma once

#include <windows.h>

#include <map>
#include <stdexcept>

#include "ui/GXISubclass.h"

namespace tellurvane {

class SubclassError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// When a message is shown: bits.
inline constexpr int kBeforePrevious = 1;
inline constexpr int kAfterPrevious = 2;

// In place of a message number: every message.
inline constexpr UINT kAllMessages = static_cast<UINT>(-1);

struct SubclassBlock;

// One engine belongs to one control and may attach to many windows, each once. Several engines may
// attach to one window, and may detach in any order, from inside a handler too, and after the
// window has died. All on the thread of the windows.
//
// No code is made at run time: one procedure serves all windows and finds a window's blocks by its
// handle.
class GXMSubclass {
 public:
  GXMSubclass() = default;
  GXMSubclass(const GXMSubclass&) = delete;
  GXMSubclass& operator=(const GXMSubclass&) = delete;
  ~GXMSubclass();

  // The window's user value: 0, and nothing set, where the window is not subclassed.
  LONG_PTR p_ParamUser(HWND window) const;
  void p_ParamUser(HWND window, LONG_PTR value);

  // Starts with both message tables empty. Throws SubclassError where the window does not exist,
  // belongs to another process, or is subclassed by this engine already.
  bool Subclass(HWND window, GXISubclass& owner, LONG_PTR userParam);

  // Both throw SubclassError where the window is not subclassed. A table holds 32 messages; the
  // slot of a deleted one is used again. 0 marks a free slot: WM_NULL is shown only with all
  // messages.
  void AddMessage(HWND window, UINT message, int when);
  void DeleteMessage(HWND window, UINT message, int when);

  // 0 where the window is not subclassed.
  LRESULT CallOldWndProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

  // The owner gets no more calls. The next message restores the previous procedure, once no message
  // is inside it.
  void UnSubclass(HWND window);
  void Terminate();

 private:
  friend struct SubclassChain;

  SubclassBlock* Find(HWND window) const;
  SubclassBlock& Require(HWND window) const;

  std::map<HWND, SubclassBlock*> registry_;
  bool isStarted_ = false;
};

// How many blocks exist: for tests that look for leaks.
size_t LiveSubclassBlocks();

}  // namespace tellurvane
