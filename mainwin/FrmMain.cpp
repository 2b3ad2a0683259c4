#include "mainwin/FrmMain.h"

#include <windows.h>

#include <commctrl.h>

#include <utility>

#include "base/FatalError.h"
#include "base/LocaleDates.h"
#include "cmd/ModCMD.h"
#include "scheduler/Schedule.h"
#include "ui/Boundary.h"

namespace tellurvane {
namespace {

constexpr const wchar_t* kWindowClass = L"FrmMain";
constexpr UINT_PTR kTaskTimerId = 1;
constexpr int kListId = 1;
constexpr int kExitId = 2;
constexpr int kTwipsPerInch = 1'440;
constexpr int kWidthTwips = 5'320;
constexpr int kHeightTwips = 5'000;
constexpr int kExitHeight = 30;  // pixels

int PixelsFromTwips(int twips) {
  const HDC screen = GetDC(nullptr);
  const int dpi = GetDeviceCaps(screen, LOGPIXELSY);
  ReleaseDC(nullptr, screen);
  return MulDiv(twips, dpi, kTwipsPerInch);
}

void RegisterWindowClass(WNDPROC procedure) {
  WNDCLASSEXW definition = {};
  definition.cbSize = sizeof(definition);
  definition.lpfnWndProc = procedure;
  definition.hInstance = GetModuleHandleW(nullptr);
  definition.hIcon = LoadIconW(definition.hInstance, L"AAA");
  definition.hCursor = LoadCursorW(nullptr, IDC_ARROW);
  definition.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
  definition.lpszClassName = kWindowClass;
  RegisterClassExW(&definition);
}

void ProcessPendingMessages() {
  MSG message = {};
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
    if (message.message == WM_QUIT) {
      // It is the message loop's to take.
      PostQuitMessage(static_cast<int>(message.wParam));
      return;
    }
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
}

}  // namespace

FrmMain::FrmMain(ModGeneral& general)
    : general_(general),
      runner_(general.tasks, *this, *this, *this, Actions(), AppendLocaleDateText, Now) {}

FrmMain::~FrmMain() {
  if (window_ == nullptr) return;
  SetWindowLongPtrW(window_, GWLP_USERDATA, 0);
  DestroyWindow(window_);
}

TaskActions FrmMain::Actions() {
  return {.pathExists = PathExists,
          .startCommand = [](const std::wstring& commandLine) { (void)RunCommand(commandLine); },
          .showNote = [](const std::wstring&, const std::wstring&) {},
          .saveList = [this] { (void)general_.taskListFile.Save(general_.tasks); },
          .processPendingMessages = ProcessPendingMessages};
}

void FrmMain::Load() {
  InitCommonControls();
  RegisterWindowClass(WindowProc);
  const DWORD style = WS_OVERLAPPED | WS_CAPTION | WS_SYSMENU | WS_MINIMIZEBOX;
  CreateWindowExW(0, kWindowClass, kApplicationTitle, style, CW_USEDEFAULT, CW_USEDEFAULT,
                  PixelsFromTwips(kWidthTwips), PixelsFromTwips(kHeightTwips), nullptr, nullptr,
                  GetModuleHandleW(nullptr), this);
  if (window_ == nullptr) throw FatalError(L"無法建立主視窗，程式無法繼續執行。");
  ReloadTaskList();
}

void FrmMain::ReloadTaskList() {
  (void)general_.taskListFile.Load(general_.tasks);
  FillRows();
  runner_.SetTaskTimer(RowCount() > 0);
}

void FrmMain::Show() {
  ShowWindow(window_, SW_SHOWNORMAL);
  UpdateWindow(window_);
}

LRESULT CALLBACK FrmMain::WindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_NCCREATE) {
    auto* const created =
        static_cast<FrmMain*>(reinterpret_cast<CREATESTRUCTW*>(lParam)->lpCreateParams);
    created->window_ = window;
    SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(created));
  }
  auto* const self = reinterpret_cast<FrmMain*>(GetWindowLongPtrW(window, GWLP_USERDATA));
  if (self == nullptr || IsEnding()) return DefWindowProcW(window, message, wParam, lParam);
  return GuardBoundary([&] { return self->Handle(message, wParam, lParam); });
}

