#include "app/ModGeneral.h"

#include <windows.h>

#include <gtest/gtest.h>

#include "ui/Handle.h"

namespace tellurvane {
namespace {

// Another copy's mutex.
UniqueKernelHandle MutexOfAnotherCopy(SECURITY_DESCRIPTOR* security) {
  SECURITY_ATTRIBUTES attributes = {sizeof(SECURITY_ATTRIBUTES), security, FALSE};
  UniqueKernelHandle mutex(CreateMutexW(&attributes, FALSE, kApplicationTitle));
  EXPECT_TRUE(mutex && GetLastError() != ERROR_ALREADY_EXISTS);
  return mutex;
}

class ClaimInstanceTest : public testing::Test {
 protected:
  void TearDown() override { ReleaseInstance(); }
};

TEST_F(ClaimInstanceTest, TheFirstCopyTakesAndReleasesIt) {
  EXPECT_TRUE(ClaimInstance());
  ReleaseInstance();
  EXPECT_TRUE(ClaimInstance());
}

TEST_F(ClaimInstanceTest, ASecondCopyDoesNotGetIt) {
  UniqueKernelHandle another = MutexOfAnotherCopy(nullptr);
  ReleaseInstance();
  EXPECT_FALSE(ClaimInstance());
  another.Reset();
  EXPECT_TRUE(ClaimInstance()) << "the failed attempt must not hold it";
}

TEST_F(ClaimInstanceTest, AMutexWithoutAccessIsHeldByAnother) {
  // An empty list of permissions denies everybody.
  ACL nobody = {};
  SECURITY_DESCRIPTOR security = {};
  ASSERT_TRUE(InitializeAcl(&nobody, sizeof(nobody), ACL_REVISION));
  ASSERT_TRUE(InitializeSecurityDescriptor(&security, SECURITY_DESCRIPTOR_REVISION));
  ASSERT_TRUE(SetSecurityDescriptorDacl(&security, TRUE, &nobody, FALSE));
  UniqueKernelHandle another = MutexOfAnotherCopy(&security);
  const UniqueKernelHandle seen(CreateMutexW(nullptr, TRUE, kApplicationTitle));
  ASSERT_FALSE(seen);
  ASSERT_EQ(GetLastError(), static_cast<DWORD>(ERROR_ACCESS_DENIED));
  EXPECT_FALSE(ClaimInstance());
  another.Reset();
  EXPECT_TRUE(ClaimInstance());
}

}  // namespace
}  // namespace tellurvane
