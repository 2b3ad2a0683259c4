#include "base/FatalError.h"

#include <gtest/gtest.h>

namespace tellurvane {
namespace {

TEST(FatalErrorTest, KeepsItsMessageWhereItIsCaughtAsAnyException) {
  try {
    throw FatalError(L"無法繼續");
  } catch (const std::exception& error) {
    EXPECT_STREQ(error.what(), "fatal error");
    const auto* const fatal = dynamic_cast<const FatalError*>(&error);
    ASSERT_NE(fatal, nullptr);
    EXPECT_EQ(fatal->Message(), L"無法繼續");
  }
}

}  // namespace
}  // namespace tellurvane