LRESULT FrmMain::Handle(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_CREATE:
      CreateControls();
      return 0;
    case WM_SIZE:
      Form_Resize();
      return 0;
    case WM_TIMER:
      if (wParam == kTaskTimerId) runner_.Tick();
      return 0;
    case WM_COMMAND:
      if (LOWORD(wParam) == kExitId) cmdExit_Click();
      return 0;
    case WM_CLOSE:
      if (Form_Unload()) DestroyWindow(window_);
      return 0;
    case WM_DESTROY:
      PostQuitMessage(0);
      return 0;
    case WM_NCDESTROY:
      SetWindowLongPtrW(window_, GWLP_USERDATA, 0);
      return DefWindowProcW(std::exchange(window_, nullptr), message, wParam, lParam);
    default:
      return DefWindowProcW(window_, message, wParam, lParam);
  }
}

void FrmMain::CreateControls() {
  const HINSTANCE instance = GetModuleHandleW(nullptr);
  const auto idOf = [](int id) { return reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)); };
  list_ = CreateWindowExW(WS_EX_CLIENTEDGE, WC_LISTBOXW, L"",
                          WS_CHILD | WS_VISIBLE | WS_VSCROLL | WS_TABSTOP | LBS_NOINTEGRALHEIGHT, 0,
                          0, 0, 0, window_, idOf(kListId), instance, nullptr);
  exit_ = CreateWindowExW(0, WC_BUTTONW, L"離 開", WS_CHILD | WS_VISIBLE | WS_TABSTOP, 0, 0, 0, 0,
                          window_, idOf(kExitId), instance, nullptr);
  if (list_ == nullptr || exit_ == nullptr) {
    throw FatalError(L"無法建立主視窗，程式無法繼續執行。");
  }
  for (const HWND control : {list_, exit_}) {
    SendMessageW(control, WM_SETFONT, reinterpret_cast<WPARAM>(GetStockObject(DEFAULT_GUI_FONT)),
                 TRUE);
  }
}

void FrmMain::Form_Resize() {
  RECT client = {};
  GetClientRect(window_, &client);
  const int listHeight = static_cast<int>(client.bottom) - kExitHeight;
  MoveWindow(list_, 0, 0, client.right, listHeight, TRUE);
  MoveWindow(exit_, 0, listHeight, client.right, kExitHeight, TRUE);
}

bool FrmMain::Form_Unload() {
  if (!quitFlag_) {
    ShowWindow(window_, SW_MINIMIZE);
    return false;
  }
  StopPlayback();
  (void)general_.taskListFile.Save(general_.tasks);
  (void)general_.settingsFile.Write(L"FilesPath", general_.settings.FilesPath);
  SetEnabled(false);
  if (releaseProcess_) releaseProcess_();
  return true;
}

void FrmMain::cmdExit_Click() {
  quitFlag_ = true;
  SendMessageW(window_, WM_CLOSE, 0, 0);
}

void FrmMain::FillRows() {
  SendMessageW(list_, LB_RESETCONTENT, 0, 0);
  for (size_t row = 0; row < general_.tasks.size(); ++row) {
    SendMessageW(list_, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(RowText(row).c_str()));
  }
}

std::wstring FrmMain::RowText(size_t row) const {
  const TaskRecord& task = general_.tasks[row];
  return task.Name + L"　" + ScheduleText(task) + L"　" + LocaleDateText(task.NextRun);
}

size_t FrmMain::RowCount() { return static_cast<size_t>(SendMessageW(list_, LB_GETCOUNT, 0, 0)); }

void FrmMain::SelectRow(size_t row) { SendMessageW(list_, LB_SETCURSEL, row, 0); }

void FrmMain::RefreshRow(size_t row) {
  const auto selected = SendMessageW(list_, LB_GETCURSEL, 0, 0);
  SendMessageW(list_, LB_DELETESTRING, row, 0);
  SendMessageW(list_, LB_INSERTSTRING, row, reinterpret_cast<LPARAM>(RowText(row).c_str()));
  if (selected >= 0) SendMessageW(list_, LB_SETCURSEL, static_cast<WPARAM>(selected), 0);
}

void FrmMain::EnableArea(bool enable) { EnableWindow(list_, enable); }

void FrmMain::SetRedraw(bool redraw) {
  SendMessageW(list_, WM_SETREDRAW, redraw, 0);
  if (redraw) InvalidateRect(list_, nullptr, TRUE);
}

void FrmMain::SetInterval(unsigned milliseconds) { timerMilliseconds_ = milliseconds; }

void FrmMain::SetEnabled(bool enable) {
  if (window_ == nullptr) return;
  if (enable) {
    SetTimer(window_, kTaskTimerId, timerMilliseconds_, nullptr);
  } else {
    KillTimer(window_, kTaskTimerId);
  }
}

}  // namespace tellurvane
