// Against a server in this process, by real HTTP.
#include "radio/HttpGetText.h"

#include <windows.h>

#include <gmock/gmock.h>
#include <wininet.h>
#include <winsock2.h>

#include <filesystem>
#include <fstream>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "ui/Com.h"

namespace tellurvane {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::SizeIs;

// Answers every request with the same bytes, and keeps the requests.
class Server {
 public:
  explicit Server(std::string answer) : answer_(std::move(answer)) {
    WSADATA data = {};
    EXPECT_EQ(WSAStartup(MAKEWORD(2, 2), &data), 0);
    listener_ = socket(AF_INET, SOCK_STREAM, IPPROTO_TCP);
    sockaddr_in address = {};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    EXPECT_EQ(bind(listener_, reinterpret_cast<sockaddr*>(&address), sizeof(address)), 0);
    int size = sizeof(address);
    EXPECT_EQ(getsockname(listener_, reinterpret_cast<sockaddr*>(&address), &size), 0);
    port_ = ntohs(address.sin_port);
    EXPECT_EQ(listen(listener_, SOMAXCONN), 0);
    thread_ = std::thread([this] { Serve(); });
  }
  Server(const Server&) = delete;
  Server& operator=(const Server&) = delete;
  ~Server() {
    Stop();
    WSACleanup();
  }

  // From now on connections are refused.
  void Stop() {
    if (!thread_.joinable()) return;
    shutdown(listener_, SD_BOTH);
    closesocket(listener_);
    thread_.join();
  }

  std::wstring Url(const std::wstring& path) const {
    return L"http://127.0.0.1:" + std::to_wstring(port_) + path;
  }
  std::string Host() const { return "127.0.0.1:" + std::to_string(port_); }
  std::vector<std::string> Requests() {
    const std::scoped_lock lock(mutex_);
    return requests_;
  }

 private:
  void Serve() {
    for (;;) {
      const SOCKET client = accept(listener_, nullptr, nullptr);
      if (client == INVALID_SOCKET) return;
      Answer(client);
      shutdown(client, SD_SEND);
      closesocket(client);
    }
  }

