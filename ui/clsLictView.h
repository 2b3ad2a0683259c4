// The list: a native report-style list view whose rows belong to its owner.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include <array>
#include <functional>
#include <set>
#include <string>

#include "ui/GXMSubclass.h"
#include "ui/Handle.h"
#include "ui/PictureBox.h"

namespace tellurvane {

enum class ColumnAlignment { kLeft = LVCFMT_LEFT, kRight = LVCFMT_RIGHT, kCenter = LVCFMT_CENTER };

// Rows and columns count from 0; -1 means none. Lengths are pixels, positions are pixels from the
// list's upper left corner, header included.
//
// The list knows the number of rows and asks OnData for the cells it shows, so it costs the same
// for ten rows and for a million. At most one row is selected. Letters that the user types select
// the next row whose first cell begins with them.
//
// The list fills its host and uses the host's Resize event for that. The host's object must outlive
// the list; its window may be destroyed first. Handlers of keys, the mouse, clicks and double
// clicks may destroy the windows, but not the object.
//
// Before Create, and after the windows are gone, all members do nothing and return 0, -1 or empty.
class clsLictView final : public GXISubclass {
 public:
  clsLictView() = default;
  clsLictView(const clsLictView&) = delete;
  clsLictView& operator=(const clsLictView&) = delete;
  ~clsLictView();

  // Once. Throws FatalError if a window cannot be created.
  void Create(PictureBox& host);

  // Makes an empty list of images of this size, shown at the left of the rows by the index that
  // OnData gives. Replaces RowHeight, as RowHeight replaces the images.
  void ImageList(int width, int height);
  // Belongs to the native list.
  HIMAGELIST ImageList() const;
  // Adds the images of a bitmap, which lie side by side. Returns the index of the first one, -1
  // without an image list.
  int AddBitmap(HBITMAP bitmap, Color transparent) const;

  // Adds a row at the end and returns it.
  int Add();
  // Repaints a cell whose text the owner changed.
  void AddSub(int row, int column);
  // The cell's text, asked from OnData.
  std::wstring text(int row, int column = 0);

  // Returns the new column, the last one. The native list always aligns the first one to the left.
  int ColumnAdd(const std::wstring& title, int width,
                ColumnAlignment alignment = ColumnAlignment::kLeft);
  int ColumnsCount() const;
  HWND HeaderhWnd() const;
  int ColumnWidth(int column) const;
  void ColumnWidth(int column, int width);

  int Selected() const;
  // Selects and focuses the row and scrolls it into view. -1 selects nothing; a row that does not
  // exist changes nothing.
  void SetSelectList(int row);
  // The row that the keyboard is on, selected or not. A list with the keyboard has one unless it is
  // empty.
  int FocusedRow() const;
  void EnsureVisible(int row);
  // If no row is selected, selects the one that a key would start from.
  void SelectFocusedRow();
  // 0 or 1.
  int SelCount() const;

  int ListCount() const;
  // The number of rows. Keeps the scroll position as far as there are rows.
  void ListCount(int count);
  void Clear();
  // The rows below move up, with their selection and marks.
  void Remove(int row);

  bool Visible() const;
  void Visible(bool visible);

  // Whether CustomDraw is raised; otherwise the native list draws. False at first.
  bool AutoDraw() const { return isAutoDraw_; }
  void AutoDraw(bool autoDraw);
  // Prevents the user from changing column widths. False at first.
  bool LockColumn() const { return isColumnLocked_; }
  void LockColumn(bool locked) { isColumnLocked_ = locked; }

  // Marks that the list keeps for its owner, who draws them.
  bool Checked(int row) const { return checked_.contains(row); }
  void Checked(int row, bool checked);

  // Shown in the middle of the list while it has no rows.
  void EmptyText(const std::wstring& text);

  // The number of rows that fit completely.
  int ItemCountPage() const;
  // Whether any part of the row shows.
  bool ItemVisible(int row) const;
  // 0 for a row that does not exist.
  int GetItemTop(int row) const;
  // The same for all rows, and known without rows too.
  int GetItemHeight() const;
  // The row at a position.
  int HitTest(int x, int y) const;
  // The first and the last row that show at least in part.
  int TopItem() const;
  int BottomItem() const;
  // The lower edge of the last row, or of the header without rows. May lie outside the list.
  int Bottom() const;

  // Stops painting while set.
  bool Block() const { return isBlocked_; }
  void Block(bool blocked);
  // Paint at once.
  void RedrawItem(int row);
  void RedrawVisibleItems();

