// Requests that fail at once. The whole program's tests answer them with a server.
#include "radio/HttpsGet.h"

#include <gtest/gtest.h>

#include "radio/DirectoryError.h"

namespace tellurvane {
namespace {

using namespace std::chrono_literals;

TEST(HttpsGetTest, WaitsNoLongerThanItIsTold) {
  try {
    HttpsGet(L"127.0.0.1", L"/", 0s);
    ADD_FAILURE() << "there was no time";
  } catch (const DirectoryError& error) {
    EXPECT_EQ(error.Text(), L"電台目錄沒有在時限內回應，請稍後再試一次。");
  }
}

TEST(HttpsGetTest, ReportsAServerThatCannotBeReached) {
  const std::wstring noHost = std::wstring(70, L'n') + L".invalid";
  for (const std::wstring& host : {std::wstring(L"127.0.0.1"), noHost, std::wstring()}) {
    try {
      HttpsGet(host, L"/", 5s);
      ADD_FAILURE() << "nobody listens there";
    } catch (const DirectoryError& error) {
      EXPECT_TRUE(error.Text().starts_with(L"無法連線到電台目錄，請稍後再試一次。（錯誤 0x8007"))
          << testing::PrintToString(error.Text());
    }
  }
}

}  // namespace
}  // namespace tellurvane
