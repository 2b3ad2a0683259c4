#include "tests/radio/BrowserRules.h"

#include <cwchar>
#include <string_view>
#include <vector>

#include "base/Text.h"
#include "radio/BrowserStation.h"
#include "radio/PercentEncoding.h"
#include "radio/XmlBody.h"

namespace tellurvane {
namespace {

bool IsHigh(wchar_t unit) { return (unit & 0xFC00) == 0xD800; }
bool IsLow(wchar_t unit) { return (unit & 0xFC00) == 0xDC00; }

// Lone surrogates as U+FFFD.
std::wstring Mended(const std::wstring& text) {
  std::wstring mended = text;
  for (size_t i = 0; i < text.size(); ++i) {
    if (IsHigh(text[i]) && i + 1 < text.size() && IsLow(text[i + 1])) {
      ++i;
    } else if (IsHigh(text[i]) || IsLow(text[i])) {
      mended[i] = L'\xFFFD';
    }
  }
  return mended;
}

unsigned TakeByte(std::wstring_view& rest) {
  const size_t size = rest.front() == L'%' ? 3 : 1;
  const std::wstring taken(rest.substr(0, size));
  rest.remove_prefix(taken.size());
  return size == 1 ? static_cast<unsigned>(taken[0])
                   : static_cast<unsigned>(std::wcstoul(taken.c_str() + 1, nullptr, 16));
}

std::wstring Decoded(std::wstring_view rest) {
  std::wstring text;
  while (!rest.empty()) {
    const unsigned lead = TakeByte(rest);
    const int more = lead < 0x80 ? 0 : lead < 0xE0 ? 1 : lead < 0xF0 ? 2 : 3;
    unsigned character = more == 0 ? lead : lead & (0x3FU >> static_cast<unsigned>(more));
    for (int i = 0; i < more && !rest.empty(); ++i) {
      character = (character << 6U) | (TakeByte(rest) & 0x3FU);
    }
    if (character < 0x10000) {
      text += static_cast<wchar_t>(character);
    } else {
      text += static_cast<wchar_t>(0xD7C0 + (character >> 10U));
      text += static_cast<wchar_t>(0xDC00 + (character & 0x3FFU));
    }
  }
  return text;
}

bool IsOneTrimmedLine(const std::wstring& text) {
  return text == TrimBlanks(text) && text.find_first_of(L"\t\r\n\v\f") == std::wstring::npos;
}

}  // namespace

std::string EncodingFault(const std::wstring& text) {
  constexpr const wchar_t* kAddress =
      L"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~%";
  const std::wstring encoded = PercentEncoded(text);
  if (encoded.find_first_not_of(kAddress) != std::wstring::npos) return "a raw character";
  return Decoded(encoded) == Mended(text) ? "" : "another text comes back";
}

std::string RowsFault(const std::wstring& text) {
  std::vector<BrowserStation> stations;
  for (std::wstring_view rest = text; !rest.empty();) {
    BrowserStation& station = stations.emplace_back();
    for (std::wstring* const attribute : {&station.name, &station.codec, &station.bitRate,
                                          &station.url, &station.resolvedUrl, &station.hls}) {
      *attribute = TakeField(rest, L'\n');
    }
  }
  const auto isUsable = [](const std::wstring& address) { return address.starts_with(L"http"); };
  const StationRows rows = RowsOf(stations, isUsable);
  if (rows.size() > stations.size()) return "a row without a station";
  for (size_t i = 0; i < rows.size(); ++i) {
    const StationRow row = rows[i];
    if (row.name.empty()) return "a row without a name";
    if (!IsOneTrimmedLine(row.name) || !IsOneTrimmedLine(row.type)) return "not one trimmed line";
    if (row.bitRate != L"未知" && !row.bitRate.ends_with(L" kbps")) return "an odd bit rate";
    if (!isUsable(row.url) || !IsOneTrimmedLine(row.url)) return "an address of no use";
    if (text.find(row.url) == std::wstring::npos) return "an altered address";
  }
  return "";
}

std::string BodyFault(const std::wstring& text) {
  const std::wstring_view body = XmlBody(text);
  if (!text.ends_with(body)) return "not the end of the text";
  std::wstring_view front(text);
  front.remove_suffix(body.size());
  if (front.starts_with(L'\xFEFF')) front.remove_prefix(1);
  if (front.empty()) return "";
  const bool isDeclaration = front.starts_with(L"<?xml") && front.find(L"?>") == front.size() - 2;
  return isDeclaration ? "" : "more than a declaration is missing";
}

}  // namespace tellurvane
