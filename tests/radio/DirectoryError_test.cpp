#include "radio/DirectoryError.h"

#include <gtest/gtest.h>

namespace tellurvane {
namespace {

TEST(DirectoryErrorTest, NamesTheCauseAsTheSystemNumbersIt) {
  EXPECT_EQ(UnreachableText(0x80072EE7U),
            L"無法連線到電台目錄，請稍後再試一次。（錯誤 0x80072EE7）");
  EXPECT_EQ(UnreachableText(5), L"無法連線到電台目錄，請稍後再試一次。（錯誤 0x00000005）");
  EXPECT_EQ(BadCertificateText(0x80072F0DU),
            L"電台目錄的安全憑證無效，已停止連線。（錯誤 0x80072F0D）");
  EXPECT_EQ(DirectoryError(L"甲").Text(), L"甲");
  EXPECT_STRNE(DirectoryError(L"甲").what(), "");
}

}  // namespace
}  // namespace tellurvane
