#include "app/Autostart.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <string>

#include "ui/Handle.h"

namespace tellurvane {
namespace {

constexpr const wchar_t* kKey = L"Software\\Microsoft\\Windows\\CurrentVersion\\Run";

struct StoredValue {
  LSTATUS status = ERROR_SUCCESS;
  DWORD type = 0;
  std::wstring text;
};

StoredValue Stored() {
  StoredValue value;
  HKEY opened = nullptr;
  value.status = RegOpenKeyExW(HKEY_LOCAL_MACHINE, kKey, 0, KEY_QUERY_VALUE, &opened);
  const UniqueKey key(opened);
  std::wstring text(1'024, L'\0');
  auto size = static_cast<DWORD>(text.size() * sizeof(wchar_t));
  if (value.status == ERROR_SUCCESS) {
    value.status = RegQueryValueExW(key.Get(), L"RunTellurvane", nullptr, &value.type,
                                    reinterpret_cast<BYTE*>(text.data()), &size);
  }
  if (value.status == ERROR_SUCCESS) value.text = text.substr(0, size / sizeof(wchar_t));
  // The system adds a terminator that it finds behind the text that it was given.
  if (value.text.ends_with(L'\0')) value.text.pop_back();
  return value;
}

class AutostartTest : public testing::Test {
 protected:
  void SetUp() override { ASSERT_TRUE(DeleteRunValue()); }
  void TearDown() override { DeleteRunValue(); }
};

TEST_F(AutostartTest, WritesTheWholeTextAndNothingBehindIt) {
  EXPECT_TRUE(WriteRunValue(L"C:\\Tools\\clock.exe"));
  const StoredValue value = Stored();
  EXPECT_EQ(value.type, static_cast<DWORD>(REG_SZ));
  EXPECT_EQ(value.text, L"C:\\Tools\\clock.exe");
}

TEST_F(AutostartTest, LosesWhatTheCodePageDoesNotHave) {
  // Thai letters are in neither of the code pages that the tests run with; the Chinese ones are in
  // one of them.
  EXPECT_TRUE(WriteRunValue(L"C:\\\u0e01\u0e02\\工具.exe"));
  EXPECT_EQ(Stored().text, GetACP() == 950 ? L"C:\\??\\工具.exe" : L"C:\\??\\??.exe");
}

TEST_F(AutostartTest, LeavesNothingBehind) {
  WriteRunValue(L"C:\\Tools\\clock.exe");
  EXPECT_TRUE(DeleteRunValue());
  EXPECT_EQ(Stored().status, ERROR_FILE_NOT_FOUND);
}

TEST_F(AutostartTest, DeletingWhatIsNotThereDoesNothing) {
  EXPECT_TRUE(DeleteRunValue());
  EXPECT_EQ(Stored().status, ERROR_FILE_NOT_FOUND);
}

TEST(ExecutablePath, IsThatOfThisProgram) {
  EXPECT_TRUE(ExecutablePath().ends_with(L"\\app_tests.exe")) << "the name, with its extension";
  EXPECT_NE(GetFileAttributesW(ExecutablePath().c_str()), INVALID_FILE_ATTRIBUTES);
}

}  // namespace
}  // namespace tellurvane
