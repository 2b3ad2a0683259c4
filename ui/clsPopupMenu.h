// A popup menu that is built, shown once and destroyed.
#pragma once

#include <windows.h>

#include <string>

#include "ui/Handle.h"

namespace tellurvane {

// Flags are the platform's: 0 plain, MF_CHECKED, MF_SEPARATOR. Positions count from 0. Without a
// menu nothing happens.
class clsPopupMenu {
 public:
  clsPopupMenu() { CreateMenu(); }
  clsPopupMenu(const clsPopupMenu&) = delete;
  clsPopupMenu& operator=(const clsPopupMenu&) = delete;
  ~clsPopupMenu() = default;

  // Does nothing while there is a menu.
  void CreateMenu();
  // The submenus go with it.
  void DeleteMenu();

  void SetMenuDefItem(UINT position);
  void AddMenuItem(const std::wstring& text, UINT flags, UINT id);

  // Adds a submenu to the menu; the two operations below work on the one created last.
  void CreateSubmenu(const std::wstring& text);
  void AddSubmenuItem(const std::wstring& text, UINT flags, UINT id);
  // Marks one of a range of the submenu's items, by position, and unmarks the others.
  void CheckRadioItem(UINT first, UINT last, UINT check);

  // Shows the menu at the mouse and returns the chosen identifier, or 0 when it is dismissed.
  UINT TrackMenu(HWND owner);
  // The same at a place of the screen, for a menu that the keyboard asks for.
  UINT TrackMenu(HWND owner, POINT place);

  // Null after DeleteMenu.
  HMENU Handle() const { return menu_.Get(); }

 private:
  UniqueMenu menu_;
  HMENU submenu_ = nullptr;  // owned by the menu that it hangs in
};

}  // namespace tellurvane
