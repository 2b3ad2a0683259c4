#include "app/FatalReport.h"

#include <windows.h>

#include <new>

#include "app/ModGeneral.h"
#include "base/FatalError.h"
#include "ui/clsNotifyIcon.h"

namespace tellurvane {
namespace {

// Valid as long as the error. Makes no string, since memory may be short. The texts of other
// exceptions mean nothing to the user.
const wchar_t* MessageOf(const std::exception_ptr& error) {
  try {
    std::rethrow_exception(error);
  } catch (const FatalError& fatal) {
    return fatal.Message().c_str();
  } catch (const std::bad_alloc&) {
    return L"記憶體不足，程式無法繼續執行。";
  } catch (...) {
    return L"發生未預期的錯誤，程式無法繼續執行。";
  }
}

}  // namespace

void ReportFatal(const std::exception_ptr& error) {
  clsNotifyIcon::DeleteAll();
  MessageBoxW(nullptr, MessageOf(error), kApplicationTitle,
              MB_OK | MB_ICONERROR | MB_TASKMODAL | MB_SETFOREGROUND);
  // After the box: until then this copy holds its files.
  ReleaseInstance();
  ExitProcess(1);
}

}  // namespace tellurvane
