#include "app/OpenFileFilter.h"

#include <string_view>
#include <utility>
#include <vector>

namespace tellurvane {
namespace {

using FilterPair = std::pair<std::wstring_view, std::wstring_view>;

const std::vector<FilterPair> kExecutables = {{L"應用程式", L"*.Exe"}};
const std::vector<FilterPair> kAudio = {
    {L"本軟體支援的格式", L"*.Alac;*.Tta;*.Wav;*.Ape;*.Mpc;*.Ogg;*.Aac;*.Mp3;*.Wma;*.Mp4;*.M4a"},
    {L"Apple Lossless Audio Coding (*.Alac;*.Aac)", L"*.Alac;*.Aac"},
    {L"Monkey's Audio Media (*.Ape)", L"*.Ape"},
    {L"MPEG Audio Layer 3 Media (*.Mp3)", L"*.Mp3"},
    {L"Mpeg-4 Audio Media (*.Mp4;*.M4a)", L"*.Mp4;*.M4a"},
    {L"MusePack Audio Media (*.Mpc)", L"*.Mpc"},
    {L"Ogg Vorbis Audio Media (*.Ogg)", L"*.Ogg"},
    {L"The True Audio File (*.Tta)", L"*.Tta"},
    {L"Wav Audio Media (*.Wav)", L"*.Wav"},
    {L"Windows Media Audio Media (*.Wma)", L"*.Wma"},
};

}  // namespace

std::wstring OpenFileFilter(bool wantExecutables) {
  std::wstring filter;
  for (const auto& [description, pattern] : wantExecutables ? kExecutables : kAudio) {
    (filter += description) += L'\0';
    (filter += pattern) += L'\0';
  }
  return filter += L'\0';
}

std::wstring FolderOf(const std::wstring& path) {
  return path.substr(0, path.find_last_of(L'\\') + 1);
}

}  // namespace tellurvane
