// The list properties of clsControl.
#include "ui/ControlKinds.h"
#include "ui/clsControl.h"

namespace tellurvane {

// The messages of the two families. Both return -1 on errors.
struct clsControl::ListMessages {
  UINT add;
  UINT insert;
  UINT remove;
  UINT clear;
  UINT count;
  UINT text;
  UINT textLength;
  UINT data;
  UINT setData;
  UINT selection;
  UINT setSelection;
};

namespace {

WPARAM At(int index) { return static_cast<WPARAM>(index); }

LPARAM TextOf(const std::wstring& value) { return reinterpret_cast<LPARAM>(value.c_str()); }

bool SelectsMany(ControlKind kind) {
  return kind == ControlKind::kMultiSelectListBox || kind == ControlKind::kToggleSelectListBox;
}

}  // namespace

const clsControl::ListMessages* clsControl::Entries() const {
  static constexpr ListMessages kComboBox = {
      CB_ADDSTRING,    CB_INSERTSTRING, CB_DELETESTRING, CB_RESETCONTENT, CB_GETCOUNT, CB_GETLBTEXT,
      CB_GETLBTEXTLEN, CB_GETITEMDATA,  CB_SETITEMDATA,  CB_GETCURSEL,    CB_SETCURSEL};
  static constexpr ListMessages kListBox = {
      LB_ADDSTRING,  LB_INSERTSTRING, LB_DELETESTRING, LB_RESETCONTENT, LB_GETCOUNT, LB_GETTEXT,
      LB_GETTEXTLEN, LB_GETITEMDATA,  LB_SETITEMDATA,  LB_GETCURSEL,    LB_SETCURSEL};
  if (hwnd_ == nullptr) return nullptr;
  const ControlFamily family = FamilyOf(kind_);
  if (family == ControlFamily::kComboBox) return &kComboBox;
  if (family == ControlFamily::kListBox) return &kListBox;
  return nullptr;
}

bool clsControl::HasEntry(int index) const { return index >= 0 && index < ListCount(); }

LONG_PTR clsControl::ItemData(int index) const {
  return HasEntry(index) ? Send(Entries()->data, At(index)) : 0;
}

void clsControl::ItemData(int index, LONG_PTR value) {
  if (HasEntry(index)) Send(Entries()->setData, At(index), value);
}

int clsControl::ListIndex() const {
  const ListMessages* const entries = Entries();
  return entries == nullptr ? -1 : static_cast<int>(Send(entries->selection));
}

void clsControl::ListIndex(int index) {
  const ListMessages* const entries = Entries();
  if (entries == nullptr) return;
  if (!HasEntry(index)) index = -1;
  if (!SelectsMany(kind_)) {
    Send(entries->setSelection, At(index));
    return;
  }
  // The index -1 means all entries.
  Send(LB_SETSEL, index >= 0, index);
  if (index >= 0) Send(LB_SETCARETINDEX, At(index), FALSE);
}

int clsControl::ListCount() const {
  const ListMessages* const entries = Entries();
  return entries == nullptr ? 0 : static_cast<int>(Send(entries->count));
}

void clsControl::Clear() {
  if (const ListMessages* const entries = Entries()) Send(entries->clear);
  newIndex_ = -1;
}

std::wstring clsControl::List(int index) const {
  if (!HasEntry(index)) return {};
  const auto length = static_cast<size_t>(Send(Entries()->textLength, At(index)));
  std::wstring value(length + 1, L'\0');
  Send(Entries()->text, At(index), reinterpret_cast<LPARAM>(value.data()));
  value.resize(length);
  return value;
}

void clsControl::List(int index, const std::wstring& value) {
  if (!HasEntry(index)) return;
  const LONG_PTR data = ItemData(index);
  const bool isSelected = IsSelected(index);
  Send(Entries()->remove, At(index));
  Send(Entries()->insert, At(index), TextOf(value));
  ItemData(index, data);
  if (isSelected) ListIndex(index);
}

bool clsControl::IsSelected(int index) const {
  return SelectsMany(kind_) ? Send(LB_GETSEL, At(index)) > 0 : ListIndex() == index;
}

void clsControl::RemoveItem(int index) {
  if (!HasEntry(index)) return;
  Send(Entries()->remove, At(index));
  newIndex_ = -1;
}

void clsControl::AddItem(const std::wstring& value) {
  if (const ListMessages* const entries = Entries()) {
    newIndex_ = static_cast<int>(Send(entries->add, 0, TextOf(value)));
  }
}

}  // namespace tellurvane
