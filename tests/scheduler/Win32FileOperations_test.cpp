#include "scheduler/Win32FileOperations.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "tests/support/TemporaryFolder.h"
#include "ui/Handle.h"

namespace tellurvane {
namespace {

constexpr DWORD kShareNothing = 0;
constexpr int kForEver = -1;  // never released
constexpr DWORD kShareAllButDelete = FILE_SHARE_READ | FILE_SHARE_WRITE;

// Holds a file open as another program would.
UniqueKernelHandle Hold(const std::wstring& path, DWORD sharing) {
  UniqueKernelHandle file = OwnedFile(
      CreateFileW(path.c_str(), GENERIC_READ, sharing, nullptr, OPEN_EXISTING, 0, nullptr));
  EXPECT_TRUE(file);
  return file;
}

class Win32FileOperationsTest : public testing::Test {
 protected:
  std::wstring Put(const wchar_t* name, std::string_view bytes) const {
    std::wstring path = folder_.File(name);
    WriteBytes(path, bytes);
    return path;
  }

  // Holds the file until an operation has failed this often and waits to be tried again.
  void HoldThroughRefusals(int refusals, const std::wstring& path, DWORD sharing) {
    held_ = Hold(path, sharing);
    refusalsUntilRelease_ = refusals;
    pauses_ = 0;
    pausedMilliseconds_ = 0;
  }

