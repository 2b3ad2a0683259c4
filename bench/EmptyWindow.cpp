// The least that a program with a window can be: the measure for start-up and memory.
#include <windows.h>

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, PWSTR, int) {
  WNDCLASSEXW definition = {};
  definition.cbSize = sizeof(definition);
  definition.lpfnWndProc = DefWindowProcW;
  definition.hInstance = instance;
  definition.hCursor = LoadCursorW(nullptr, IDC_ARROW);
  definition.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
  definition.lpszClassName = L"EmptyWindow";
  RegisterClassExW(&definition);
  const HWND window =
      CreateWindowExW(0, definition.lpszClassName, L"EmptyWindow", WS_OVERLAPPEDWINDOW,
                      CW_USEDEFAULT, CW_USEDEFAULT, 360, 340, nullptr, nullptr, instance, nullptr);
  if (window == nullptr) return 1;
  ShowWindow(window, SW_SHOWNORMAL);
  UpdateWindow(window);
  MSG message = {};
  while (GetMessageW(&message, nullptr, 0, 0) > 0) {
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
  return 0;
}
