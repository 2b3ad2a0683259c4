// The list: a native report-style list view whose rows belong to its owner.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include <array>
#include <functional>
#include <set>
#include <string>

#include "ui/Event.h"
#include "ui/GXMSubclass.h"
#include "ui/Handle.h"
#include "ui/PictureBox.h"

namespace tellurvane {

enum class ColumnAlignment { kLeft = LVCFMT_LEFT, kRight = LVCFMT_RIGHT, kCenter = LVCFMT_CENTER };

// Rows and columns count from 0; -1 stands for none. Lengths are pixels, positions pixels from the
// list's left upper corner, the header included.
//
// The list holds no texts: it knows how many rows there are, asks OnData for the cells that it is
// about to show, and so costs the same for ten rows and for a million. One row is selected at most.
// What the user types while the list has the keyboard selects the next row whose first cell begins
// with it.
//
// The host's object must outlive the list; its window may die first. The list fills the host and
// follows its size, and takes the host's Resize event for that. Handlers of keys, the mouse, clicks
// and double clicks may destroy the list; the others are called while the native list works on what
// it tells.
//
// Before Create, and after the windows are gone, all members do nothing and answer 0, -1 or empty.
class clsLictView final : public GXISubclass {
 public:
  clsLictView() = default;
  clsLictView(const clsLictView&) = delete;
  clsLictView& operator=(const clsLictView&) = delete;
  ~clsLictView();

  // Throws FatalError where the system refuses a window. A list that was created before leaves its
  // former host, and everything set afterwards with it.
  void Create(PictureBox& host);

  // Makes an empty list of images of this size, shown at the rows' left by the index that OnData
  // names. It sets the row height too: of this and RowHeight the later decides.
  void ImageList(int width, int height);
  // None without one. It belongs to the native list.
  HIMAGELIST ImageList() const;
  // Adds the images of a bitmap, one beside the other, with the pixels of one colour transparent.
  // Returns the first one's index, -1 where there is no image list.
  int AddBitmap(HBITMAP bitmap, Color transparent) const;

  // One row more at the end. Returns it.
  int Add();
  // Says that the owner has another text for a cell: the cell is painted anew.
  void AddSub(int row, int column);
  // The cell's text, asked from OnData.
  std::wstring text(int row, int column = 0);

  // Returns the new column, the last one. The first column is always left-aligned: so the native
  // list wants it.
  int ColumnAdd(const std::wstring& title, int width,
                ColumnAlignment alignment = ColumnAlignment::kLeft);
  int ColumnsCount() const;
  HWND HeaderhWnd() const;
  int ColumnWidth(int column) const;
  void ColumnWidth(int column, int width);

  int Selected() const;
  // Makes it the only selected row, the focused one, and wholly visible. -1 selects nothing; a row
  // that is not there changes nothing.
  void SetSelectList(int row);
  void EnsureVisible(int row);
  // 0 or 1.
  int SelCount() const;

  int ListCount() const;
  // How many rows the owner has. The position is kept as far as there are rows.
  void ListCount(int count);
  void Clear();
  // The owner has taken the row out; those below move up, with selection and check marks.
  void Remove(int row);

  bool Visible() const;
  void Visible(bool visible);

  // Whether CustomDraw is raised; otherwise the native list draws. At first it is not.
  bool AutoDraw() const { return isAutoDraw_; }
  void AutoDraw(bool autoDraw);
  // Whether the user is kept from changing column widths. At first he is not.
  bool LockColumn() const { return isColumnLocked_; }
  void LockColumn(bool locked) { isColumnLocked_ = locked; }

  // Check boxes before the rows, toggled by a click on the box or the space bar, which raise
  // ItemChanged. The list remembers which rows are checked, as it does the selection.
  void CheckBoxes(bool shown);
  bool Checked(int row) const { return checked_.contains(row); }
  void Checked(int row, bool checked);

  // Shown in the middle of the list while it has no rows. At first there is none.
  void EmptyText(const std::wstring& text);

  // How many rows fit wholly.
  int ItemCountPage() const;
  // Whether any of the row shows.
  bool ItemVisible(int row) const;
  // 0 for a row that is not there.
  int GetItemTop(int row) const;
  // All rows are of one height; it is known without rows too.
  int GetItemHeight() const;
  // The row at a position.
  int HitTest(int x, int y) const;
  // The first and the last row of which anything shows.
  int TopItem() const;
  int BottomItem() const;
  // Where the rows end: the last row's lower edge, or the header's without rows. May lie outside.
  int Bottom() const;

