#include "tests/radio/RandomPages.h"

#include <algorithm>
#include <cstdlib>

namespace tellurvane {

int PageCount(int usual) {
  const char* const factor = std::getenv("TELLURVANE_PAGE_FACTOR");
  return factor == nullptr ? usual : usual * std::atoi(factor);
}

size_t RandomPages::Below(size_t limit) {
  return std::uniform_int_distribution<size_t>(0, limit - 1)(random_);
}

std::wstring RandomPages::Generated() {
  std::wstring page;
  for (size_t i = Below(40); i > 0; --i) {
    page += pieces_[Below(pieces_.size())];
    // Long enough, now and then, to keep an end out of its window.
    if (Below(8) == 0) page += std::wstring(Below(Below(8) == 0 ? 520 : 110), L'x');
  }
  if (!page.empty() && Below(3) == 0) page.erase(Below(page.size()), 1);
  return page;
}

std::wstring RandomPages::Mutated(std::wstring page) {
  for (size_t i = Below(6); i > 0; --i) Mutate(page);
  return page;
}

void RandomPages::Mutate(std::wstring& page) {
  const size_t at = Below(page.size() + 1);
  const size_t length = std::min(Below(12), page.size() - at);
  switch (Below(6)) {
    case 0:
      page.erase(at, length);
      break;
    case 1:
      page.insert(at, pieces_[Below(pieces_.size())]);
      break;
    case 2:
      page.insert(Below(page.size() + 1), page.substr(at, length));
      break;
    case 3:
      page.resize(at);
      break;
    case 4:
      page.insert(at, Below(600), L'x');
      break;
    default:
      // Turns a letter's case, and other characters into something else.
      if (at < page.size()) page[at] = static_cast<wchar_t>(page[at] ^ 0x20);
      break;
  }
}

}  // namespace tellurvane
