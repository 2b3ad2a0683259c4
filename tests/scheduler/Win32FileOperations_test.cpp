#include "scheduler/Win32FileOperations.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <string>
#include <thread>

#include "base/LocaleDates.h"
#include "scheduler/TaskListFile.h"
#include "tests/app/TemporaryFolder.h"
#include "ui/Handle.h"

namespace tellurvane {
namespace {

constexpr DWORD kShareNothing = 0;
constexpr DWORD kShareAllButDelete = FILE_SHARE_READ | FILE_SHARE_WRITE;

// Holds a file open as another program would.
UniqueKernelHandle Hold(const std::wstring& path, DWORD sharing) {
  const HANDLE file =
      CreateFileW(path.c_str(), GENERIC_READ, sharing, nullptr, OPEN_EXISTING, 0, nullptr);
  EXPECT_NE(file, INVALID_HANDLE_VALUE);
  return UniqueKernelHandle(file == INVALID_HANDLE_VALUE ? nullptr : file);
}

// Holds a file open for a moment that is longer than one attempt and shorter than all of them.
class HeldForAMoment {
 public:
  HeldForAMoment(const std::wstring& path, DWORD sharing)
      : held_(Hold(path, sharing)), thread_([this] {
          Sleep(120);
          isReleased_ = true;
          held_.Reset();
        }) {}

  bool IsReleased() const { return isReleased_; }

 private:
  UniqueKernelHandle held_;
  std::atomic<bool> isReleased_ = false;
  std::jthread thread_;
};

class Win32FileOperationsTest : public testing::Test {
 protected:
  std::wstring Put(const wchar_t* name, std::string_view bytes) const {
    const std::wstring path = folder_.File(name);
    WriteBytes(path, bytes);
    return path;
  }

