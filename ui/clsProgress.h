// The slider: a picture box that shows a value as a filled bar and lets the user set it.
#pragma once

#include <windows.h>

#include <functional>
#include <limits>
#include <string>

#include "ui/GXMSubclass.h"
#include "ui/Handle.h"
#include "ui/PictureBox.h"
#include "ui/SliderModel.h"

namespace tellurvane {

// Set the host with TargetPictureBox, then Create. The host's object must outlive the slider; its
// window may end first. The slider uses all events of the host.
//
// A press takes the focus, and with it the wheel. A disabled slider reacts to neither. Make the
// host a tab stop to let the Tab key reach it.
//
// What the user does (press, drag, wheel, keys) raises PositionSet and then PositionSetByMouse.
// Handlers must not destroy the slider.
class clsProgress final : public GXISubclass {
 public:
  clsProgress() = default;
  clsProgress(const clsProgress&) = delete;
  clsProgress& operator=(const clsProgress&) = delete;
  ~clsProgress();

  void WndProc(bool before, bool& handled, LRESULT& result, HWND window, UINT message,
               WPARAM wParam, LPARAM lParam, LONG_PTR& userParam) override;

  // A slider that was created on another box leaves it.
  void TargetPictureBox(PictureBox& host);
  // Subclasses the host and paints. Throws SubclassError where there is no host window or where it
  // is done already.
  void Create();

  // Paint the host and show it: PaintMe in gold, as when enabled, PaintDef in grey. The slider
  // calls them itself when something changes.
  void PaintMe();
  void PaintDef();

  // Takes the value as the user's own: raises PositionSetByMouse alone.
  void ValHit(double value);

  double Value() const { return model_.Value(); }
  // Clamped, painted, and PositionSet raised, also when nothing changed.
  void Value(double value);

  double Max() const { return model_.Max(); }
  // At least 1. A value above it comes down with it, without an event.
  void Max(double max);

  // The host's enabled state. The host may also be enabled and disabled itself.
  bool Enabled() const;
  void Enabled(bool enabled);

  // Pixels that a text takes in the font of FontSize.
  int TextWidth(const std::wstring& text) const;
  int TextHeight(const std::wstring& text) const;

  // The caption in the bar's middle. Empty at first.
  const std::wstring& text() const { return text_; }
  void text(const std::wstring& text);
  // For PostRender: draws a text like the caption. The colour may be a system colour reference.
  void PrintText(const std::wstring& text, Color color);

  // Paints again, enabled or disabled.
  void Refresh();

  // For screen readers. Without a value text of its own the slider reports a whole percentage.
  void AccessibleName(const std::wstring& name) { accessibleName_ = name; }
  std::function<std::wstring()> ValueText;

  // The host's back colour. A system colour reference is kept as one.
  Color BackColor() const;
  void BackColor(Color color);

  // The value at the pointer's column; 0 when the pointer is left or right of the host.
  double CursorOnPos() const;

  HWND hwnd() const { return host_ == nullptr ? nullptr : host_->hwnd(); }

  // Whether the pointer is over the host.
  bool CursorInside() const { return isCursorInside_; }

  // By how much the bar is inset at its top and bottom, in pixels of 96 dpi. At first 5: the whole
  // frame shows.
  int ProgressHeightDelta() const { return heightDelta_; }
  void ProgressHeightDelta(int pixels);

  // Points; 9 at first. Smaller than 1 counts as 1.
  float FontSize() const { return fontSize_; }
  void FontSize(float points);

  // Whether a button that was pressed on the host is still held. Ends when it is released, and when
  // another window captures the mouse.
  bool MouseDriving() const;

  // Events. Any may be left empty.
  std::function<void(double value, double underPointer)> PositionSet;
  std::function<void(double value)> PositionSetByMouse;
  // The host has another size.
  std::function<void()> Resize;
  // The pointer came in (true) or left.
  std::function<void(bool isInside)> MouseInside;
  // The bar has been painted. Only for drawing over it: a repaint inside is not done.
  std::function<void(bool isEnabled)> PostRender;
  // A button was pressed on the host, the value is not set yet.
  std::function<void()> MousePress;

 private:
  void TakeHostEvents();
  void LeaveHost();
  void DescribeHost();
  bool SetByText(const std::wstring& text);

  void PaintWith(Color accent);
  void Draw(Color accent);
  Color BarColor(Color accent) const;
  SliderHost HostSize() const;
  SIZE TextExtent(const std::wstring& text) const;
  HFONT Font() const;

  void SetByUser(double value);
  void HostMouseDown(const MouseEvent& event);
  void HostMouseMove(const MouseEvent& event);
  void HostMouseUp(const MouseEvent& event);
  bool HostKeyDown(UINT key);

  void OnWheel(WPARAM wParam);
  void TrackPointer();
  void SetCursorInside(bool isInside);
  void SetFocused(bool isFocused);

  SliderModel model_;
  PictureBox* host_ = nullptr;
  std::wstring text_;
  std::wstring accessibleName_;
  float fontSize_ = 9;
  mutable UniqueFont font_;  // made at first need
  int heightDelta_ = 5;
  int buttonsHeld_ = kNoButton;
  bool isCreated_ = false;
  bool isCursorInside_ = false;
  bool isFocused_ = false;
  bool isPainting_ = false;
  // The latest position of the pointer. Not-a-number equals nothing: the first move always counts.
  float lastX_ = std::numeric_limits<float>::quiet_NaN();
  float lastY_ = std::numeric_limits<float>::quiet_NaN();
  GXMSubclass engine_;
};

}  // namespace tellurvane
