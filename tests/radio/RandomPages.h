// Random pages of a directory's format, whole and broken.
#pragma once

#include <random>
#include <span>
#include <string>
#include <string_view>

namespace tellurvane {

// How many a comparison looks at: the usual number, times what the environment variable
// TELLURVANE_PAGE_FACTOR asks for.
int PageCount(int usual);

class RandomPages {
 public:
  explicit RandomPages(std::span<const std::wstring_view> pieces) : pieces_(pieces) {}

  // Put together from the pieces, so that they meet and complete each other.
  std::wstring Generated();
  // The given page after a few changes.
  std::wstring Mutated(std::wstring page);

 private:
  size_t Below(size_t limit);
  void Mutate(std::wstring& page);

  std::span<const std::wstring_view> pieces_;
  std::mt19937 random_{20'110'214};
};

}  // namespace tellurvane
