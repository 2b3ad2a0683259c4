// No request leaves the program: sending and receiving are replaced. The whole program's tests use
// a server.
#include "radio/HttpsGet.h"

#include <windows.h>

#include <gtest/gtest.h>
#include <wininet.h>

#include <map>
#include <new>

#include "radio/DirectoryError.h"
#include "tests/support/FailingImport.h"
#include "ui/Handle.h"

namespace tellurvane {
namespace {

using namespace std::chrono_literals;

constexpr const wchar_t* kUnreachable = L"無法連線到電台目錄，請稍後再試一次。（錯誤 0x80072EFD）";
constexpr const wchar_t* kTooLate = L"電台目錄沒有在時限內回應，請稍後再試一次。";

struct WindowTraits {
  using Type = HWND;
  static void Close(Type window) { DestroyWindow(window); }
};

// The replacements run on the thread of the request, so they are functions without an object.
DWORD sendError = ERROR_SUCCESS;
HANDLE sendsAfter = nullptr;    // an event
HWND sendsMessageTo = nullptr;  // and is answered with the length of its text
DWORD_PTR messageAnswer = 0;
int readable = 0;  // bytes
std::map<DWORD, DWORD> timeOuts;
bool isMemoryFull = false;

BOOL WINAPI SetOption(HINTERNET, DWORD option, LPVOID value, DWORD) {
  timeOuts[option] = *static_cast<const DWORD*>(value);
  return TRUE;
}

BOOL WINAPI Send(HINTERNET, LPCWSTR, DWORD, LPVOID, DWORD) {
  if (sendsAfter != nullptr) WaitForSingleObject(sendsAfter, INFINITE);
  if (sendsMessageTo != nullptr) {
    SendMessageTimeoutW(sendsMessageTo, WM_GETTEXTLENGTH, 0, 0, SMTO_NORMAL, 3'000, &messageAnswer);
  }
  SetLastError(sendError);
  return sendError == ERROR_SUCCESS ? TRUE : FALSE;
}

BOOL WINAPI QueryStatus(HINTERNET, DWORD, LPVOID status, LPDWORD, LPDWORD) {
  *static_cast<DWORD*>(status) = HTTP_STATUS_OK;
  return TRUE;
}

BOOL WINAPI Read(HINTERNET, LPVOID data, DWORD, LPDWORD size) {
  if (isMemoryFull) throw std::bad_alloc();
  *size = readable > 0 ? 1 : 0;
  *static_cast<char*>(data) = static_cast<char>('a' + readable--);
  return TRUE;
}

class HttpsGetTest : public testing::Test {
 protected:
  HttpsGetTest() {
    sendError = ERROR_SUCCESS;
    sendsAfter = nullptr;
    sendsMessageTo = nullptr;
    messageAnswer = 0;
    readable = 2;
    timeOuts.clear();
    isMemoryFull = false;
    option.Replace(SetOption);
    send.Replace(Send);
    query.Replace(QueryStatus);
    read.Replace(Read);
  }

  // Empty when it succeeds.
  static std::wstring Reason(std::chrono::milliseconds limit = 5s) {
    try {
      EXPECT_EQ(HttpsGet(L"radio.invalid", L"/", limit), "cb");
      return L"";
    } catch (const DirectoryError& error) {
      return error.Text();
    }
  }

  FailingImport open{{"InternetOpenW", 0, ERROR_INTERNET_CANNOT_CONNECT}};
  FailingImport option{{"InternetSetOptionW"}};
  FailingImport connect{{"InternetConnectW", 0, ERROR_INTERNET_CANNOT_CONNECT}};
  FailingImport request{{"HttpOpenRequestW", 0, ERROR_INTERNET_CANNOT_CONNECT}};
  FailingImport thread{{"CreateThread", 0, ERROR_INTERNET_CANNOT_CONNECT}};
  FailingImport send{{"HttpSendRequestW", 0, ERROR_INTERNET_CANNOT_CONNECT}};
  FailingImport query{{"HttpQueryInfoW", 0, ERROR_INTERNET_CANNOT_CONNECT}};
  FailingImport read{{"InternetReadFile", 0, ERROR_INTERNET_CANNOT_CONNECT}};
  FailingImport close{{"InternetCloseHandle"}};
};

TEST_F(HttpsGetTest, GivesTheReasonOfEachCallAndClosesTheHandles) {
  const struct {
    FailingImport& call;
    int handles;
  } rows[] = {{open, 0}, {connect, 1}, {request, 2}, {thread, 3}, {send, 3}, {query, 3}, {read, 3}};
  for (const auto& row : rows) {
    close.LetAllThrough();
    row.call.Fail(1);
    EXPECT_EQ(Reason(), kUnreachable) << &row - rows;
    EXPECT_EQ(close.Calls(), row.handles) << &row - rows;
  }
  EXPECT_EQ(Reason(), L"");
}

TEST_F(HttpsGetTest, HasTimeOutsForAThreadThatIsNotWaitedFor) {
  EXPECT_EQ(Reason(), L"");
  const std::map<DWORD, DWORD> expected = {{INTERNET_OPTION_CONNECT_TIMEOUT, 5'000},
                                           {INTERNET_OPTION_SEND_TIMEOUT, 5'000},
                                           {INTERNET_OPTION_RECEIVE_TIMEOUT, 5'000}};
  EXPECT_EQ(timeOuts, expected);
}

TEST_F(HttpsGetTest, NamesTimeCertificateAndMemory) {
  const struct {
    DWORD error;
    const wchar_t* reason;
  } rows[] = {
      {ERROR_INTERNET_TIMEOUT, kTooLate},
      {ERROR_INTERNET_INVALID_CA, L"電台目錄的安全憑證無效，已停止連線。（錯誤 0x80072F0D）"},
      {ERROR_NOT_ENOUGH_MEMORY, kTooLargeAnswer},
  };
  for (const auto& row : rows) {
    sendError = row.error;
    EXPECT_EQ(Reason(), row.reason) << row.error;
  }
  sendError = ERROR_SUCCESS;
  isMemoryFull = true;
  EXPECT_EQ(Reason(), kTooLargeAnswer);
}

TEST_F(HttpsGetTest, LeavesTheHandlesOfALateRequestToItsThread) {
  const UniqueKernelHandle released(CreateEventW(nullptr, TRUE, FALSE, nullptr));
  sendsAfter = released.Get();
  EXPECT_EQ(Reason(50ms), kTooLate);
  EXPECT_EQ(close.Calls(), 0);
  SetEvent(released.Get());
  for (int i = 0; i < 500 && close.Calls() < 3; ++i) Sleep(10);
  EXPECT_EQ(close.Calls(), 3);
  EXPECT_EQ(read.Calls(), 0);
}

TEST_F(HttpsGetTest, AnswersSentMessagesAndLeavesPostedOnesInTheQueue) {
  const UniqueHandle<WindowTraits> window(CreateWindowExW(0, L"STATIC", L"abc", 0, 0, 0, 0, 0,
                                                          HWND_MESSAGE, nullptr, nullptr, nullptr));
  sendsMessageTo = window.Get();
  PostMessageW(window.Get(), WM_APP, 0, 0);
  EXPECT_EQ(Reason(), L"");
  EXPECT_EQ(messageAnswer, 3U);
  MSG message = {};
  EXPECT_TRUE(PeekMessageW(&message, window.Get(), WM_APP, WM_APP, PM_REMOVE));
}

TEST(HttpsGetToNoHostTest, SaysThatItCannotBeReached) {
  for (const std::wstring& host : {std::wstring(70, L'n') + L".invalid", std::wstring()}) {
    const auto get = [&] { HttpsGet(host, L"/", 5s); };
    EXPECT_THROW(get(), DirectoryError);
  }
}

}  // namespace
}  // namespace tellurvane