  void Answer(SOCKET client) {
    std::string request;
    char part[1'024] = {};
    while (!request.ends_with("\r\n\r\n")) {
      const int taken = recv(client, part, sizeof(part), 0);
      if (taken <= 0) return;
      request.append(part, static_cast<size_t>(taken));
    }
    {
      const std::scoped_lock lock(mutex_);
      requests_.push_back(request);
    }
    (void)send(client, answer_.data(), static_cast<int>(answer_.size()), 0);
  }

  std::string answer_;
  SOCKET listener_ = INVALID_SOCKET;
  unsigned short port_ = 0;
  std::mutex mutex_;
  std::vector<std::string> requests_;
  std::thread thread_;
};

std::string Page(const std::string& body, const std::string& head =
                                              "HTTP/1.1 200 OK\r\n"
                                              "Content-Type: text/html; "
                                              "charset=utf-8\r\n") {
  return head + "Content-Length: " + std::to_string(body.size()) + "\r\nConnection: close\r\n\r\n" +
         body;
}

class HttpGetTextTest : public testing::Test {
 protected:
  ComApartment apartment;
};

TEST_F(HttpGetTextTest, GivesThePageInUtf8) {
  const Server server(Page("a 電台 \xC3\xA9\r\n"));
  EXPECT_EQ(HttpGetText(server.Url(L"/x")), L"a 電台 é\r\n");
}

TEST_F(HttpGetTextTest, AsksAsTheAgreedBrowser) {
  Server server(Page("a"));
  HttpGetText(server.Url(L"/embed_module?reqType=GENRE_SEARCH&cnt=999&s=R&B"));
  ASSERT_THAT(server.Requests(), SizeIs(1));
  const std::string request = server.Requests().front();
  EXPECT_TRUE(
      request.starts_with("GET /embed_module?reqType=GENRE_SEARCH&cnt=999&s=R&B HTTP/1.1\r\n"))
      << request;
  EXPECT_THAT(request, HasSubstr("\r\nUser-Agent: Mozilla/5.0 (Windows; U; Windows NT 5.1; zh-en; "
                                 "rv:1.9.2) Gecko/20100115 Firefox/3.6\r\n"));
  EXPECT_THAT(request, HasSubstr("\r\nHost: " + server.Host() + "\r\n"));
}

TEST_F(HttpGetTextTest, LeavesABlankToTheSystem) {
  Server server(Page("a"));
  HttpGetText(server.Url(L"/search?search=new age"));
  ASSERT_THAT(server.Requests(), SizeIs(1));
  EXPECT_THAT(server.Requests().front(), HasSubstr("GET /search?search=new%20age HTTP/1.1\r\n"));
}

TEST_F(HttpGetTextTest, AnErrorPageIsAPageAndAnEmptyOneIsEmpty) {
  for (const char* const status : {"404 Not Found", "500 Internal Server Error", "200 OK"}) {
    const std::string head = "HTTP/1.1 " + std::string(status) + "\r\nContent-Type: text/html\r\n";
    EXPECT_EQ(HttpGetText(Server(Page("sorry", head)).Url(L"/")), L"sorry") << status;
    EXPECT_EQ(HttpGetText(Server(Page("", head)).Url(L"/")), L"") << status;
  }
}

TEST_F(HttpGetTextTest, FetchesWhatWasFetchedBeforeFromTheNetwork) {
  Server server(Page("a",
                     "HTTP/1.1 200 OK\r\nContent-Type: text/html\r\n"
                     "Cache-Control: public, max-age=86400\r\n"
                     "Expires: Fri, 31 Dec 2049 23:59:59 GMT\r\n"));
  for (const wchar_t* const path : {L"/same", L"/with a blank"}) {
    for (int round = 0; round < 3; ++round) EXPECT_EQ(HttpGetText(server.Url(path)), L"a");
  }
  EXPECT_THAT(server.Requests(), SizeIs(6));
}

TEST_F(HttpGetTextTest, TakesTheAddressOutOfTheSystemsCache) {
  Server server(Page("a"));
  server.Stop();
  const std::wstring url = server.Url(L"/kept");
  wchar_t file[MAX_PATH] = {};
  ASSERT_TRUE(CreateUrlCacheEntryW(url.c_str(), 1, L"htm", file, 0));
  { const std::ofstream content(std::filesystem::path{file}); }
  ASSERT_TRUE(CommitUrlCacheEntryW(url.c_str(), file, {}, {}, NORMAL_CACHE_ENTRY, nullptr, 0,
                                   nullptr, nullptr));
  const auto isKept = [&] {
    DWORD size = 0;
    (void)GetUrlCacheEntryInfoW(url.c_str(), nullptr, &size);
    return GetLastError() == ERROR_INSUFFICIENT_BUFFER;
  };
  ASSERT_TRUE(isKept());
  // Refused: what is gone was not merely replaced.
  EXPECT_THROW(HttpGetText(url), FetchError);
  EXPECT_FALSE(isKept());
}

TEST_F(HttpGetTextTest, FollowsAPageElsewhere) {
  Server there(Page("moved here"));
  const std::wstring place = there.Url(L"/there");
  const std::string location(place.begin(), place.end());
  const Server here(Page("", "HTTP/1.1 302 Found\r\nLocation: " + location + "\r\n"));
  EXPECT_EQ(HttpGetText(here.Url(L"/here")), L"moved here");
  EXPECT_THAT(there.Requests(), SizeIs(1));
}

TEST_F(HttpGetTextTest, HalfAPageIsThatHalf) {
  const Server server(
      "HTTP/1.1 200 OK\r\nContent-Type: text/html\r\nContent-Length: 1000\r\n"
      "Connection: close\r\n\r\nhalf");
  EXPECT_EQ(HttpGetText(server.Url(L"/")), L"half");
}

TEST_F(HttpGetTextTest, ARefusedConnectionIsAnErrorWithTheSystemsCode) {
  Server server(Page("a"));
  server.Stop();
  try {
    HttpGetText(server.Url(L"/"));
    ADD_FAILURE() << "no error";
  } catch (const FetchError& error) {
    EXPECT_TRUE(FAILED(error.Code()));
    EXPECT_STRNE(error.what(), "");
  }
}

TEST_F(HttpGetTextTest, WhatIsNoAddressIsAnError) {
  for (const wchar_t* const address : {L"", L"no address", L"http://", L"none-such://x/"}) {
    EXPECT_THROW(HttpGetText(address), FetchError) << testing::PrintToString(address);
  }
}

TEST_F(HttpGetTextTest, WorksManyTimesInARow) {
  Server server(Page("a"));
  for (int i = 0; i < 50; ++i) EXPECT_EQ(HttpGetText(server.Url(L"/" + std::to_wstring(i))), L"a");
  EXPECT_THAT(server.Requests(), SizeIs(50));
}

TEST(HttpGetTextWithoutCom, IsAnError) {
  std::thread([] { EXPECT_THROW(HttpGetText(L"http://127.0.0.1/"), FetchError); }).join();
}

}  // namespace
}  // namespace tellurvane
