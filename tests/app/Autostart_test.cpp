#include "app/Autostart.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <array>
#include <climits>
#include <string>

#include "tests/support/FailingImport.h"
#include "ui/Handle.h"

namespace tellurvane {
namespace {

constexpr const wchar_t* kProgram = L"C:\\Tools\\clock.exe";
constexpr const wchar_t* kKey = L"Software\\Microsoft\\Windows\\CurrentVersion\\Run";

struct StoredValue {
  LSTATUS status = ERROR_SUCCESS;
  DWORD type = 0;
  std::wstring text;
};

StoredValue Stored(HKEY root = HKEY_LOCAL_MACHINE) {
  StoredValue value;
  HKEY opened = nullptr;
  value.status = RegOpenKeyExW(root, kKey, 0, KEY_QUERY_VALUE, &opened);
  const UniqueKey key(opened);
  std::wstring text(1'024, L'\0');
  auto size = static_cast<DWORD>(text.size() * sizeof(wchar_t));
  if (value.status == ERROR_SUCCESS) {
    value.status = RegQueryValueExW(key.Get(), L"RunTellurvane", nullptr, &value.type,
                                    reinterpret_cast<BYTE*>(text.data()), &size);
  }
  if (value.status == ERROR_SUCCESS) value.text = text.substr(0, size / sizeof(wchar_t));
  // The system may add a terminator that was not written.
  if (value.text.ends_with(L'\0')) value.text.pop_back();
  return value;
}

bool IsAbsent(HKEY root) { return Stored(root).status == ERROR_FILE_NOT_FOUND; }

// The two keys of the test alone: the real ones belong to the user of this machine, who has no
// access to the first of them.
class OwnRunKeys {
 public:
  OwnRunKeys() {
    for (size_t i = 0; i < keys_.size(); ++i) {
      const std::wstring path = kOwnKeys + (L"\\" + std::to_wstring(i));
      EXPECT_EQ(Make(path + L"\\" + kKey, UniqueKey().Receive()), ERROR_SUCCESS);
      EXPECT_EQ(Make(path, keys_.at(i).Receive()), ERROR_SUCCESS);
    }
    for (size_t i = 0; i < keys_.size(); ++i) {
      EXPECT_EQ(RegOverridePredefKey(kRoots.at(i), keys_.at(i).Get()), ERROR_SUCCESS);
    }
  }
  OwnRunKeys(const OwnRunKeys&) = delete;
  OwnRunKeys& operator=(const OwnRunKeys&) = delete;
  ~OwnRunKeys() {
    for (const HKEY root : kRoots) RegOverridePredefKey(root, nullptr);
    RegDeleteTreeW(HKEY_CURRENT_USER, kOwnKeys);
  }

 private:
  static constexpr const wchar_t* kOwnKeys = L"Software\\TellurvaneTests";
  static inline const std::array<HKEY, 2> kRoots = {HKEY_LOCAL_MACHINE, HKEY_CURRENT_USER};

  static LSTATUS Make(const std::wstring& path, HKEY* key) {
    return RegCreateKeyExW(HKEY_CURRENT_USER, path.c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE,
                           KEY_ALL_ACCESS, nullptr, key, nullptr);
  }

  std::array<UniqueKey, 2> keys_;
};

class AutostartTest : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(DeleteRunValue());
    denied.LetAllThrough();
  }
  void TearDown() override {
    denied.LetAllThrough();
    DeleteRunValue();
  }

  // Like Windows for an ordinary user. Wine gives everybody access.
  void DenyMachineKey() { denied.Fail(1, INT_MAX); }