  TemporaryFolder folder_;
  Win32FileOperations files_;
};

TEST_F(Win32FileOperationsTest, MovesOverAnExistingFile) {
  const std::wstring from = Put(L"from", "new");
  const std::wstring to = Put(L"to", "the old one, which is longer");
  EXPECT_TRUE(files_.MoveOver(from, to));
  EXPECT_EQ(ReadBytes(to), "new");
  EXPECT_EQ(folder_.Count(), 1U);
}

TEST_F(Win32FileOperationsTest, MovesToWhereNoFileIs) {
  EXPECT_TRUE(files_.MoveOver(Put(L"from", "new"), folder_.File(L"to")));
  EXPECT_EQ(ReadBytes(folder_.File(L"to")), "new");
  EXPECT_EQ(folder_.Count(), 1U);
}

TEST_F(Win32FileOperationsTest, MovingWhatIsNotThereLeavesTheTarget) {
  const std::wstring to = Put(L"to", "old");
  EXPECT_FALSE(files_.MoveOver(folder_.File(L"from"), to));
  EXPECT_EQ(ReadBytes(to), "old");
}

TEST_F(Win32FileOperationsTest, MovingWaitsForATargetThatIsHeldForAMoment) {
  const std::wstring from = Put(L"from", "new");
  const std::wstring to = Put(L"to", "old");
  const HeldForAMoment held(to, kShareAllButDelete);
  EXPECT_TRUE(files_.MoveOver(from, to));
  EXPECT_TRUE(held.IsReleased()) << "the hold did not hinder anything";
  EXPECT_EQ(ReadBytes(to), "new");
}

TEST_F(Win32FileOperationsTest, MovingGivesUpOnATargetThatStaysHeld) {
  const std::wstring from = Put(L"from", "new");
  const std::wstring to = Put(L"to", "old");
  const UniqueKernelHandle held = Hold(to, kShareAllButDelete);
  EXPECT_FALSE(files_.MoveOver(from, to));
  EXPECT_EQ(ReadBytes(to), "old");
  EXPECT_EQ(ReadBytes(from), "new");
}

TEST_F(Win32FileOperationsTest, WhoHeldTheTargetThroughOneWaitIsNotWaitedForAgain) {
  const std::wstring from = Put(L"from", "new");
  const std::wstring to = Put(L"to", "old");
  UniqueKernelHandle held = Hold(to, kShareAllButDelete);
  const auto millisecondsOfAMove = [&](bool expected) {
    const ULONGLONG start = GetTickCount64();
    EXPECT_EQ(files_.MoveOver(from, to), expected);
    return GetTickCount64() - start;
  };
  const ULONGLONG first = millisecondsOfAMove(false);
  EXPECT_LT(millisecondsOfAMove(false), first / 2);
  held.Reset();
  millisecondsOfAMove(true);
  // Once a move has succeeded, the next one is waited for again.
  WriteBytes(from, "newer");
  const HeldForAMoment heldAgain(to, kShareAllButDelete);
  millisecondsOfAMove(true);
  EXPECT_EQ(ReadBytes(to), "newer");
}

TEST_F(Win32FileOperationsTest, CopiesToANewName) {
  const std::wstring from = Put(L"from", std::string("a\0b", 3));
  EXPECT_EQ(files_.CopyToNew(from, folder_.File(L"to")), CopyOutcome::kCopied);
  EXPECT_EQ(ReadBytes(folder_.File(L"to")), std::string("a\0b", 3));
  EXPECT_EQ(ReadBytes(from), std::string("a\0b", 3));
}

TEST_F(Win32FileOperationsTest, NeverCopiesOverAFileOrFolder) {
  const std::wstring from = Put(L"from", "new");
  const std::wstring to = Put(L"to", "old");
  EXPECT_EQ(files_.CopyToNew(from, to), CopyOutcome::kTargetExists);
  EXPECT_EQ(ReadBytes(to), "old");
  CreateDirectoryW(folder_.File(L"folder").c_str(), nullptr);
  EXPECT_EQ(files_.CopyToNew(from, folder_.File(L"folder")), CopyOutcome::kTargetExists);
}

TEST_F(Win32FileOperationsTest, TellsAMissingSourceFromACopyThatFails) {
  const std::wstring from = Put(L"from", "bytes");
  EXPECT_EQ(files_.CopyToNew(folder_.File(L"none"), folder_.File(L"to")),
            CopyOutcome::kSourceMissing);
  EXPECT_EQ(files_.CopyToNew(folder_.File(L"none\\none"), folder_.File(L"to")),
            CopyOutcome::kSourceMissing);
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

TEST_F(Win32FileOperationsTest, TellsMissingFromRefused) {
  EXPECT_EQ(files_.OpenForReading(folder_.File(L"none")), OpenOutcome::kMissing);
  EXPECT_EQ(files_.OpenForReading(folder_.File(L"none\\none")), OpenOutcome::kRefused)
      << "a folder that is gone may come back with the list in it";
  EXPECT_EQ(files_.OpenForReading(folder_.Path()), OpenOutcome::kRefused) << "a folder";
  const std::wstring path = Put(L"file", "bytes");
  const UniqueKernelHandle held = Hold(path, kShareNothing);
  EXPECT_EQ(files_.OpenForReading(path), OpenOutcome::kRefused) << "held by another";
}

TEST_F(Win32FileOperationsTest, OpeningWaitsForAFileThatIsHeldForAMoment) {
  const std::wstring path = Put(L"file", "bytes");
  const HeldForAMoment held(path, kShareNothing);
  EXPECT_EQ(files_.OpenForReading(path), OpenOutcome::kOpened);
  EXPECT_TRUE(held.IsReleased()) << "the hold did not hinder anything";
  files_.CloseReading();
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

TEST_F(Win32FileOperationsTest, SaysWhatCannotBeCreated) {
  EXPECT_FALSE(files_.CreateForWriting(folder_.Path()));
  EXPECT_FALSE(files_.CreateForWriting(folder_.File(L"none\\file")));
  const std::wstring path = Put(L"file", "bytes");
  const UniqueKernelHandle held = Hold(path, kShareAllButDelete & ~FILE_SHARE_WRITE);
  EXPECT_FALSE(files_.CreateForWriting(path));
  EXPECT_EQ(ReadBytes(path), "bytes");
}

TEST_F(Win32FileOperationsTest, WithoutAnOpenFileEverythingFailsHarmlessly) {
  char buffer[1] = {};
  EXPECT_EQ(files_.SizeOfReading(), std::nullopt);
  EXPECT_EQ(files_.Read(buffer, 1), std::nullopt);
  EXPECT_EQ(files_.Write("a"), std::nullopt);
  EXPECT_FALSE(files_.Flush());
  files_.CloseReading();
  EXPECT_TRUE(files_.CloseWriting());
  files_.Remove(folder_.File(L"none"));
}

TEST(DecodeAnsiTest, ReadsTheUsersCodePageAndUtf8) {
  const bool isBig5 = GetACP() == 950;
  const struct {
    std::string_view bytes;
    DecodedText expected;
  } rows[] = {
      {"", std::wstring()},
      {"plain", std::wstring(L"plain")},
      // 音 in Big5, which the western code page takes for two letters.
      {"\xAD\xB5", std::wstring(isBig5 ? L"音" : L"\x00AD\x00B5")},
      // 音 in UTF-8, which is no Big5, but three letters of the western code page.
      {"\xE9\x9F\xB3", {isBig5 ? L"音" : L"\x00E9\x0178\x00B3", !isBig5}},
      {"\xEF\xBB\xBF\xE9\x9F\xB3", std::wstring(L"音")},
      {"\xEF\xBB\xBFplain", std::wstring(L"plain")},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(DecodeAnsi(row.bytes), row.expected) << testing::PrintToString(row.bytes);
  }
}

TEST(DecodeAnsiTest, TellsTheLossOfBytesThatAreNoText) {
  if (GetACP() == 950) {
    EXPECT_TRUE(DecodeAnsi("a\xAD").hasLoss) << "half a character of Big5";
  } else {
    EXPECT_FALSE(DecodeAnsi("a\xAD").hasLoss) << "a letter like any other";
  }
}

}  // namespace
}  // namespace tellurvane
