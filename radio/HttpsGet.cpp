#include "radio/HttpsGet.h"

#include <windows.h>

#include <wininet.h>

#include <array>
#include <atomic>
#include <memory>
#include <new>

#include "radio/DirectoryError.h"
#include "ui/Handle.h"

namespace tellurvane {
namespace {

constexpr const wchar_t* kUserAgent = L"Tellurvane/" TELLURVANE_VERSION;
constexpr DWORD kRequestFlags = INTERNET_FLAG_SECURE | INTERNET_FLAG_RELOAD |
                                INTERNET_FLAG_NO_CACHE_WRITE | INTERNET_FLAG_NO_COOKIES |
                                INTERNET_FLAG_NO_AUTH | INTERNET_FLAG_NO_UI |
                                INTERNET_FLAG_NO_AUTO_REDIRECT;

struct InternetHandleTraits {
  using Type = HINTERNET;
  static void Close(Type handle) { InternetCloseHandle(handle); }
};
using UniqueInternetHandle = UniqueHandle<InternetHandleTraits>;

DirectoryError ErrorOf(DWORD code) {
  const auto result = static_cast<std::uint32_t>(HRESULT_FROM_WIN32(code));
  switch (code) {
    case ERROR_INTERNET_SEC_CERT_DATE_INVALID:
    case ERROR_INTERNET_SEC_CERT_CN_INVALID:
    case ERROR_INTERNET_INVALID_CA:
    case ERROR_INTERNET_SEC_CERT_ERRORS:
    case ERROR_INTERNET_SEC_CERT_NO_REV:
    case ERROR_INTERNET_SEC_CERT_REV_FAILED:
    case ERROR_INTERNET_SEC_INVALID_CERT:
    case ERROR_INTERNET_SEC_CERT_REVOKED:
      return DirectoryError(BadCertificateText(result));
    default:
      return DirectoryError(UnreachableText(result));
  }
}

// One request. The thread that waits for it may give up while the other one is still in a call.
class Transfer {
 public:
  // Only makes the handles; throws DirectoryError.
  Transfer(const std::wstring& host, const std::wstring& path);
  Transfer(const Transfer&) = delete;
  Transfer& operator=(const Transfer&) = delete;
  ~Transfer() { CloseRequest(); }

  // On the thread of its own.
  void Run() noexcept;
  // On the thread that no longer waits.
  void Cancel() {
    isCancelled_ = true;
    CloseRequest();
  }
  // After Run.
  std::string TakeBody();

 private:
  void Download(HINTERNET request);
  void CloseRequest() {
    if (const HINTERNET request = request_.exchange(nullptr)) InternetCloseHandle(request);
  }

  UniqueInternetHandle session_;
  UniqueInternetHandle connection_;
  std::atomic<HINTERNET> request_ = nullptr;
  std::atomic<bool> isCancelled_ = false;
  DWORD error_ = ERROR_SUCCESS;
  DWORD status_ = 0;
  std::string body_;
};

Transfer::Transfer(const std::wstring& host, const std::wstring& path)
    : session_(InternetOpenW(kUserAgent, INTERNET_OPEN_TYPE_PRECONFIG, nullptr, nullptr, 0)) {
  if (!session_) throw ErrorOf(GetLastError());
  connection_.Reset(InternetConnectW(session_.Get(), host.c_str(), INTERNET_DEFAULT_HTTPS_PORT,
                                     nullptr, nullptr, INTERNET_SERVICE_HTTP, 0, 0));
  if (!connection_) throw ErrorOf(GetLastError());
  request_ = HttpOpenRequestW(connection_.Get(), L"GET", path.c_str(), nullptr, nullptr, nullptr,
                              kRequestFlags, 0);
  if (request_ == nullptr) throw ErrorOf(GetLastError());
}

void Transfer::Run() noexcept {
  try {
    if (const HINTERNET request = request_) Download(request);
  } catch (const std::bad_alloc&) {
    error_ = ERROR_NOT_ENOUGH_MEMORY;
  }
}

// Makes no further call once it is cancelled: another request may have the handle's value by then.
void Transfer::Download(HINTERNET request) {
  DWORD size = sizeof(status_);
  if (HttpSendRequestW(request, nullptr, 0, nullptr, 0) == FALSE) {
    error_ = GetLastError();
    return;
  }
  if (isCancelled_) return;
  if (HttpQueryInfoW(request, HTTP_QUERY_STATUS_CODE | HTTP_QUERY_FLAG_NUMBER, &status_, &size,
                     nullptr) == FALSE) {
    error_ = GetLastError();
  } else if (status_ == 0) {
    // As under Wine when the server hangs up without an answer.
    error_ = ERROR_HTTP_INVALID_SERVER_RESPONSE;
  }
  std::array<char, 16'384> buffer = {};
  while (error_ == ERROR_SUCCESS && status_ == HTTP_STATUS_OK && !isCancelled_) {
    DWORD read = 0;
    if (InternetReadFile(request, buffer.data(), static_cast<DWORD>(buffer.size()), &read) ==
        FALSE) {
      error_ = GetLastError();
    }
    if (read == 0) return;
    body_.append(buffer.data(), read);
    if (body_.size() > kMostAnswerBytes) return;
  }
}

std::string Transfer::TakeBody() {
  if (error_ != ERROR_SUCCESS) throw ErrorOf(error_);
  if (status_ != HTTP_STATUS_OK) {
    throw DirectoryError(L"電台目錄回應錯誤（HTTP " + std::to_wstring(status_) +
                         L"），請稍後再試一次。");
  }
  if (body_.size() > kMostAnswerBytes) throw DirectoryError(kTooLargeAnswer);
  return std::move(body_);
}

using SharedTransfer = std::shared_ptr<Transfer>;

DWORD WINAPI RunTransfer(void* context) {
  const std::unique_ptr<SharedTransfer> transfer(static_cast<SharedTransfer*>(context));
  (*transfer)->Run();
  return 0;
}

}  // namespace

// On a thread of its own. The time-outs that can be set for a request restart with every byte, and
// they do not cover the search for the host; under Wine they have no effect at all.
std::string HttpsGet(const std::wstring& host, const std::wstring& path,
                     std::chrono::milliseconds limit) {
  const auto transfer = std::make_shared<Transfer>(host, path);
  auto context = std::make_unique<SharedTransfer>(transfer);
  const UniqueKernelHandle thread(CreateThread(nullptr, 0, RunTransfer, context.get(), 0, nullptr));
  if (!thread) throw ErrorOf(GetLastError());
  (void)context.release();  // the thread deletes it
  if (WaitForSingleObject(thread.Get(), static_cast<DWORD>(limit.count())) != WAIT_OBJECT_0) {
    transfer->Cancel();
    throw DirectoryError(L"電台目錄沒有在時限內回應，請稍後再試一次。");
  }
  return transfer->TakeBody();
}

}  // namespace tellurvane
