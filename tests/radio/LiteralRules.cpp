#include "tests/radio/LiteralRules.h"

#include <array>
#include <optional>
#include <string_view>

#include "tests/radio/ExpectedEntities.h"

// Positions count from 1. Every step is done as it is worded, however slow that is.
namespace tellurvane::literal {
namespace {

int Length(std::wstring_view text) { return static_cast<int>(text.size()); }

// Empty outside the text.
std::wstring_view Mid(std::wstring_view text, int start, int count) {
  if (start > Length(text) || count <= 0) return {};
  return text.substr(static_cast<size_t>(start - 1), static_cast<size_t>(count));
}

std::wstring Lower(std::wstring_view part) {
  std::wstring text(part);
  for (wchar_t& unit : text) {
    if (unit >= L'A' && unit <= L'Z') unit = static_cast<wchar_t>(unit + 32);
  }
  return text;
}

// 0 when there is none at or after the place.
int InStr(int start, std::wstring_view text, std::wstring_view part) {
  const size_t found = text.find(part, static_cast<size_t>(start - 1));
  return found == std::wstring_view::npos ? 0 : static_cast<int>(found) + 1;
}

std::wstring ReplaceOnce(std::wstring text, const std::wstring& from, const std::wstring& to) {
  for (size_t at = text.find(from); at != std::wstring::npos; at = text.find(from, at)) {
    text.replace(at, from.size(), to);
    at += to.size();
  }
  return text;
}

bool IsDigit(std::wstring_view text) {
  return text.size() == 1 && text[0] >= L'0' && text[0] <= L'9';
}

// Nothing if the conversion of the digits fails.
std::optional<int> Value(std::wstring_view digits) {
  int value = 0;
  for (const wchar_t& digit : digits) {
    if (!IsDigit({&digit, 1})) return std::nullopt;
    value = value * 10 + (digit - L'0');
    if (value > 255) return std::nullopt;
  }
  return value;
}

wchar_t CharacterOf(int value) {
  const bool isListed = value >= 128 && value < 160;
  return static_cast<wchar_t>(isListed ? expected::kWindows1252From128[value - 128] : value);
}

void DecodeReferences(std::wstring& text) {
  const int n = Length(text);
  for (int i = 1; i <= n; ++i) {
    if (Length(text) - i < 3 || Mid(text, i, 2) != L"&#") continue;
    int j = i + 2;
    while (IsDigit(Mid(text, j, 1))) ++j;
    if (j > i + 2) --j;
    if (Mid(text, j + 1, 1) != L";") continue;
    const auto value = Value(Mid(text, i + 2, j - i - 1));
    if (!value) continue;
    std::wstring rebuilt(Mid(text, 1, i - 1));
    rebuilt += CharacterOf(*value);
    rebuilt += Mid(text, j + 2, Length(text));
    text = rebuilt;
  }
}

bool IsAt(std::wstring_view text, int at, std::wstring_view marker) {
  // Most places differ in the first character already.
  if (at > Length(text) || Lower(Mid(text, at, 1)) != Mid(marker, 1, 1)) return false;
  return Lower(Mid(text, at, Length(marker))) == marker;
}

// From start up to start + window; 0 when it is not there.
int FindWithin(std::wstring_view text, int start, int window, std::wstring_view mark) {
  for (int at = start; at <= start + window; ++at) {
    if (Mid(text, at, Length(mark)) == mark) return at;
  }
  return 0;
}

// Sets a field that follows a marker at the place and ends in the window.
bool TakeField(std::wstring& field, std::wstring_view text, int at, std::wstring_view marker,
               std::wstring_view mark, int window) {
  if (!IsAt(text, at, marker)) return false;
  const int start = at + Length(marker);
  const int end = FindWithin(text, start, window, mark);
  if (end != 0) field = Mid(text, start, end - start);
  return end != 0;
}

int InStrAnyCase(int start, std::wstring_view text, std::wstring_view part) {
  for (int at = start; at + Length(part) - 1 <= Length(text); ++at) {
    if (IsAt(text, at, part)) return at;
  }
  return 0;
}

// A negative length leaves the field as it was.
void Cut(std::wstring& field, const std::wstring& text, int start, int end) {
  if (end - start < 0) return;
  field = Mid(text, start, end - start);
}

}  // namespace

std::wstring ReplaceHTML(std::wstring text) {
  DecodeReferences(text);
  text = ReplaceOnce(text, L"<b>", L"");
  text = ReplaceOnce(text, L"</b>", L"");
  for (const auto& [name, character] : expected::kNamed) {
    text = ReplaceOnce(text, name, std::wstring(1, static_cast<wchar_t>(character)));
  }
  return text;
}

Search GetShoutcast(const std::wstring& text) {
  Search stations;
  StationRow latest;
  int count = 0;
  int resume = 0;
  int last = 0;
  while (count != 200) {
    const int start = InStrAnyCase(resume + 1, text, L"id:");
    if (start == 0) break;
    if (start <= last) stations.isWhole = false;
    last = start;
    int a = InStr(start, text, L"\"") + 1;
    int b = InStr(a, text, L"\"");
    Cut(latest.url, text, a, b);
    // A search from 0 fails, and the statement that it is part of does nothing.
    if (b != 0) a = InStr(b, text, L"mt:") + 4;
    b = InStr(a, text, L"\"");
    Cut(latest.type, text, a, b);
    if (b != 0) a = InStr(b, text, L"name:") + 6;
    b = InStr(a, text, L"\"");
    Cut(latest.name, text, a, b);
    a = InStr(a, text, L"lc:") + 3;
    b = InStr(a, text, L",");
    Cut(latest.listeners, text, a, b);
    a = InStr(a, text, L"br:") + 3;
    b = InStr(a, text, L",");
    Cut(latest.bitRate, text, a, b);
    resume = b;
    ++count;
    stations.rows.push_back({latest.name, latest.type, latest.bitRate + L" kbps",
                             L"http://yp.shoutcast.com/sbin/tunein-station.pls?id=" + latest.url,
                             L"收聽人數：" + latest.listeners, L""});
  }
  return stations;
}

Search GetIcecast(const std::wstring& page) {
  const std::wstring text = ReplaceHTML(page);
  const int n = Length(text);
  Search stations;
  StationRow latest;
  for (int i = 1; i <= n; ++i) {
    TakeField(latest.listeners, text, i, L"listeners\">[", L" ", 500);
    TakeField(latest.name, text, i, L"-description\">", L"<", 100);
    if (IsAt(text, i, L"/listen/")) {
      if (const int at = FindWithin(text, i, 100, L".m3u")) {
        latest.url = L"http://dir.xiph.org" + std::wstring(Mid(text, i, at + 4 - i));
      }
    }
    if (TakeField(latest.bitRate, text, i, L"format\" title=\"", L"\"", 20)) {
      if (latest.bitRate.empty() || latest.bitRate == L"0 kbps") latest.bitRate = L"未知";
    }
    if (TakeField(latest.type, text, i, L"streams\">", L"<", 20)) {
      const std::wstring format = Lower(latest.type);
      StationRow row = latest;
      row.type = format == L"ogg vorbis" ? L"OGG" : format == L"aac+" ? L"AAC+" : L"MP3";
      row.listeners = L"收聽人數：" + latest.listeners;
      stations.rows.push_back(row);
    }
  }
  return stations;
}

Search GetLiveDoor(const std::wstring& page, std::wstring (*capitals)(std::wstring_view text)) {
  std::wstring text = ReplaceOnce(page, L"</a></li><li class=\"user\"><strong>DJ", L" DJ");
  text = ReplaceOnce(text, L"</strong>", L"");
  const int n = Length(text);
  Search stations;
  StationRow latest;
  std::wstring channel;
  for (int i = 1; i <= n; ++i) {
    TakeField(latest.url, text, i, L"button\"><a href=\"", L"\"", 500);
    TakeField(latest.name, text, i, L"細\">", L"<", 100);
    TakeField(latest.bitRate, text, i, L"tool/kbps_", L".gif", 100);
    TakeField(channel, text, i, L"tool/ch_", L".gif", 100);
    if (TakeField(latest.type, text, i, L"tool/type_", L".gif", 100))
      latest.type = capitals(latest.type);
    if (TakeField(latest.listeners, text, i, L"listener\"><span>", L"<", 100)) {
      StationRow row = latest;
      row.bitRate += L" kbps ";
      row.bitRate += channel == L"stereo" ? L"雙聲道" : L"單聲道";
      row.listeners = L"收聽人數：" + capitals(latest.listeners);
      stations.rows.push_back(row);
    }
  }
  return stations;
}

Search GetHinet(const std::wstring& text, const std::wstring& urlPrefix) {
  constexpr std::array<const wchar_t*, 13> kExcluded = {L"警廣", L"全國", L"Br",   L"ne",   L"大愛",
                                                        L"古都", L"真心", L"臺北", L"台灣", L"正義",
                                                        L"快樂", L"非凡", L"新客"};
  Search stations;
  int resume = 0;
  for (;;) {
    const int item = InStrAnyCase(resume + 1, text, L"item id");
    if (item == 0) return stations;
    stations.isWhole = false;
    const int quote = InStr(item, text, L"\"");
    if (quote == 0) return stations;
    const int a = quote + 1;
    const int b = InStr(a, text, L"\"");
    if (b == 0) return stations;
    const std::wstring_view id = Mid(text, a, b - a);
    const int marker = InStr(b, text, L"myTitle=");
    if (marker == 0) return stations;
    const int t = marker + 9;
    const int e = InStr(t, text, L"\"");
    if (e == 0) return stations;
    const std::wstring_view title = Mid(text, t, e - t);
    stations.isWhole = true;
    resume = e;
    bool isExcluded = false;
    for (const wchar_t* const prefix : kExcluded) {
      if (Mid(title, 1, 2) == prefix) isExcluded = true;
    }
    if (isExcluded) continue;
    stations.rows.push_back({std::wstring(title), L"WMA", L"48 kbps", urlPrefix + std::wstring(id),
                             L"收聽人數：未知", L""});
  }
}

}  // namespace tellurvane::literal
