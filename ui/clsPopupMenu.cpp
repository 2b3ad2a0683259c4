#include "ui/clsPopupMenu.h"

namespace tellurvane {

void clsPopupMenu::CreateMenu() {
  if (!menu_) menu_.Reset(CreatePopupMenu());
}

void clsPopupMenu::DeleteMenu() {
  submenu_ = nullptr;
  menu_.Reset();
}

void clsPopupMenu::SetMenuDefItem(UINT position) {
  SetMenuDefaultItem(menu_.Get(), position, TRUE);
}

void clsPopupMenu::AddMenuItem(const std::wstring& text, UINT flags, UINT id) {
  AppendMenuW(menu_.Get(), flags, id, text.c_str());
}

void clsPopupMenu::CreateSubmenu(const std::wstring& text) {
  UniqueMenu submenu(CreatePopupMenu());
  const auto target = reinterpret_cast<UINT_PTR>(submenu.Get());
  if (!AppendMenuW(menu_.Get(), MF_POPUP, target, text.c_str())) return;
  submenu_ = submenu.Release();
}

void clsPopupMenu::AddSubmenuItem(const std::wstring& text, UINT flags, UINT id) {
  AppendMenuW(submenu_, flags, id, text.c_str());
}

void clsPopupMenu::CheckRadioItem(UINT first, UINT last, UINT check) {
  CheckMenuRadioItem(submenu_, first, last, check, MF_BYPOSITION);
}

UINT clsPopupMenu::TrackMenu(HWND owner) {
  POINT mouse = {};
  GetCursorPos(&mouse);
  return TrackMenu(owner, mouse);
}

UINT clsPopupMenu::TrackMenu(HWND owner, POINT place) {
  // Does not bring the owner to the foreground. The caller does that where it is needed.
  return static_cast<UINT>(
      TrackPopupMenu(menu_.Get(), TPM_RETURNCMD, place.x, place.y, 0, owner, nullptr));
}

}  // namespace tellurvane
