#include "app/OpenFileFilter.h"

#include <gtest/gtest.h>

#include <string>

namespace tellurvane {
namespace {

// With a bar for each NUL, so that it can be read.
std::wstring Readable(std::wstring filter) {
  for (wchar_t& unit : filter) {
    if (unit == L'\0') unit = L'|';
  }
  return filter;
}

TEST(OpenFileFilter, OffersPrograms) {
  EXPECT_EQ(Readable(OpenFileFilter(true)), L"應用程式|*.Exe||");
}

TEST(OpenFileFilter, OffersTenKindsOfAudio) {
  EXPECT_EQ(Readable(OpenFileFilter(false)),
            L"本軟體支援的格式|"
            L"*.Alac;*.Tta;*.Wav;*.Ape;*.Mpc;*.Ogg;*.Aac;*.Mp3;*.Wma;*.Mp4;*.M4a|"
            L"Apple Lossless Audio Coding (*.Alac;*.Aac)|*.Alac;*.Aac|"
            L"Monkey's Audio Media (*.Ape)|*.Ape|"
            L"MPEG Audio Layer 3 Media (*.Mp3)|*.Mp3|"
            L"Mpeg-4 Audio Media (*.Mp4;*.M4a)|*.Mp4;*.M4a|"
            L"MusePack Audio Media (*.Mpc)|*.Mpc|"
            L"Ogg Vorbis Audio Media (*.Ogg)|*.Ogg|"
            L"The True Audio File (*.Tta)|*.Tta|"
            L"Wav Audio Media (*.Wav)|*.Wav|"
            L"Windows Media Audio Media (*.Wma)|*.Wma||");
}

TEST(FolderOf, KeepsTheTrailingBackslash) {
  EXPECT_EQ(FolderOf(L"C:\\Music\\a.mp3"), L"C:\\Music\\");
  EXPECT_EQ(FolderOf(L"C:\\a.mp3"), L"C:\\");
  EXPECT_EQ(FolderOf(L"a.mp3"), L"");
}

}  // namespace
}  // namespace tellurvane
