#include "app/OpenFileDialog.h"

#include <commdlg.h>

#include <algorithm>

#include "app/OpenFileFilter.h"

namespace tellurvane {
namespace {

constexpr size_t kLongestPath = 32'768;  // of the system
constexpr DWORD kFlags = OFN_HIDEREADONLY | OFN_PATHMUSTEXIST | OFN_EXPLORER | OFN_LONGNAMES;
static_assert(kFlags == 0x280804);

// Restores the current directory, which the dialog changes: relative sources depend on it.
class KeptDirectory {
 public:
  KeptDirectory() : path_(GetCurrentDirectoryW(0, nullptr), L'\0') {
    path_.resize(GetCurrentDirectoryW(static_cast<DWORD>(path_.size()), path_.data()));
  }
  KeptDirectory(const KeptDirectory&) = delete;
  KeptDirectory& operator=(const KeptDirectory&) = delete;
  ~KeptDirectory() { SetCurrentDirectoryW(path_.c_str()); }

 private:
  std::wstring path_;
};

}  // namespace

std::optional<std::wstring> BrowseForSource(HWND owner, bool wantExecutables,
                                            std::wstring& filesPath) {
  const std::wstring filter = OpenFileFilter(wantExecutables);
  std::wstring name(kLongestPath, L'\0');
  OPENFILENAMEW dialog = {};
  dialog.lStructSize = sizeof(dialog);
  dialog.hwndOwner = owner;
  dialog.lpstrFilter = filter.c_str();
  dialog.lpstrFile = name.data();
  dialog.nMaxFile = static_cast<DWORD>(name.size());
  dialog.lpstrInitialDir = filesPath.c_str();
  dialog.Flags = kFlags;
  const KeptDirectory keptDirectory;
  const bool isOwnerEnabled = IsWindowEnabled(owner) != FALSE;
  const bool isChosen = GetOpenFileNameW(&dialog) != FALSE;
  // Some systems' dialog enables its owner, which another window may have disabled.
  EnableWindow(owner, isOwnerEnabled);
  if (!isChosen) return std::nullopt;
  name.resize(std::min(name.find(std::wstring(2, L'\0')), name.size()));
  if (name.empty() || name.find(L'\0') != std::wstring::npos) return std::nullopt;
  filesPath = FolderOf(name);
  return name;
}

}  // namespace tellurvane
