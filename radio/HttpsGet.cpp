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
constexpr const wchar_t* kTooLate = L"電台目錄沒有在時限內回應，請稍後再試一次。";
// Authentication is left to the system: a proxy may ask for the user's own.
constexpr DWORD kRequestFlags = INTERNET_FLAG_SECURE | INTERNET_FLAG_RELOAD |
                                INTERNET_FLAG_NO_CACHE_WRITE | INTERNET_FLAG_NO_COOKIES |
                                INTERNET_FLAG_NO_UI | INTERNET_FLAG_NO_AUTO_REDIRECT;
// Each ends a silent call of a thread that is no longer waited for. They are set for the session:
// Wine has them for a request only, and there one that passes in a TLS handshake ends the process.
constexpr DWORD kTimeOuts[] = {INTERNET_OPTION_CONNECT_TIMEOUT, INTERNET_OPTION_SEND_TIMEOUT,
                               INTERNET_OPTION_RECEIVE_TIMEOUT};
constexpr DWORD kTimeOutMilliseconds = 5'000;

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
    case ERROR_INTERNET_TIMEOUT:
      return DirectoryError(kTooLate);
    case ERROR_NOT_ENOUGH_MEMORY:
      return DirectoryError(kTooLargeAnswer);
    default:
      return DirectoryError(UnreachableText(result));
  }
}

// One request, on a thread of its own. The waiting thread may give up during one of its calls, but
// it never closes the request: another one could get the same handle, and the call would use that.
class Transfer {
 public:
  // Only makes the handles; throws DirectoryError.
  Transfer(const std::wstring& host, const std::wstring& path);

  void Run() noexcept;
  // From the waiting thread. Run returns after its current call.
  void Cancel() { isCancelled_ = true; }
  // After Run.
  std::string TakeBody();

 private:
  void Download();

  UniqueInternetHandle session_;
  UniqueInternetHandle connection_;
  UniqueInternetHandle request_;
  std::atomic<bool> isCancelled_ = false;
  DWORD error_ = ERROR_SUCCESS;
  DWORD status_ = 0;
  std::string body_;
};

Transfer::Transfer(const std::wstring& host, const std::wstring& path)
    : session_(InternetOpenW(kUserAgent, INTERNET_OPEN_TYPE_PRECONFIG, nullptr, nullptr, 0)) {
  if (!session_) throw ErrorOf(GetLastError());
  for (const DWORD option : kTimeOuts) {
    DWORD milliseconds = kTimeOutMilliseconds;
    // The waiting thread has its own limit, so the request works without these.
    (void)InternetSetOptionW(session_.Get(), option, &milliseconds, sizeof(milliseconds));
  }
  connection_.Reset(InternetConnectW(session_.Get(), host.c_str(), INTERNET_DEFAULT_HTTPS_PORT,
                                     nullptr, nullptr, INTERNET_SERVICE_HTTP, 0, 0));
  if (!connection_) throw ErrorOf(GetLastError());
  request_.Reset(HttpOpenRequestW(connection_.Get(), L"GET", path.c_str(), nullptr, nullptr,
                                  nullptr, kRequestFlags, 0));
  if (!request_) throw ErrorOf(GetLastError());
}

void Transfer::Run() noexcept {
  try {
    if (!isCancelled_) Download();
  } catch (const std::bad_alloc&) {
    error_ = ERROR_NOT_ENOUGH_MEMORY;
  }
}

void Transfer::Download() {
  DWORD size = sizeof(status_);
  if (HttpSendRequestW(request_.Get(), nullptr, 0, nullptr, 0) == FALSE ||
      HttpQueryInfoW(request_.Get(), HTTP_QUERY_STATUS_CODE | HTTP_QUERY_FLAG_NUMBER, &status_,
                     &size, nullptr) == FALSE) {
    error_ = GetLastError();
  } else if (status_ == 0) {
    // As under Wine when the server hangs up without an answer.
    error_ = ERROR_HTTP_INVALID_SERVER_RESPONSE;
  }
  std::array<char, 16'384> buffer = {};
  while (error_ == ERROR_SUCCESS && status_ == HTTP_STATUS_OK && !isCancelled_) {
    DWORD read = 0;
    if (InternetReadFile(request_.Get(), buffer.data(), static_cast<DWORD>(buffer.size()), &read) ==
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

// Whether the thread ends in time. Messages that other threads send are handled meanwhile, so that
// the end of the session is answered; posted ones stay in the queue.
bool HasEnded(HANDLE thread, ULONGLONG milliseconds) {
  const ULONGLONG end = GetTickCount64() + milliseconds;
  for (;;) {
    const ULONGLONG now = GetTickCount64();
    const DWORD left = now < end ? static_cast<DWORD>(end - now) : 0;
    const DWORD woken =
        MsgWaitForMultipleObjectsEx(1, &thread, left, QS_SENDMESSAGE, MWMO_INPUTAVAILABLE);
    if (woken != WAIT_OBJECT_0 + 1) return woken == WAIT_OBJECT_0;
    MSG message = {};
    PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE | PM_QS_SENDMESSAGE);
  }
}

}  // namespace

// The system's time-outs restart with every byte and do not cover the search for the host, so the
// waiting thread keeps the limit.
std::string HttpsGet(const std::wstring& host, const std::wstring& path,
                     std::chrono::milliseconds limit) {
  const auto transfer = std::make_shared<Transfer>(host, path);
  auto context = std::make_unique<SharedTransfer>(transfer);
  const UniqueKernelHandle thread(CreateThread(nullptr, 0, RunTransfer, context.get(), 0, nullptr));
  if (!thread) throw ErrorOf(GetLastError());
  (void)context.release();  // the thread deletes it
  if (!HasEnded(thread.Get(), static_cast<ULONGLONG>(limit.count()))) {
    transfer->Cancel();
    throw DirectoryError(kTooLate);
  }
  return transfer->TakeBody();
}

}  // namespace tellurvane
