// Every named entity against a table of its own, and which of them are decoded twice.
#include <gtest/gtest.h>

#include <iterator>
#include <string>

#include "radio/ReplaceHTML.h"
#include "tests/radio/ExpectedEntities.h"

namespace tellurvane {
namespace {

using expected::kNamed;

constexpr size_t kAmpersand = 6;  // the element of "&amp;"

TEST(NamedEntitiesTest, EachGivesItsCharacter) {
  for (const expected::Named& entity : kNamed) {
    EXPECT_EQ(ReplaceHTML(std::wstring(L"<") + entity.name + L">"),
              std::wstring(L"<") + static_cast<wchar_t>(entity.character) + L">")
        << &entity - kNamed;
  }
}

TEST(NamedEntitiesTest, ThoseBehindTheAmpersandAreDecodedTwice) {
  for (size_t i = 0; i < std::size(kNamed); ++i) {
    const std::wstring name = kNamed[i].name;
    const std::wstring escaped = L"&amp;" + name.substr(1);
    const std::wstring once = name;
    const std::wstring twice(1, static_cast<wchar_t>(kNamed[i].character));
    EXPECT_EQ(ReplaceHTML(escaped), i <= kAmpersand ? once : twice) << i;
  }
}

}  // namespace
}  // namespace tellurvane