  OwnRunKeys keys;
  FailingImport denied{{"RegOpenKeyExW", ERROR_ACCESS_DENIED, ERROR_ACCESS_DENIED}};
};

TEST_F(AutostartTest, WritesAndDeletesTheMachinesValue) {
  EXPECT_TRUE(WriteRunValue(kProgram));
  EXPECT_EQ(Stored().type, static_cast<DWORD>(REG_SZ));
  EXPECT_EQ(Stored().text, kProgram);
  EXPECT_TRUE(DeleteRunValue());
  EXPECT_TRUE(IsAbsent(HKEY_LOCAL_MACHINE));
  EXPECT_TRUE(DeleteRunValue()) << "a missing value counts as deleted";
}

DWORD writtenBytes = 0;
LSTATUS WINAPI TakeLength(HKEY, LPCSTR, DWORD, DWORD, const BYTE*, DWORD bytes) {
  writtenBytes = bytes;
  return ERROR_SUCCESS;
}

TEST_F(AutostartTest, WritesNoTerminatorOfTheMachinesValue) {
  FailingImport writes({"RegSetValueExA"});
  writes.Replace(TakeLength);
  EXPECT_TRUE(WriteRunValue(kProgram));
  EXPECT_EQ(writtenBytes, 18U);
}

TEST_F(AutostartTest, WritesTheAnsiCodePage) {
  // Code page 950 has no Thai letters; 1252 has no Chinese ones either.
  if (GetACP() != 950 && GetACP() != 1252) GTEST_SKIP() << "for code page 950 or 1252";
  EXPECT_TRUE(WriteRunValue(L"C:\\\u0e01\u0e02\\工具.exe"));
  EXPECT_EQ(Stored().text, GetACP() == 950 ? L"C:\\??\\工具.exe" : L"C:\\??\\??.exe");
}

TEST_F(AutostartTest, WritesTheUsersValueWithoutAccessToTheMachines) {
  // The letters are in no code page of the tests; the blank is why the path is quoted.
  const std::wstring path = L"C:\\我的 \u0e01\u0e02\\Tellurvane.exe";
  DenyMachineKey();
  EXPECT_TRUE(WriteRunValue(path));
  denied.LetAllThrough();
  EXPECT_TRUE(IsAbsent(HKEY_LOCAL_MACHINE));
  const StoredValue value = Stored(HKEY_CURRENT_USER);
  EXPECT_EQ(value.type, static_cast<DWORD>(REG_SZ));
  EXPECT_EQ(value.text, L"\"" + path + L"\"");
}

TEST_F(AutostartTest, WritesTheUsersValueIfTheMachinesFails) {
  FailingImport writes({"RegSetValueExA", ERROR_ACCESS_DENIED, ERROR_ACCESS_DENIED});
  writes.Fail(1);
  EXPECT_TRUE(WriteRunValue(kProgram));
  EXPECT_EQ(writes.Calls(), 1);
  EXPECT_EQ(Stored(HKEY_CURRENT_USER).text, L"\"C:\\Tools\\clock.exe\"");
}

TEST_F(AutostartTest, ReportsThatNeitherKeyCanBeWritten) {
  FailingImport user({"RegSetKeyValueW", ERROR_ACCESS_DENIED, ERROR_ACCESS_DENIED});
  user.Fail(1);
  DenyMachineKey();
  EXPECT_FALSE(WriteRunValue(kProgram));
  denied.LetAllThrough();
  EXPECT_TRUE(IsAbsent(HKEY_LOCAL_MACHINE));
  EXPECT_TRUE(IsAbsent(HKEY_CURRENT_USER));
}

TEST_F(AutostartTest, TheMachinesValueReplacesTheUsers) {
  DenyMachineKey();
  ASSERT_TRUE(WriteRunValue(kProgram));
  denied.LetAllThrough();
  ASSERT_FALSE(IsAbsent(HKEY_CURRENT_USER));
  EXPECT_TRUE(WriteRunValue(kProgram));
  EXPECT_TRUE(IsAbsent(HKEY_CURRENT_USER));
  EXPECT_EQ(Stored(HKEY_LOCAL_MACHINE).text, kProgram);
}

TEST_F(AutostartTest, DeletesBothValuesOrWhatItMay) {
  for (const bool isDenied : {false, true}) {
    ASSERT_TRUE(WriteRunValue(kProgram));
    DenyMachineKey();
    ASSERT_TRUE(WriteRunValue(kProgram));
    if (!isDenied) denied.LetAllThrough();
    EXPECT_EQ(DeleteRunValue(), !isDenied);
    denied.LetAllThrough();
    EXPECT_EQ(IsAbsent(HKEY_LOCAL_MACHINE), !isDenied);
    EXPECT_TRUE(IsAbsent(HKEY_CURRENT_USER));
  }
}

TEST(ExecutablePath, IsThatOfThisProgram) {
  EXPECT_TRUE(ExecutablePath().ends_with(L"\\app_tests.exe")) << "the name, with its extension";
  EXPECT_NE(GetFileAttributesW(ExecutablePath().c_str()), INVALID_FILE_ATTRIBUTES);
}

}  // namespace
}  // namespace tellurvane
