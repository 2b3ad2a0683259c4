// What the kinds of clsControl are made of.
#pragma once

#include <windows.h>

#include "ui/clsControl.h"

namespace tellurvane {

// Kinds that speak the same messages.
enum class ControlFamily { kButton, kLabel, kEdit, kRichEdit, kComboBox, kListBox };

struct ControlLook {
  const wchar_t* className;
  ControlFamily family;
  DWORD style;
  DWORD multiLineStyle;
};

const ControlLook& LookOf(ControlKind kind);

inline ControlFamily FamilyOf(ControlKind kind) { return LookOf(kind).family; }

// Whether the list comes up only when asked for.
inline bool DropsDown(ControlKind kind) {
  return kind == ControlKind::kEditableComboBox || kind == ControlKind::kDropDownList;
}

}  // namespace tellurvane
