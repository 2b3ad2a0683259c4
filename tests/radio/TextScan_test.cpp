#include "radio/TextScan.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <random>

namespace tellurvane {
namespace {

// Few different characters, so that markers stand everywhere, also half of them.
std::wstring RandomText(size_t size, std::mt19937& random) {
  std::wstring text(size, L'\0');
  for (wchar_t& unit : text) unit = L"aAb\""[random() % 4];
  return text;
}

TEST(FindMarkerTest, FindsWhatThePlainSearchFinds) {
  std::mt19937 random(7);
  for (size_t size = 0; size < 70; ++size) {
    const std::wstring text = RandomText(size, random);
    for (const wchar_t* const marker : {L"a", L"ab", L"bab\""}) {
      for (size_t from = 0; from <= size + 1; ++from) {
        EXPECT_EQ(FindMarker(text, from, marker), text.find(marker, from)) << size << " " << from;
      }
    }
  }
}

TEST(FindMarkerTest, FindsAMarkerInAnyCase) {
  std::mt19937 random(8);
  for (size_t size = 0; size < 70; ++size) {
    const std::wstring text = RandomText(size, random);
    std::wstring small = text;
    std::ranges::replace(small, L'A', L'a');
    for (const wchar_t* const marker : {L"ab", L"baa\""}) {
      for (size_t from = 0; from <= size + 1; ++from) {
        EXPECT_EQ(FindMarkerAnyCase(text, from, marker), small.find(marker, from));
      }
    }
  }
  // Not what only looks like a capital: the Kelvin sign, and what differs from one by that bit.
  EXPECT_EQ(FindMarkerAnyCase(L"a\u212A [:", 0, L"ak"), kNotFound);
  EXPECT_EQ(FindMarkerAnyCase(L"\x1B\x1A", 0, L";:"), kNotFound);
}

TEST(OccurrencesTest, AnswersForPlacesInAnyOrder) {
  std::mt19937 random(9);
  for (const wchar_t* const marker : {L"a", L"ab", L"aab\"", L"not there"}) {
    const std::wstring text = RandomText(500, random);
    std::vector<size_t> places(text.size() + 2);
    std::iota(places.begin(), places.end(), size_t{0});
    std::ranges::shuffle(places, random);
    Occurrences occurrences(text, marker);
    for (const size_t place : places) {
      EXPECT_EQ(occurrences.From(place), text.find(marker, place)) << place;
    }
  }
}

TEST(NextOccurrenceTest, AnswersUpToTheWindow) {
  const std::wstring text = L"a...a";
  NextOccurrence next(text, L"a");
  EXPECT_EQ(next.Within(0, 0), 0U);
  EXPECT_EQ(next.Within(1, 2), kNotFound);
  EXPECT_EQ(next.Within(1, 3), 4U);
  EXPECT_EQ(next.Within(4, 0), 4U);
  EXPECT_EQ(next.Within(5, 100), kNotFound);
}

}  // namespace
}  // namespace tellurvane
