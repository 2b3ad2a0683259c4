// Lists the rows of another process's list view, one JSON array of texts a line:
//   ListRows WINDOW COLUMNS
// Asked for in that process's own memory, which is where a list view writes its answer.
#include <windows.h>

#include <commctrl.h>

#include <cstdio>
#include <cstdlib>
#include <string>

#include "tests/program/Json.h"

namespace {

constexpr size_t kTextUnits = 2'048;

struct Request {
  LVITEMW item;
  wchar_t text[kTextUnits];
};

class ListOfAnotherProcess {
 public:
  explicit ListOfAnotherProcess(HWND list) : list_(list) {
    DWORD id = 0;
    GetWindowThreadProcessId(list, &id);
    process_ = OpenProcess(PROCESS_VM_OPERATION | PROCESS_VM_READ | PROCESS_VM_WRITE, FALSE, id);
    place_ = static_cast<Request*>(
        VirtualAllocEx(process_, nullptr, sizeof(Request), MEM_COMMIT, PAGE_READWRITE));
  }
  ListOfAnotherProcess(const ListOfAnotherProcess&) = delete;
  ListOfAnotherProcess& operator=(const ListOfAnotherProcess&) = delete;
  ~ListOfAnotherProcess() {
    VirtualFreeEx(process_, place_, 0, MEM_RELEASE);
    CloseHandle(process_);
  }

  bool IsReady() const { return place_ != nullptr; }

  int Rows() const { return static_cast<int>(SendMessageW(list_, LVM_GETITEMCOUNT, 0, 0)); }

  // False where the list has no answer.
  bool Text(int row, int column, Request& request) const {
    request = {};
    request.item.iSubItem = column;
    request.item.pszText = place_->text;
    request.item.cchTextMax = static_cast<int>(kTextUnits);
    return WriteProcessMemory(process_, place_, &request, sizeof(request), nullptr) != 0 &&
           SendMessageW(list_, LVM_GETITEMTEXTW, static_cast<WPARAM>(row),
                        reinterpret_cast<LPARAM>(&place_->item)) >= 0 &&
           ReadProcessMemory(process_, place_, &request, sizeof(request), nullptr) != 0;
  }

 private:
  HWND list_;
  HANDLE process_ = nullptr;
  Request* place_ = nullptr;
};

}  // namespace

int wmain(int argumentCount, wchar_t** arguments) {
  if (argumentCount != 3) return 2;
  const ListOfAnotherProcess list(
      reinterpret_cast<HWND>(static_cast<ULONG_PTR>(std::wcstoull(arguments[1], nullptr, 10))));
  const int columns = static_cast<int>(std::wcstol(arguments[2], nullptr, 10));
  if (!list.IsReady()) return 1;
  static Request request;
  for (int row = 0; row < list.Rows(); ++row) {
    std::string line;
    for (int column = 0; column < columns; ++column) {
      if (!list.Text(row, column, request)) return 1;
      line += (column == 0 ? "[" : ", ") + Json(request.text);
    }
    std::puts((line + "]").c_str());
  }
  return 0;
}