  // While set, nothing is painted.
  bool Block() const { return isBlocked_; }
  void Block(bool blocked);
  // Paint before they return. A row that does not show costs nothing.
  void RedrawItem(int row);
  void RedrawVisibleItems();

  // Instead of the list's and of its container's window procedures.
  LRESULT zLVCallBack(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
  LRESULT zLVpCallBack(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

  // While set, an Up key on the first row and a Down key on the last do not reach the native list.
  // KeyDown is raised all the same.
  bool BlockKey() const { return isKeyBlocked_; }
  void BlockKey(bool blocked) { isKeyBlocked_ = blocked; }

  // Sets the height of all rows, the line between them included. At first the text's.
  void RowHeight(int height);
  // The native list.
  HWND hwnd() const { return list_; }
  void SetFocus() { ::SetFocus(list_); }

  // For OnData: puts a text into the cell and keeps it alive for as long as the native list needs
  // it. A handler may also put a pointer of its own into the record, to a text that stays.
  void GiveText(LVITEMW& cell, std::wstring text);

  void WndProc(bool before, bool& handled, LRESULT& result, HWND window, UINT message,
               WPARAM wParam, LPARAM lParam, LONG_PTR& userParam) override;

  // Events. Any may be left empty. Rows and columns are -1 where the mouse was beside them.
  std::function<void(bool isLeft, int row, int column)> Click;
  std::function<void(bool isLeft, int row, int column)> DblClick;
  std::function<void(int column)> ColumnClick;
  // The LVIS_ bits before and after. Row -1 means all rows; a toggled check box changes
  // LVIS_STATEIMAGEMASK.
  std::function<void(int row, UINT oldState, UINT newState)> ItemChanged;
  // Enter, or a double click. While it is set and a row is selected, Enter is the list's; otherwise
  // it is the form's.
  std::function<void(int row)> ItemActivate;
  std::function<void(bool isLeft, int row)> DragBegin;
  // Fills in what the record's mask asks for; what is left alone is an empty text or no image.
  std::function<void(int row, int column, LVITEMW& cell)> OnData;
  std::function<void(const MouseEvent&)> MouseDown;  // the second press of a double click too
  std::function<void(const MouseEvent&)> MouseMove;
  std::function<void(const MouseEvent&)> MouseUp;    // once for each MouseDown
  std::function<void(UINT key, int shift)> KeyDown;  // shift: bits of ShiftState
  std::function<void(UINT key, int shift)> KeyUp;
  // Result: what the native list is told, CDRF_DODEFAULT at first. It asks for single rows only
  // after CDRF_NOTIFYITEMDRAW at the stage CDDS_PREPAINT.
  std::function<void(NMLVCUSTOMDRAW& draw, LRESULT& result)> CustomDraw;
  std::function<void()> LostFocus;

 private:
  void CreateWindows();
  void SubclassBoth();
  void FillHost();
  void LeaveHost();
  void ShowImages(UniqueImageList images);

  LRESULT HandleNotification(NMHDR& notification);
  LRESULT RaiseCustomDraw(NMLVCUSTOMDRAW& draw) const;
  bool IsHeaderHeldBack(const NMHDR& notification) const;
  void AnswerData(LVITEMW& cell) const;
  void RaiseClick(const NMHDR& notification);
  void RaiseMouse(UINT message, WPARAM wParam, LPARAM lParam);
  void RaiseMouseUp(int button, const POINT& position);
  bool IsKeyHeldBack(UINT key) const;
  bool HandleKeyDown(UINT key);
  int FindRow(const NMLVFINDITEMW& search);
  void DrawEmptyText() const;

  void RaiseItemChanged(const NMLISTVIEW& change);
  void ToggleCheck(int row);
  bool IsOnCheckBox(const POINT& position) const;

  bool HasRow(int row) const { return row >= 0 && row < ListCount(); }
  bool WantsKey(const MSG* message) const;
  void InvalidateRows(int first, int last);
  int HeaderBottom() const;
  int ClientBottom() const;

  PictureBox* host_ = nullptr;
  HWND container_ = nullptr;
  HWND list_ = nullptr;
  std::set<int> checked_;
  int buttonsHeld_ = kNoButton;
  bool hasImages_ = false;
  bool hasCheckBoxes_ = false;
  bool isAutoDraw_ = false;
  bool isKeyBlocked_ = false;
  bool isColumnLocked_ = false;
  bool isBlocked_ = false;
  // The native list may look at a text until it has asked for two more.
  std::array<std::wstring, 4> texts_;
  size_t nextText_ = 0;
  std::wstring emptyText_;
  Lifetime lifetime_;
  GXMSubclass engine_;
};

}  // namespace tellurvane
