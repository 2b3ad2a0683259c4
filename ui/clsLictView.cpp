#include "ui/clsLictView.h"

#include <algorithm>
#include <utility>

#include "ui/ChildWindow.h"
#include "ui/ToolkitFont.h"

namespace tellurvane {
namespace {

constexpr DWORD kContainerStyle = WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN | WS_CLIPSIBLINGS;
constexpr DWORD kListStyle = WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | WS_TABSTOP | LVS_REPORT |
                             LVS_OWNERDATA | LVS_SINGLESEL | LVS_SHOWSELALWAYS;
constexpr DWORD kListExtendedStyle = LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER;

int Ask(HWND window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
  return static_cast<int>(SendMessageW(window, message, wParam, lParam));
}

void SetRowState(HWND list, int row, UINT state, UINT mask) {
  LVITEMW item = {};
  item.state = state;
  item.stateMask = mask;
  SendMessageW(list, LVM_SETITEMSTATE, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
}

// Does not raise OnData, unlike LVM_GETITEMRECT.
int TopOf(HWND list, int row) {
  POINT place = {};
  SendMessageW(list, LVM_GETITEMPOSITION, static_cast<WPARAM>(row),
               reinterpret_cast<LPARAM>(&place));
  return static_cast<int>(place.y);
}

}  // namespace

clsLictView::~clsLictView() {
  engine_.Terminate();
  if (host_ != nullptr) host_->Resize = nullptr;
  if (container_ != nullptr) DestroyWindow(container_);
}

void clsLictView::Create(PictureBox& host) {
  host_ = &host;
  CreateWindows();
  SubclassBoth();
  host_->Resize = [this] { FillHost(); };
  FillHost();
}

void clsLictView::CreateWindows() {
  const INITCOMMONCONTROLSEX classes = {sizeof(classes), ICC_LISTVIEW_CLASSES};
  InitCommonControlsEx(&classes);
  // WS_EX_CONTROLPARENT: the Tab key goes through the container to the list.
  container_ = CreateChildWindow({.parent = host_->hwnd(),
                                  .className = WC_STATICW,
                                  .style = kContainerStyle,
                                  .extendedStyle = WS_EX_CONTROLPARENT});
  list_ = CreateChildWindow({.parent = container_, .className = WC_LISTVIEWW, .style = kListStyle});
  ground_ = GetSysColor(COLOR_WINDOW);
  ink_ = GetSysColor(COLOR_WINDOWTEXT);
  SendMessageW(list_, LVM_SETEXTENDEDLISTVIEWSTYLE, 0, kListExtendedStyle);
  SendMessageW(list_, WM_SETFONT, reinterpret_cast<WPARAM>(ToolkitFont()), FALSE);
}

void clsLictView::FillHost() {
  const int width = host_->ScaleWidth();
  const int height = host_->ScaleHeight();
  MoveWindow(container_, 0, 0, width, height, TRUE);
  MoveWindow(list_, 0, 0, width, height, TRUE);
}

void clsLictView::ImageList(int width, int height) {
  ShowImages(UniqueImageList(ImageList_Create(width, height, ILC_COLOR32 | ILC_MASK, 1, 1)));
}

HIMAGELIST clsLictView::ImageList() const {
  return reinterpret_cast<HIMAGELIST>(SendMessageW(list_, LVM_GETIMAGELIST, LVSIL_SMALL, 0));
}

// The native list owns the images from then on and returns the former ones.
void clsLictView::ShowImages(UniqueImageList images) {
  if (list_ == nullptr) return;
  rowHeight_ = 0;
  const UniqueImageList former(reinterpret_cast<HIMAGELIST>(SendMessageW(
      list_, LVM_SETIMAGELIST, LVSIL_SMALL, reinterpret_cast<LPARAM>(images.Release()))));
}

int clsLictView::AddBitmap(HBITMAP bitmap, Color transparent) const {
  return ImageList_AddMasked(ImageList(), bitmap, transparent);
}

// Rows are as high as the images, plus a line between rows whose height the native list chooses.
void clsLictView::RowHeight(int height) {
  const auto show = [this](int imageHeight) {
    ShowImages(UniqueImageList(ImageList_Create(1, imageHeight, ILC_COLOR, 0, 1)));
  };
  show(height);
  const int line = GetItemHeight() - height;
  if (line > 0) show(height - line);
  rowHeight_ = GetItemHeight();
}

int clsLictView::Add() {
  const int row = ListCount();
  SendMessageW(list_, LVM_SETITEMCOUNT, static_cast<WPARAM>(row) + 1,
               LVSICF_NOINVALIDATEALL | LVSICF_NOSCROLL);
  return ListCount() - 1;
}

void clsLictView::AddSub(int row, int column) {
  if (!HasRow(row) || column < 0 || column >= ColumnsCount()) return;
  InvalidateRows(row, row);
}

std::wstring clsLictView::text(int row, int column) {
  if (!HasRow(row)) return {};
  std::array<wchar_t, MAX_PATH> buffer = {};
  LVITEMW cell = {};
  cell.mask = LVIF_TEXT;
  cell.iItem = row;
  cell.iSubItem = column;
  cell.pszText = buffer.data();
  cell.cchTextMax = static_cast<int>(buffer.size());
  // Not through the native list, which would cut the text to the buffer's length.
  AnswerData(cell);
  return cell.pszText == nullptr ? std::wstring() : cell.pszText;
}

int clsLictView::ColumnAdd(const std::wstring& title, int width, ColumnAlignment alignment) {
  std::wstring text = title;
  LVCOLUMNW column = {};
  column.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_FMT | LVCF_SUBITEM;
  column.fmt = static_cast<int>(alignment);
  column.cx = width;
  column.pszText = text.data();
  column.iSubItem = ColumnsCount();
  if (list_ == nullptr) return -1;
  return Ask(list_, LVM_INSERTCOLUMNW, static_cast<WPARAM>(column.iSubItem),
             reinterpret_cast<LPARAM>(&column));
}

int clsLictView::ColumnsCount() const {
  return HeaderhWnd() == nullptr ? 0 : Ask(HeaderhWnd(), HDM_GETITEMCOUNT);
}

HWND clsLictView::HeaderhWnd() const {
  return reinterpret_cast<HWND>(SendMessageW(list_, LVM_GETHEADER, 0, 0));
}

int clsLictView::ColumnWidth(int column) const {
  if (column < 0 || column >= ColumnsCount()) return 0;
  return Ask(list_, LVM_GETCOLUMNWIDTH, static_cast<WPARAM>(column));
}

void clsLictView::ColumnWidth(int column, int width) {
  SendMessageW(list_, LVM_SETCOLUMNWIDTH, static_cast<WPARAM>(column), MAKELPARAM(width, 0));
}

int clsLictView::Selected() const {
  if (list_ == nullptr) return -1;
  return Ask(list_, LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED);
}

void clsLictView::SetSelectList(int row) {
  constexpr UINT kChosen = LVIS_SELECTED | LVIS_FOCUSED;
  if (row == -1) {
    // Not row -1, "all rows": the native list would go through a million of them.
    if (Selected() != -1) SetRowState(list_, Selected(), 0, kChosen);
    return;
  }
  if (!HasRow(row)) return;
  SetRowState(list_, row, kChosen, kChosen);
  EnsureVisible(row);
}

int clsLictView::FocusedRow() const {
  if (list_ == nullptr) return -1;
  return Ask(list_, LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_FOCUSED);
}

void clsLictView::SelectFocusedRow() {
  if (Selected() < 0) SetSelectList(FocusedRow());
}

// Not every version of the native list does this itself.
void clsLictView::FocusSomeRow() {
  if (HasKeyboard() && HasRow(0) && FocusedRow() < 0) {
    SetRowState(list_, 0, LVIS_FOCUSED, LVIS_FOCUSED);
  }
}

// The focused row is marked only while the list has the keyboard.
void clsLictView::FocusMoved() {
  FocusSomeRow();
  if (list_ == nullptr) return;
  if (ListCount() == 0) {
    InvalidateRect(list_, nullptr, TRUE);
  } else if (const int row = FocusedRow(); row >= 0) {
    InvalidateRows(row, row);
  }
}

void clsLictView::EnsureVisible(int row) {
  if (HasRow(row)) SendMessageW(list_, LVM_ENSUREVISIBLE, static_cast<WPARAM>(row), FALSE);
}

int clsLictView::SelCount() const { return Ask(list_, LVM_GETSELECTEDCOUNT); }

int clsLictView::ListCount() const { return Ask(list_, LVM_GETITEMCOUNT); }

void clsLictView::ListCount(int count) {
  checked_.erase(checked_.lower_bound(count), checked_.end());
  SendMessageW(list_, LVM_SETITEMCOUNT, static_cast<WPARAM>(count), LVSICF_NOSCROLL);
  FocusSomeRow();
}

void clsLictView::Clear() {
  checked_.clear();
  SendMessageW(list_, LVM_DELETEALLITEMS, 0, 0);
}

void clsLictView::Remove(int row) {
  if (!HasRow(row)) return;
  std::set<int> moved;
  for (const int checked : checked_) {
    if (checked != row) moved.insert(moved.end(), checked > row ? checked - 1 : checked);
  }
  checked_ = std::move(moved);
  SendMessageW(list_, LVM_DELETEITEM, static_cast<WPARAM>(row), 0);
}

bool clsLictView::Visible() const { return IsWindowVisible(container_) != 0; }

void clsLictView::Visible(bool visible) { ShowWindow(container_, visible ? SW_SHOWNA : SW_HIDE); }

void clsLictView::AutoDraw(bool autoDraw) {
  isAutoDraw_ = autoDraw;
  if (list_ != nullptr) InvalidateRect(list_, nullptr, FALSE);
}

void clsLictView::Checked(int row, bool checked) {
  if (!HasRow(row)) return;
  if (checked) {
    checked_.insert(row);
  } else {
    checked_.erase(row);
  }
  InvalidateRows(row, row);
}

void clsLictView::EmptyText(const std::wstring& text) {
  if (text == emptyText_) return;
  emptyText_ = text;
  if (list_ != nullptr && ListCount() == 0) InvalidateRect(list_, nullptr, TRUE);
}

int clsLictView::ItemCountPage() const { return Ask(list_, LVM_GETCOUNTPERPAGE); }

bool clsLictView::ItemVisible(int row) const {
  return HasRow(row) && row >= TopItem() && row <= BottomItem();
}

int clsLictView::GetItemTop(int row) const { return HasRow(row) ? TopOf(list_, row) : 0; }

int clsLictView::GetItemHeight() const {
  if (rowHeight_ > 0) return rowHeight_;
  constexpr int kMeasured = 2;
  const auto count = [this](int rows) {
    SendMessageW(list_, LVM_SETITEMCOUNT, static_cast<WPARAM>(rows),
                 LVSICF_NOINVALIDATEALL | LVSICF_NOSCROLL);
  };
  // With fewer rows, set two for a moment.
  const int rows = ListCount();
  if (rows < kMeasured) count(kMeasured);
  const int height = TopOf(list_, 1) - TopOf(list_, 0);
  if (rows < kMeasured) count(rows);
  return height;
}

int clsLictView::HitTest(int x, int y) const {
  if (list_ == nullptr) return -1;
  LVHITTESTINFO hit = {};
  hit.pt = {x, y};
  return Ask(list_, LVM_SUBITEMHITTEST, 0, reinterpret_cast<LPARAM>(&hit));
}

int clsLictView::TopItem() const { return ListCount() == 0 ? -1 : Ask(list_, LVM_GETTOPINDEX); }

int clsLictView::BottomItem() const {
  const int top = TopItem();
  if (top == -1) return -1;
  const int space = std::max(ClientBottom() - GetItemTop(top), 1);
  return std::min(top + (space - 1) / std::max(GetItemHeight(), 1), ListCount() - 1);
}

int clsLictView::Bottom() const {
  const int count = ListCount();
  return count == 0 ? HeaderBottom() : GetItemTop(count - 1) + GetItemHeight();
}

void clsLictView::Block(bool blocked) {
  isBlocked_ = blocked && list_ != nullptr;
  SendMessageW(list_, WM_SETREDRAW, blocked ? FALSE : TRUE, 0);
  if (list_ != nullptr && !blocked) InvalidateRect(list_, nullptr, FALSE);
}

void clsLictView::RedrawItem(int row) {
  // The whole list is painted when the block ends.
  if (isBlocked_ || !ItemVisible(row)) return;
  InvalidateRows(row, row);
  UpdateWindow(list_);
}

void clsLictView::RedrawVisibleItems() {
  if (isBlocked_ || ListCount() == 0) return;
  InvalidateRows(TopItem(), BottomItem());
  UpdateWindow(list_);
}

// From edge to edge: an owner may paint beside the columns too.
void clsLictView::InvalidateRows(int first, int last) {
  RECT rows = {};
  GetClientRect(list_, &rows);
  rows.top = TopOf(list_, first);
  if (ListCount() > 1) {
    rows.bottom = TopOf(list_, last) + (TopOf(list_, 1) - TopOf(list_, 0));
  }
  InvalidateRect(list_, &rows, FALSE);
}

void clsLictView::GiveText(LVITEMW& cell, std::wstring text) {
  std::wstring& place = texts_[nextText_];
  nextText_ = (nextText_ + 1) % texts_.size();
  place = std::move(text);
  cell.pszText = place.data();
}

int clsLictView::HeaderBottom() const {
  RECT header = {};
  if (HeaderhWnd() != nullptr) GetClientRect(HeaderhWnd(), &header);
  return static_cast<int>(header.bottom);
}

int clsLictView::ClientBottom() const {
  RECT client = {};
  GetClientRect(list_, &client);
  return static_cast<int>(client.bottom);
}

}  // namespace tellurvane
