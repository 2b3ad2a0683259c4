#include "ui/ControlKinds.h"

#include <array>
#include <cassert>

namespace tellurvane {
namespace {

constexpr DWORD kLabelStyle = SS_LEFTNOWORDWRAP | SS_NOTIFY;
constexpr DWORD kComboBoxStyle = WS_VSCROLL | CBS_HASSTRINGS;
constexpr DWORD kEditableComboBoxStyle = kComboBoxStyle | CBS_DROPDOWN | CBS_AUTOHSCROLL;
constexpr DWORD kDropDownListStyle = kComboBoxStyle | CBS_DROPDOWNLIST;
constexpr DWORD kSimpleComboBoxStyle = kComboBoxStyle | CBS_SIMPLE;
constexpr DWORD kSilentListBoxStyle = WS_VSCROLL | LBS_HASSTRINGS | LBS_NOINTEGRALHEIGHT;
constexpr DWORD kListBoxStyle = kSilentListBoxStyle | LBS_NOTIFY;
constexpr DWORD kMultiSelectStyle = kListBoxStyle | LBS_EXTENDEDSEL;
constexpr DWORD kToggleSelectStyle = kListBoxStyle | LBS_MULTIPLESEL;
constexpr DWORD kSortedStyle = kSilentListBoxStyle | LBS_SORT;
constexpr DWORD kRichEditStyle =
    WS_HSCROLL | WS_VSCROLL | ES_MULTILINE | ES_AUTOVSCROLL | ES_AUTOHSCROLL;

// In the order of ControlKind.
constexpr std::array<ControlLook, 13> kLooks = {{
    {L"BUTTON", ControlFamily::kButton, BS_AUTOCHECKBOX, BS_AUTOCHECKBOX},
    {L"BUTTON", ControlFamily::kButton, BS_PUSHBUTTON, BS_PUSHBUTTON},
    {L"BUTTON", ControlFamily::kButton, BS_AUTORADIOBUTTON, BS_AUTORADIOBUTTON},
    {L"STATIC", ControlFamily::kLabel, kLabelStyle, kLabelStyle},
    {L"Edit", ControlFamily::kEdit, ES_AUTOHSCROLL, ES_MULTILINE},
    {L"COMBOBOX", ControlFamily::kComboBox, kEditableComboBoxStyle, kEditableComboBoxStyle},
    {L"COMBOBOX", ControlFamily::kComboBox, kDropDownListStyle, kDropDownListStyle},
    {L"COMBOBOX", ControlFamily::kComboBox, kSimpleComboBoxStyle, kSimpleComboBoxStyle},
    {L"LISTBOX", ControlFamily::kListBox, kListBoxStyle, kListBoxStyle},
    {L"LISTBOX", ControlFamily::kListBox, kMultiSelectStyle, kMultiSelectStyle},
    {L"LISTBOX", ControlFamily::kListBox, kToggleSelectStyle, kToggleSelectStyle},
    {L"RichEdit20W", ControlFamily::kRichEdit, ES_AUTOHSCROLL, kRichEditStyle},
    {L"LISTBOX", ControlFamily::kListBox, kSortedStyle, kSortedStyle},
}};

}  // namespace

const ControlLook& LookOf(ControlKind kind) {
  const auto place = static_cast<size_t>(kind) - 1;
  assert(place < kLooks.size());
  return kLooks[place];
}

}  // namespace tellurvane
