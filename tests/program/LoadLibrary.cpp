// Loads a library by its name and does nothing else: LoadLibrary NAME
#include <windows.h>

int wmain(int argumentCount, wchar_t** arguments) {
  return argumentCount == 2 && LoadLibraryW(arguments[1]) != nullptr ? 0 : 1;
}
