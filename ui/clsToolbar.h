// A native toolbar of image buttons inside a picture box.
#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <vector>

#include "ui/GXISubclass.h"
#include "ui/GXMSubclass.h"
#include "ui/Handle.h"
#include "ui/PictureBox.h"

namespace tellurvane {

// Buttons are numbered from 1 in the order of AddButton; the number is the command identifier.
// The Tab key stops at the toolbar. Images are numbered from 0. For an unknown button setters do
// nothing, getters return false or -1.
class clsToolbar : private GXISubclass {
 public:
  clsToolbar() = default;
  clsToolbar(const clsToolbar&) = delete;
  clsToolbar& operator=(const clsToolbar&) = delete;
  ~clsToolbar();

  // A button was pressed.
  std::function<void(int id)> ButtonClick;

  // The host: named before Create, and alive as long as its window is.
  void TargetPictureBox(PictureBox& host) { host_ = &host; }

  // Once, after the host was created. Images are squares of so many pixels. Throws FatalError when
  // it fails.
  void Create(int imageSize);

  // The list that the buttons take their images from. One that is set stays the caller's.
  HIMAGELIST ImageList() const;
  void ImageList(HIMAGELIST images);

  // Adds the bitmap's images, side by side, to the list; what has the mask colour is transparent.
  // The bitmap stays the caller's, and its masked pixels may change.
  void AddBitmap(HBITMAP bitmap, Color maskColor) const;

  // The buttons keep the numbers of their images, for which others can be added then.
  void ClearImages() const;

  // Adds a button at the end and returns its number. Without a text there is no tooltip; a caption
  // is on the right of the image.
  int AddButton(int image, const std::wstring& toolTip, const std::wstring& caption = {});

  int ButtonImage(int id) const;
  void ButtonImage(int id, int image);
  bool Visible(int id) const;
  void Visible(int id, bool visible);
  bool Enabled(int id) const;
  void Enabled(int id, bool enabled);

  // For screen readers, after Create.
  void AccessibleName(const std::wstring& name);

  // True while ButtonClick is raised by a key.
  bool IsPressedByKey() const { return isPressedByKey_; }
  // On the screen.
  RECT ButtonPlace(int id) const;

  // The size in pixels that all visible buttons take together, for the host to be fitted to.
  SIZE ButtonsSize() const;

  // Null after the host destroyed the toolbar.
  HWND hwnd() const { return toolbar_; }

 private:
  // The tooltip keeps only the address of the ANSI text.
  struct ToolTip {
    std::wstring text;
    std::string ansi;
  };

  void WndProc(bool before, bool& handled, LRESULT& result, HWND window, UINT message,
               WPARAM wParam, LPARAM lParam, LONG_PTR& userParam) override;
  void SubclassHost();
  void SubclassToolbar();
  bool HandleNotify(NMHDR& notification);
  void KeepToolTips(HWND tips);
  int ButtonCount() const { return static_cast<int>(toolTips_.size()); }
  void HandleKeyboard(bool& handled, LRESULT& result, UINT message, WPARAM wParam, LPARAM lParam);
  static LRESULT DialogCode(const MSG* message);
  bool OnKeyDown(UINT key, bool isRepeated);
  int NextUsable(int from, int step) const;
  void MoveFocus(int id);
  void TakeFocus();
  void LoseFocus() const;
  void ShowFocus() const;
  void PressFocused();
  void RedrawFocus() const;
  void PaintFocus() const;
  void ShowCaptions();
  void ChangeState(int id, BYTE bit, bool isSet);
  LRESULT Send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const;

  PictureBox* host_ = nullptr;
  HWND toolbar_ = nullptr;
  UniqueImageList images_;
  std::vector<ToolTip> toolTips_;  // the first one is button 1's
  int focused_ = 1;                // the button that a key presses
  bool isPressedByKey_ = false;
  GXMSubclass subclass_;
};

}  // namespace tellurvane
