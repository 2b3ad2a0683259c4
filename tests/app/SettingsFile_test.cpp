#include "app/SettingsFile.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "base/CodePage.h"
#include "base/FatalError.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/Utf16.h"
#include "ui/Handle.h"

namespace tellurvane {
namespace {

constexpr const wchar_t* kNumericKeys[] = {L"SavedVolume", L"TimeForm", L"SongLoop", L"StartPlay"};

class SettingsFileTest : public testing::Test {
 protected:
  // Valid values for the six keys; the line of `key` is replaced.
  static std::wstring TextWith(const std::wstring& key, const std::wstring& line) {
    std::wstring text = L"[Setting]\r\n";
    for (const wchar_t* numeric : kNumericKeys) {
      text += numeric == key ? line : numeric + std::wstring(L"=1\r\n");
    }
    text += L"FilesPath" == key ? line : L"FilesPath=C:\\Music\\\r\n";
    text += L"HinetUrl" == key ? line : L"HinetUrl=mms://host/RA\r\n";
    return text;
  }

  void Put(const std::wstring& text) const { WriteBytes(path_, Utf16Bytes(text)); }
  void PutLine(const std::wstring& key, const std::wstring& line) const {
    Put(TextWith(key, line + L"\r\n"));
  }

  // Like a program that locks the file.
  UniqueKernelHandle Held() const {
    return OwnedFile(
        CreateFileW(path_.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
  }

  // What the fatal error says; empty when there is none.
  static std::wstring FatalMessage(const SettingsFile& file) {
    try {
      (void)file.ReadAll();
    } catch (const FatalError& error) {
      return error.Message();
    }
    return L"";
  }
  std::wstring FatalMessage() const { return FatalMessage(file_); }

  TemporaryFolder folder_;
  const std::wstring path_ = folder_.File(L"Setting.ini");
  const SettingsFile file_{path_};
};

TEST_F(SettingsFileTest, ReadsTheSixKeys) {
  Put(L"[Setting]\r\nSavedVolume=75\r\nTimeForm=1\r\nSongLoop=0\r\nStartPlay=2\r\n"
      L"FilesPath=D:\\音樂\\\r\nHinetUrl=mms://host/RA\r\n");
  const Settings settings = file_.ReadAll();
  EXPECT_EQ(settings.SavedVolume, 75);
  EXPECT_EQ(settings.TimeForm, 1);
  EXPECT_EQ(settings.SongLoop, 0);
  EXPECT_EQ(settings.StartPlay, 2);
  EXPECT_EQ(settings.FilesPath, L"D:\\音樂\\");
  EXPECT_EQ(settings.HinetUrl, L"mms://host/RA");
}

TEST_F(SettingsFileTest, CutsAValueAt127Units) {
  std::wstring digits;
  while (digits.size() < 130) digits += std::to_wstring(digits.size() % 10);
  for (const size_t length : {126U, 127U, 128U, 130U}) {
    PutLine(L"FilesPath", L"FilesPath=" + digits.substr(0, length));
    EXPECT_EQ(file_.ReadAll().FilesPath, digits.substr(0, std::min<size_t>(length, 127))) << length;
  }
}

TEST_F(SettingsFileTest, OnlyOneIsOn) {
  PutLine(L"SongLoop", L"SongLoop=2");
  const Settings settings = file_.ReadAll();
  EXPECT_FALSE(IsOn(settings.SongLoop));
  EXPECT_TRUE(file_.Write(L"SongLoop", Switched(settings.SongLoop)));
  EXPECT_EQ(file_.Read(L"SongLoop"), L"1");
  EXPECT_TRUE(IsOn(1));
  EXPECT_EQ(Switched(1), 0);
}

// The platform removes the blanks around an unquoted value, and one pair of quotes.
TEST_F(SettingsFileTest, KeepsTheBlanksThatThePlatformReturns) {
  const struct {
    const wchar_t* line;
    const wchar_t* expected;
  } rows[] = {
      {L"FilesPath=abc   ", L"abc"},          {L"FilesPath=   abc", L"abc"},
      {L"FilesPath=\"abc   \"", L"abc   "},   {L"FilesPath='abc   '", L"abc   "},
      {L"FilesPath=\"   abc\"", L"   abc"},   {L"FilesPath=\"   \"", L"   "},
      {L"FilesPath=a b  c", L"a b  c"},       {L"FilesPath=\"\"", L""},
      {L"FilesPath=abc\x3000", L"abc\x3000"},  // an ideographic space is no blank
  };
  for (const auto& row : rows) {
    PutLine(L"FilesPath", row.line);
    EXPECT_EQ(file_.Read(L"FilesPath"), row.expected);
  }
}

TEST_F(SettingsFileTest, AMissingValueIsEmpty) {
  EXPECT_EQ(file_.Read(L"FilesPath"), L"") << "no file";
  Put(L"[Other]\r\nFilesPath=abc\r\n");
  EXPECT_EQ(file_.Read(L"FilesPath"), L"") << "no section";
  Put(L"[Setting]\r\nSongLoop=1\r\n");
  EXPECT_EQ(file_.Read(L"FilesPath"), L"") << "no key";
  EXPECT_EQ(SettingsFile(folder_.File(L"nowhere\\Setting.ini")).Read(L"FilesPath"), L"")
      << "no folder";
}

TEST_F(SettingsFileTest, AnInvalidNumberIsFatalAndNamed) {
  for (const std::wstring key : kNumericKeys) {
    for (const wchar_t* const value : {L"", L"   ", L"abc", L"1x", L"2147483648", L"-2147483649"}) {
      PutLine(key, key + L"=" + value);
      const std::wstring message = FatalMessage();
      EXPECT_NE(message.find(L"「" + key + L"」"), std::wstring::npos) << Utf8(value);
      EXPECT_NE(message.find(L"設定檔"), std::wstring::npos) << Utf8(value);
      EXPECT_NE(message.find(path_), std::wstring::npos) << Utf8(value);
    }
    PutLine(key, L"");
    EXPECT_NE(FatalMessage().find(L"「" + key + L"」"), std::wstring::npos) << "missing";
    PutLine(key, key + L"= -2147483648 ");
    EXPECT_EQ(FatalMessage(), L"");
  }
}

TEST_F(SettingsFileTest, NamesTheFirstInvalidKey) {
  EXPECT_NE(FatalMessage().find(L"「SavedVolume」"), std::wstring::npos) << "no file at all";
  Put(L"[Setting]\r\nSavedVolume=50\r\nTimeForm=1\r\nSongLoop=\r\nStartPlay=\r\n");
  EXPECT_NE(FatalMessage().find(L"「SongLoop」"), std::wstring::npos);
}

TEST_F(SettingsFileTest, TheTwoTextsMayBeMissing) {
  Put(L"[Setting]\r\nSavedVolume=50\r\nTimeForm=1\r\nSongLoop=0\r\nStartPlay=0\r\n");
  const Settings settings = file_.ReadAll();
  EXPECT_EQ(settings.FilesPath, L"");
  EXPECT_EQ(settings.HinetUrl, L"");
}

TEST_F(SettingsFileTest, ReadsBackWhatItWrote) {
  Put(TextWith(L"", L""));
  EXPECT_TRUE(file_.Write(L"SavedVolume", 100));
  EXPECT_TRUE(file_.Write(L"SongLoop", -1));
  EXPECT_TRUE(file_.Write(L"FilesPath", L"C:\\Program Files\\a=b;c\\"));
  EXPECT_TRUE(file_.Write(L"Genre", L"a key that was not there"));
  const Settings settings = file_.ReadAll();
  EXPECT_EQ(settings.SavedVolume, 100);
  EXPECT_EQ(settings.SongLoop, -1);
  EXPECT_EQ(settings.FilesPath, L"C:\\Program Files\\a=b;c\\");
  EXPECT_EQ(settings.TimeForm, 1) << "the other keys stay";
  EXPECT_EQ(file_.Read(L"Genre"), L"a key that was not there");
}

TEST_F(SettingsFileTest, AUtf16FileKeepsEveryCharacter) {
  // In no code page at once: Chinese, Korean, a snowman, a surrogate pair.
  const std::wstring everything = L"音樂\xD55C\x2603\xD83C\xDFB5";
  Put(TextWith(L"", L""));
  EXPECT_TRUE(file_.Write(L"FilesPath", everything));
  EXPECT_EQ(file_.Read(L"FilesPath"), everything);
  const std::string bytes = ReadBytes(path_);
  EXPECT_EQ(bytes.substr(0, 2), "\xFF\xFE");
  EXPECT_NE(bytes.find(Utf16Bytes(everything).substr(2)), std::string::npos);
}

TEST_F(SettingsFileTest, AWriteThatFailsChangesNothing) {
  EXPECT_FALSE(SettingsFile(folder_.File(L"nowhere\\Setting.ini")).Write(L"SongLoop", 1));
  EXPECT_EQ(folder_.Count(), 0U);
  Put(TextWith(L"", L""));
  const std::string before = ReadBytes(path_);
  UniqueKernelHandle held = Held();
  EXPECT_FALSE(file_.Write(L"FilesPath", L"D:\\"));
  held.Reset();
  EXPECT_EQ(ReadBytes(path_), before);
  EXPECT_EQ(folder_.Count(), 1U);
  EXPECT_TRUE(file_.Write(L"FilesPath", L"E:\\"));
  EXPECT_EQ(file_.ReadAll().FilesPath, L"E:\\");
}

TEST_F(SettingsFileTest, WaitsForAFileThatIsHeldForAMoment) {
  Put(TextWith(L"", L""));
  UniqueKernelHandle held = Held();
  int pauses = 0;
  const SettingsFile file(path_, [&](unsigned) {
    if (++pauses == 5) held.Reset();
  });
  EXPECT_EQ(file.ReadAll().FilesPath, L"C:\\Music\\");
  EXPECT_EQ(pauses, 5);
  EXPECT_EQ(file.ReadAll().SavedVolume, 1);
  EXPECT_EQ(pauses, 5) << "nobody holds it";
  EXPECT_TRUE(Held()) << "it is free again";
}

TEST_F(SettingsFileTest, AFileThatStaysHeldIsFatalAfterHalfASecond) {
  Put(TextWith(L"", L""));
  const UniqueKernelHandle held = Held();
  unsigned paused = 0;
  const SettingsFile file(path_, [&](unsigned milliseconds) { paused += milliseconds; });
  const std::wstring message = FatalMessage(file);
  EXPECT_NE(message.find(L"可能正由其他程式使用"), std::wstring::npos);
  EXPECT_NE(message.find(path_), std::wstring::npos);
  EXPECT_GE(paused, 400U);
  EXPECT_LE(paused, 600U);
}

TEST_F(SettingsFileTest, AFileThatIsMissingIsNotWaitedFor) {
  const SettingsFile file(path_, [](unsigned) { ADD_FAILURE() << "waits"; });
  EXPECT_THROW((void)file.ReadAll(), FatalError);
}

// Windows does not write the file, but Wine does if root runs it. The result must fit the file.
TEST_F(SettingsFileTest, ReportsTheWriteToAWriteProtectedFile) {
  Put(TextWith(L"", L""));
  const std::string before = ReadBytes(path_);
  ASSERT_TRUE(SetFileAttributesW(path_.c_str(), FILE_ATTRIBUTE_READONLY));
  const bool isWritten = file_.Write(L"FilesPath", L"D:\\");
  EXPECT_EQ(ReadBytes(path_) != before, isWritten);
  EXPECT_EQ(folder_.Count(), 1U);
  ASSERT_TRUE(SetFileAttributesW(path_.c_str(), FILE_ATTRIBUTE_NORMAL));
}

}  // namespace
}  // namespace tellurvane