  // Called instead of the window procedures of the list and of its container.
  LRESULT zLVCallBack(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
  LRESULT zLVpCallBack(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

  // Keeps an Up key on the first row and a Down key on the last from the native list. KeyDown is
  // still raised.
  bool BlockKey() const { return isKeyBlocked_; }
  void BlockKey(bool blocked) { isKeyBlocked_ = blocked; }

  // The height of all rows, including the line between them. At first that of the text.
  void RowHeight(int height);
  // The native list.
  HWND hwnd() const { return list_; }
  void SetFocus() { ::SetFocus(list_); }

  // For OnData: puts a text into the cell and keeps it as long as the native list needs it.
  void GiveText(LVITEMW& cell, std::wstring text);

  void WndProc(bool before, bool& handled, LRESULT& result, HWND window, UINT message,
               WPARAM wParam, LPARAM lParam, LONG_PTR& userParam) override;

  // Events. Rows and columns are -1 where the mouse was beside them.
  std::function<void(bool isLeft, int row, int column)> Click;
  std::function<void(bool isLeft, int row, int column)> DblClick;
  std::function<void(int column)> ColumnClick;
  // The LVIS_ bits before and after. Row -1 means all rows.
  std::function<void(int row, UINT oldState, UINT newState)> ItemChanged;
  // Enter or a double click. Without a handler or a selected row, Enter goes to the form.
  std::function<void(int row)> ItemActivate;
  std::function<void(bool isLeft, int row)> DragBegin;
  // Fills in the fields that the record's mask names. The rest is an empty text and no image.
  std::function<void(int row, int column, LVITEMW& cell)> OnData;
  std::function<void(const MouseEvent&)> MouseDown;  // also the second press of a double click
  std::function<void(const MouseEvent&)> MouseMove;
  std::function<void(const MouseEvent&)> MouseUp;    // once for each MouseDown
  std::function<void(UINT key, int shift)> KeyDown;  // shift: bits of ShiftState
  std::function<void(UINT key, int shift)> KeyUp;
  // The result is CDRF_DODEFAULT unless set. The native list asks for single rows only after
  // CDRF_NOTIFYITEMDRAW at the stage CDDS_PREPAINT.
  std::function<void(NMLVCUSTOMDRAW& draw, LRESULT& result)> CustomDraw;
  std::function<void()> LostFocus;

 private:
  void CreateWindows();
  void SubclassBoth();
  void FillHost();
  void ShowImages(UniqueImageList images);

  LRESULT HandleNotification(NMHDR& notification);
  LRESULT RaiseCustomDraw(NMLVCUSTOMDRAW& draw) const;
  bool IsHeaderHeldBack(const NMHDR& notification) const;
  void AnswerData(LVITEMW& cell) const;
  void RaiseClick(const NMHDR& notification);
  void RaiseMouse(UINT message, WPARAM wParam, LPARAM lParam);
  void RaiseMouseUp(int button, const POINT& position);
  bool IsKeyHeldBack(UINT key) const;
  int FindRow(const NMLVFINDITEMW& search);
  void DrawEmptyText() const;
  void TakeSystemColors();
  void DrawEmptyFocus() const;

  void RaiseItemChanged(const NMLISTVIEW& change);

  bool HasRow(int row) const { return row >= 0 && row < ListCount(); }
  bool WantsKey(const MSG* message) const;
  bool HasKeyboard() const { return list_ != nullptr && GetFocus() == list_; }
  void FocusSomeRow();
  void FocusMoved();
  void InvalidateRows(int first, int last);
  int HeaderBottom() const;
  int ClientBottom() const;

  PictureBox* host_ = nullptr;
  HWND container_ = nullptr;
  HWND list_ = nullptr;
  std::set<int> checked_;
  int rowHeight_ = 0;  // set by RowHeight; 0 after the images were replaced
  int buttonsHeld_ = kNoButton;
  bool isAutoDraw_ = false;
  bool isKeyBlocked_ = false;
  bool isColumnLocked_ = false;
  bool isBlocked_ = false;
  // The native list may use a text until it has asked for two more.
  std::array<std::wstring, 4> texts_;
  size_t nextText_ = 0;
  std::wstring emptyText_;
  DWORD ground_ = 0;  // the system's colours in the native list
  DWORD ink_ = 0;
  GXMSubclass engine_;
};

}  // namespace tellurvane
