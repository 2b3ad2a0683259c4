// Saves one list after the other until it is killed:
//   SaveLoop LIST-FILE SHARE-NAME FIRST-GENERATION
#include "tests/scheduler/SaveLoop.h"

#include <windows.h>

#include <cwchar>

int wmain(int argumentCount, wchar_t** arguments) {
  using namespace tellurvane;
  if (argumentCount != 4) return 2;
  const HANDLE mapping = OpenFileMappingW(FILE_MAP_WRITE, FALSE, arguments[2]);
  if (mapping == nullptr) return 3;
  auto* const share = static_cast<SaveLoopShare*>(
      MapViewOfFile(mapping, FILE_MAP_WRITE, 0, 0, sizeof(SaveLoopShare)));
  if (share == nullptr) return 4;

  Win32FileOperations files;
  TaskListFile file = RealTaskListFile(files, arguments[1]);
  for (auto generation = static_cast<std::uint32_t>(std::wcstoul(arguments[3], nullptr, 10));;
       ++generation) {
    if (file.Save(ListOfGeneration(generation))) {
      share->acknowledged = generation;
    } else {
      ++share->failures;
    }
  }
}