  TemporaryFolder folder_;
  UniqueKernelHandle held_;
  int refusalsUntilRelease_ = kForEver;
  int pauses_ = 0;
  unsigned pausedMilliseconds_ = 0;
  Win32FileOperations files_{[this](unsigned milliseconds) {
    pausedMilliseconds_ += milliseconds;
    if (++pauses_ == refusalsUntilRelease_) held_.Reset();
  }};
};

TEST_F(Win32FileOperationsTest, MovesOverAFileOrToANewName) {
  const std::wstring to = Put(L"to", "the old one, which is longer");
  EXPECT_TRUE(files_.MoveOver(Put(L"from", "new"), to));
  EXPECT_EQ(ReadBytes(to), "new");
  EXPECT_TRUE(files_.MoveOver(to, folder_.File(L"third")));
  EXPECT_EQ(ReadBytes(folder_.File(L"third")), "new");
  EXPECT_EQ(folder_.Count(), 1U);
}

TEST_F(Win32FileOperationsTest, CopiesToANewNameOnly) {
  const std::wstring from = Put(L"from", std::string("a\0b", 3));
  const std::wstring to = folder_.File(L"to");
  EXPECT_EQ(files_.CopyToNew(from, to), CopyOutcome::kCopied);
  EXPECT_EQ(ReadBytes(to), std::string("a\0b", 3));
  EXPECT_EQ(ReadBytes(from), std::string("a\0b", 3));
  EXPECT_EQ(files_.CopyToNew(Put(L"other", "new"), to), CopyOutcome::kTargetExists);
  EXPECT_EQ(ReadBytes(to), std::string("a\0b", 3));
  CreateDirectoryW(folder_.File(L"folder").c_str(), nullptr);
  EXPECT_EQ(files_.CopyToNew(from, folder_.File(L"folder")), CopyOutcome::kTargetExists);
}

TEST_F(Win32FileOperationsTest, TellsAMissingSourceFromACopyThatFails) {
  const std::wstring from = Put(L"from", "bytes");
  EXPECT_EQ(files_.CopyToNew(folder_.File(L"none"), folder_.File(L"to")),
            CopyOutcome::kSourceMissing);
  EXPECT_EQ(files_.CopyToNew(folder_.File(L"none\\none"), folder_.File(L"to")),
            CopyOutcome::kFailed)
      << "a folder that is gone may come back with the list in it";
  // The source is there: nobody may take its bytes for given up.
  EXPECT_EQ(files_.CopyToNew(from, folder_.File(L"none\\to")), CopyOutcome::kFailed);
  const UniqueKernelHandle held = Hold(from, kShareNothing);
  EXPECT_EQ(files_.CopyToNew(from, folder_.File(L"to")), CopyOutcome::kFailed);
  EXPECT_EQ(folder_.Count(), 1U) << "a copy that fails leaves nothing";
}

TEST_F(Win32FileOperationsTest, CopiesAWriteProtectedFile) {
  const std::wstring from = Put(L"from", "bytes");
  SetFileAttributesW(from.c_str(), FILE_ATTRIBUTE_READONLY);
  EXPECT_EQ(files_.CopyToNew(from, folder_.File(L"to")), CopyOutcome::kCopied);
  EXPECT_EQ(ReadBytes(folder_.File(L"to")), "bytes");
  for (const wchar_t* name : {L"from", L"to"}) {
    SetFileAttributesW(folder_.File(name).c_str(), FILE_ATTRIBUTE_NORMAL);
  }
}

TEST_F(Win32FileOperationsTest, DistinguishesMissingFromFailed) {
  EXPECT_EQ(files_.OpenForReading(folder_.File(L"none")), OpenOutcome::kMissing);
  EXPECT_EQ(files_.OpenForReading(folder_.File(L"none\\none")), OpenOutcome::kFailed)
      << "a folder that is gone may come back with the list in it";
  EXPECT_EQ(files_.OpenForReading(folder_.Path()), OpenOutcome::kFailed) << "a folder";
  const std::wstring path = Put(L"file", "bytes");
  const UniqueKernelHandle held = Hold(path, kShareNothing);
  EXPECT_EQ(files_.OpenForReading(path), OpenOutcome::kFailed) << "held by another";
}

TEST_F(Win32FileOperationsTest, ReadsToTheEndAndSharesReading) {
  const std::wstring path = Put(L"file", "12345");
  ASSERT_EQ(files_.OpenForReading(path), OpenOutcome::kOpened);
  EXPECT_EQ(ReadBytes(path), "12345") << "others may read";
  EXPECT_EQ(files_.SizeOfReading(), 5U);
  char buffer[8] = {};
  EXPECT_EQ(files_.Read(buffer, 3), 3U);
  EXPECT_EQ(files_.Read(buffer + 3, 5), 2U);
  EXPECT_STREQ(buffer, "12345");
  EXPECT_EQ(files_.Read(buffer, 1), 0U);
  files_.CloseReading();
  files_.Remove(path);
  EXPECT_EQ(folder_.Count(), 0U) << "closed for good";
}

TEST_F(Win32FileOperationsTest, WritingBeginsWithAnEmptyFile) {
  const std::wstring path = Put(L"file", "what was here before");
  ASSERT_TRUE(files_.CreateForWriting(path));
  EXPECT_EQ(files_.Write("ab"), 2U);
  EXPECT_EQ(files_.Write("c"), 1U);
  EXPECT_TRUE(files_.Flush());
  EXPECT_TRUE(files_.CloseWriting());
  EXPECT_EQ(ReadBytes(path), "abc");
}

TEST_F(Win32FileOperationsTest, WaitsForAHeldFileAndAfterOneWaitInVainTriesOnce) {
  const std::wstring path = Put(L"file", "bytes");
  const struct {
    const char* name;
    DWORD sharing;
    std::function<bool()> act;
  } rows[] = {
      {"open", kShareNothing,
       [&] {
         const bool opened = files_.OpenForReading(path) == OpenOutcome::kOpened;
         files_.CloseReading();
         return opened;
       }},
      {"create", FILE_SHARE_READ,
       [&] { return files_.CreateForWriting(path) && files_.CloseWriting(); }},
      {"move", kShareAllButDelete, [&] { return files_.MoveOver(Put(L"from", "new"), path); }},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    HoldThroughRefusals(kForEver, path, row.sharing);
    const std::string before = ReadBytes(path);
    EXPECT_FALSE(row.act());
    EXPECT_EQ(ReadBytes(path), before);
    EXPECT_GE(pausedMilliseconds_, 400U) << "about half a second";
    EXPECT_LE(pausedMilliseconds_, 600U);
    pauses_ = 0;
    EXPECT_FALSE(row.act());
    EXPECT_EQ(pauses_, 0);
    held_.Reset();
    EXPECT_TRUE(row.act());
    // It has succeeded: a file that is held is waited for again.
    HoldThroughRefusals(5, path, row.sharing);
    EXPECT_TRUE(row.act());
    EXPECT_EQ(pauses_, 5) << "one after each failure";
  }
  EXPECT_EQ(ReadBytes(path), "new");
}

TEST_F(Win32FileOperationsTest, SaysWhatCannotBeCreatedOrMoved) {
  EXPECT_FALSE(files_.CreateForWriting(folder_.Path()));
  EXPECT_FALSE(files_.CreateForWriting(folder_.File(L"none\\file")));
  const std::wstring path = Put(L"file", "bytes");
  pauses_ = 0;
  EXPECT_FALSE(files_.MoveOver(folder_.File(L"none"), path));
  EXPECT_EQ(pauses_, 0) << "no file is held";
  const UniqueKernelHandle held = Hold(path, FILE_SHARE_READ);
  EXPECT_FALSE(files_.CreateForWriting(path));
  EXPECT_EQ(ReadBytes(path), "bytes");
}

}  // namespace
}  // namespace tellurvane
