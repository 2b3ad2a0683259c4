// A library that writes a file when it is loaded: "<its own path>.loaded".
#include <windows.h>

#include <string>

BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID) {
  if (reason == DLL_PROCESS_ATTACH) {
    wchar_t path[1'024] = {};
    GetModuleFileNameW(instance, path, static_cast<DWORD>(std::size(path)));
    CloseHandle(CreateFileW((std::wstring(path) + L".loaded").c_str(), GENERIC_WRITE, 0, nullptr,
                            CREATE_ALWAYS, 0, nullptr));
  }
  return TRUE;
}
