#include "tests/support/SourceTree.h"

#ifdef _WIN32
#include <windows.h>
#endif

namespace tellurvane {
namespace {

std::filesystem::path SourceTree() {
#ifdef _WIN32
  // No path of the machine that built the program: the kit is for other machines. The folder is the
  // nearest one above the program that holds the files.
  std::wstring program(32'768, L'\0');
  program.resize(GetModuleFileNameW(nullptr, program.data(), static_cast<DWORD>(program.size())));
  std::filesystem::path folder(program);
  do {
    folder = folder.parent_path();
  } while (folder.has_relative_path() && !exists(folder / "resources/icon101.ico"));
  return folder;
#else
  return TELLURVANE_SOURCE_DIR;
#endif
}

}  // namespace

std::filesystem::path SourceFile(const std::string& path) {
  return (SourceTree() / path).make_preferred();
}

}  // namespace tellurvane
