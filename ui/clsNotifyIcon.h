// An icon in the taskbar's notification area.
#pragma once

#include <windows.h>

#include <shellapi.h>

#include <functional>
#include <string>

#include "ui/Form.h"
#include "ui/GXISubclass.h"
#include "ui/GXMSubclass.h"
#include "ui/PictureBox.h"

namespace tellurvane {

// The icon is in the tray between IconAdd and IconDelete, also after the taskbar restarts. It
// leaves with its form and with this object.
class clsNotifyIcon : private GXISubclass {
 public:
  clsNotifyIcon() = default;
  clsNotifyIcon(const clsNotifyIcon&) = delete;
  clsNotifyIcon& operator=(const clsNotifyIcon&) = delete;
  ~clsNotifyIcon();

  // Takes all icons of the process out of the tray after a fatal error: an icon without a window
  // would stay until the mouse is moved over it.
  static void DeleteAll() noexcept;

  // A mouse button went down on the icon.
  std::function<void()> LButtonDown;
  std::function<void()> RButtonDown;

  // Once, with a form that is loaded and has its icon. Adds a hidden box named "NotifyIcon" to the
  // form; the taskbar's messages go there.
  void IconInit(Form& form);

  // Of a longer text the first 127 UTF-16 units are shown. An empty one leaves the tip as it was.
  // False when the taskbar did not take it. Without an icon in the tray the next IconAdd shows it.
  bool IconTip(const std::wstring& text);

  // False when the taskbar did not add it, which happens while the shell is busy. The icon is then
  // missing until another IconAdd succeeds.
  bool IconAdd();
  void IconDelete();
  bool IsInTray() const { return isInTray_; }
  bool IsMissing() const { return isWanted_ && !isInTray_; }

 private:
  void WndProc(bool before, bool& handled, LRESULT& result, HWND window, UINT message,
               WPARAM wParam, LPARAM lParam, LONG_PTR& userParam) override;
  void Decode(const MouseEvent& event) const;

  PictureBox box_;
  NOTIFYICONDATAW record_ = {};
  bool isWanted_ = false;
  bool isInTray_ = false;
  GXMSubclass subclass_;
};

}  // namespace tellurvane
