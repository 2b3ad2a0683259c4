#include "notes/NoteText.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tellurvane {
namespace {

// A pair of surrogates, as one character beyond the first 65,536 is kept.
const std::wstring kPair = {wchar_t{0xD83D}, wchar_t{0xDE00}};

TEST(NoteTextTest, WritesEachStoredBreakAsALineBreak) {
  struct Row {
    std::wstring stored;
    std::wstring shown;
  };
  for (const Row& row : {
           Row{L"", L""},
           Row{L"喝水", L"喝水"},
           Row{L"a\\r\\nb", L"a\r\nb"},
           Row{L"\\r\\n", L"\r\n"},
           Row{L"\\r\\na", L"\r\na"},
           Row{L"a\\r\\n", L"a\r\n"},
           Row{L"a\\r\\n\\r\\nb", L"a\r\n\r\nb"},
           Row{L"\\r\\n\\r\\n\\r\\n", L"\r\n\r\n\r\n"},
           Row{L"開會\\r\\n帶" + kPair, L"開會\r\n帶" + kPair},
           // Halves of a break, capitals, and what was a line break already.
           Row{L"\\r", L"\\r"},
           Row{L"\\n", L"\\n"},
           Row{L"\\n\\r", L"\\n\\r"},
           Row{L"\\r \\n", L"\\r \\n"},
           Row{L"\\R\\N", L"\\R\\N"},
           Row{L"\\r\\", L"\\r\\"},
           Row{L"a\rb\nc\r\nd", L"a\rb\nc\r\nd"},
           // A backslash too many belongs to the text beside the break.
           Row{L"C:\\\\r\\n", L"C:\\\r\n"},
           Row{L"\\r\\n\\", L"\r\n\\"},
           Row{L"\\r\\r\\n\\n", L"\\r\r\n\\n"},
       }) {
    EXPECT_EQ(NoteTextWithBreaks(row.stored), row.shown);
  }
}

TEST(NoteTextTest, StoresEachLineBreakAsFourCharacters) {
  struct Row {
    std::wstring written;
    std::wstring stored;
  };
  for (const Row& row : {
           Row{L"", L""},
           Row{L"a\r\nb", L"a\\r\\nb"},
           Row{L"\r\n", L"\\r\\n"},
           Row{L"\r\n\r\n", L"\\r\\n\\r\\n"},
           Row{L"a\r\n", L"a\\r\\n"},
           Row{L"買菜" + kPair + L"\r\n" + kPair, L"買菜" + kPair + L"\\r\\n" + kPair},
           // A lone CR or LF is no line break of a text box.
           Row{L"\r", L"\r"},
           Row{L"\n", L"\n"},
           Row{L"a\rb\nc", L"a\rb\nc"},
           Row{L"\n\r", L"\n\r"},
           Row{L"\r\r\n\n", L"\r\\r\\n\n"},
           Row{L"\\", L"\\"},
       }) {
    EXPECT_EQ(StoredNoteText(row.written), row.stored);
  }
}

// All texts of up to `length` of the units that matter.
std::vector<std::wstring> AllTexts(size_t length) {
  const std::wstring units = {L'\\', L'r', L'n', L'\r', L'\n', L'字'};
  std::vector<std::wstring> texts = {L""};
  size_t begin = 0;
  for (size_t i = 0; i < length; ++i) {
    const size_t end = texts.size();
    for (size_t text = begin; text < end; ++text) {
      for (const wchar_t unit : units) texts.push_back(texts[text] + unit);
    }
    begin = end;
  }
  return texts;
}

TEST(NoteTextTest, ComesBackByteForByteUnlessItHeldARealLineBreak) {
  size_t tried = 0;
  for (const std::wstring& stored : AllTexts(6)) {
    if (stored.find(L"\r\n") != std::wstring::npos) continue;
    ASSERT_EQ(StoredNoteText(NoteTextWithBreaks(stored)), stored);
    ++tried;
  }
  EXPECT_GT(tried, 40'000U);
}

TEST(NoteTextTest, WhatIsWrittenInTheBoxIsWhatIsShownAgain) {
  for (const std::wstring& written : AllTexts(6)) {
    // Backslash, r, backslash, n typed by hand is a line break from then on.
    if (written.find(L"\\r\\n") != std::wstring::npos) continue;
    const std::wstring stored = StoredNoteText(written);
    ASSERT_EQ(stored.find(L"\r\n"), std::wstring::npos) << "has to fit on one line";
    ASSERT_EQ(NoteTextWithBreaks(stored), written);
  }
}

TEST(NoteTextTest, GivesEachEmptyLineABlankToBeDrawn) {
  struct Row {
    std::wstring text;
    std::wstring drawable;
  };
  for (const Row& row : {
           Row{L"", L" "},
           Row{L"a", L"a"},
           Row{L"a\r\nb", L"a\r\nb"},
           Row{L"a\r\n\r\nb", L"a\r\n \r\nb"},
           Row{L"\r\na", L" \r\na"},
           Row{L"a\r\n", L"a\r\n "},
           Row{L"\r\n\r\n", L" \r\n \r\n "},
       }) {
    EXPECT_EQ(DrawableNoteText(row.text), row.drawable);
  }
}

TEST(NoteTextTest, CountsLinesAndTheCharactersOfTheLongest) {
  struct Row {
    std::wstring text;
    size_t lines;
    size_t longest;
  };
  for (const Row& row : {
           Row{L"", 0, 0},
           Row{L"a", 1, 1},
           Row{L"一二三", 1, 3},
           Row{L"一\r\n二三\r\n四", 3, 2},
           Row{L"a\r\n", 2, 1},
           Row{L"\r\n", 2, 0},
           Row{L"\r\n\r\n\r\n", 4, 0},
           Row{kPair + kPair + L"a", 1, 3},
           Row{L"ab\r\n" + kPair, 2, 2},
           Row{L"a\rb\nc", 1, 5},
       }) {
    EXPECT_EQ(MeasureNote(row.text).lines, row.lines);
    EXPECT_EQ(MeasureNote(row.text).longest, row.longest);
  }
}

}  // namespace
}  // namespace tellurvane
