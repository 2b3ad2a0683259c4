#include "notes/NoteText.h"

#include <algorithm>

#include "base/Text.h"

namespace tellurvane {
namespace {

constexpr std::wstring_view kStoredBreak = L"\\r\\n";
constexpr std::wstring_view kBreak = L"\r\n";

size_t CharactersOf(std::wstring_view line) {
  // Do not count the second half of a surrogate pair.
  return static_cast<size_t>(std::ranges::count_if(
      line, [](wchar_t unit) { return (static_cast<unsigned>(unit) & 0xFC00) != 0xDC00; }));
}

}  // namespace

std::wstring NoteTextWithBreaks(std::wstring_view stored) {
  return Replaced(stored, kStoredBreak, kBreak);
}

std::wstring StoredNoteText(std::wstring_view text) { return Replaced(text, kBreak, kStoredBreak); }

std::wstring DrawableNoteText(std::wstring_view text) {
  std::wstring drawable;
  for (;;) {
    const size_t end = text.find(kBreak);
    const std::wstring_view line = text.substr(0, end);
    drawable += line.empty() ? std::wstring_view(L" ") : line;
    if (end == std::wstring_view::npos) return drawable;
    drawable += kBreak;
    text.remove_prefix(end + kBreak.size());
  }
}

NoteExtent MeasureNote(std::wstring_view text) {
  NoteExtent extent;
  if (text.empty()) return extent;
  for (;;) {
    const size_t end = text.find(kBreak);
    ++extent.lines;
    extent.longest = std::max(extent.longest, CharactersOf(text.substr(0, end)));
    if (end == std::wstring_view::npos) return extent;
    text.remove_prefix(end + kBreak.size());
  }
}

}  // namespace tellurvane
