// Window class and style of each control kind.
#pragma once

#include <windows.h>

#include "ui/clsControl.h"

namespace tellurvane {

// Kinds with the same messages.
enum class ControlFamily { kButton, kLabel, kEdit, kRichEdit, kComboBox, kListBox };

struct ControlLook {
  const wchar_t* className;
  ControlFamily family;
  DWORD style;
  DWORD multiLineStyle;
};

const ControlLook& LookOf(ControlKind kind);

inline ControlFamily FamilyOf(ControlKind kind) { return LookOf(kind).family; }

// Whether the list is hidden until it is opened.
inline bool DropsDown(ControlKind kind) {
  return kind == ControlKind::kEditableComboBox || kind == ControlKind::kDropDownList;
}

}  // namespace tellurvane
