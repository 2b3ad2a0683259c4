#include "notes/NoteText.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tellurvane {
namespace {

// A surrogate pair: one character.
const std::wstring kPair = {wchar_t{0xD83D}, wchar_t{0xDE00}};

struct TextRow {
  std::wstring from;
  std::wstring to;
};

TEST(NoteTextTest, ShowsEachStoredBreakAsALineBreak) {
  for (const TextRow& row : {
           TextRow{L"", L""},
           TextRow{L"喝水", L"喝水"},
           TextRow{L"a\\r\\nb", L"a\r\nb"},
           TextRow{L"\\r\\na\\r\\n", L"\r\na\r\n"},
           TextRow{L"a\\r\\n\\r\\nb", L"a\r\n\r\nb"},
           TextRow{L"開會\\r\\n帶" + kPair, L"開會\r\n帶" + kPair},
           // Halves of a break, capitals, and real line breaks.
           TextRow{L"\\r", L"\\r"},
           TextRow{L"\\n\\r", L"\\n\\r"},
           TextRow{L"\\r \\n", L"\\r \\n"},
           TextRow{L"\\R\\N", L"\\R\\N"},
           TextRow{L"a\rb\nc\r\nd", L"a\rb\nc\r\nd"},
           // Another backslash belongs to the text.
           TextRow{L"C:\\\\r\\n\\", L"C:\\\r\n\\"},
           TextRow{L"\\r\\r\\n\\n", L"\\r\r\n\\n"},
       }) {
    EXPECT_EQ(NoteTextWithBreaks(row.from), row.to);
  }
}

TEST(NoteTextTest, StoresEachLineBreakAsFourCharacters) {
  for (const TextRow& row : {
           TextRow{L"", L""},
           TextRow{L"a\r\nb", L"a\\r\\nb"},
           TextRow{L"\r\n\r\n", L"\\r\\n\\r\\n"},
           TextRow{L"買菜" + kPair + L"\r\n" + kPair, L"買菜" + kPair + L"\\r\\n" + kPair},
           // A single CR or LF is no line break.
           TextRow{L"a\rb\nc\n\r", L"a\rb\nc\n\r"},
           TextRow{L"\r\r\n\n", L"\r\\r\\n\n"},
           TextRow{L"\\", L"\\"},
       }) {
    EXPECT_EQ(StoredNoteText(row.from), row.to);
  }
}

// All texts of up to `length` of these units.
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

TEST(NoteTextTest, ComesBackUnchanged) {
  const std::vector<std::wstring> texts = AllTexts(6);
  ASSERT_GT(texts.size(), 50'000U);
  for (const std::wstring& text : texts) {
    if (text.find(L"\r\n") == std::wstring::npos) {
      ASSERT_EQ(StoredNoteText(NoteTextWithBreaks(text)), text);
    }
    // A typed \r\n of four characters becomes a line break.
    if (text.find(L"\\r\\n") == std::wstring::npos) {
      ASSERT_EQ(NoteTextWithBreaks(StoredNoteText(text)), text);
    }
    ASSERT_EQ(StoredNoteText(text).find(L"\r\n"), std::wstring::npos) << "needs one line";
  }
}

TEST(NoteTextTest, DrawsABlankOnEachEmptyLine) {
  for (const TextRow& row : {
           TextRow{L"", L" "},
           TextRow{L"a", L"a"},
           TextRow{L"a\r\nb", L"a\r\nb"},
           TextRow{L"a\r\n\r\nb", L"a\r\n \r\nb"},
           TextRow{L"\r\na", L" \r\na"},
           TextRow{L"a\r\n", L"a\r\n "},
           TextRow{L"\r\n\r\n", L" \r\n \r\n "},
       }) {
    EXPECT_EQ(DrawableNoteText(row.from), row.to);
  }
}

TEST(NoteTextTest, MeasuresLinesAndTheLongest) {
  const struct {
    std::wstring text;
    size_t lines;
    size_t longest;
  } rows[] = {
      {L"", 0, 0},
      {L"a", 1, 1},
      {L"一\r\n二三\r\n四", 3, 2},
      {L"a\r\n", 2, 1},
      {L"\r\n", 2, 0},
      {kPair + kPair + L"a", 1, 3},
      {L"ab\r\n" + kPair, 2, 2},
      {L"a\rb\nc", 1, 5},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(MeasureNote(row.text).lines, row.lines);
    EXPECT_EQ(MeasureNote(row.text).longest, row.longest);
  }
}

}  // namespace
}  // namespace tellurvane
