#include "ui/IconDirectory.h"

#include <cstddef>

namespace tellurvane {
namespace {

constexpr size_t kCountAt = 4;
constexpr size_t kHeaderSize = 6;
constexpr size_t kEntrySize = 16;

// The caller has checked the size.
std::uint8_t Byte(std::string_view bytes, size_t at) {
  return static_cast<std::uint8_t>(bytes[at]);
}

std::uint16_t Word(std::string_view bytes, size_t at) {
  return static_cast<std::uint16_t>(Byte(bytes, at) | (Byte(bytes, at + 1) << 8));
}

std::uint32_t DoubleWord(std::string_view bytes, size_t at) {
  return Word(bytes, at) | (static_cast<std::uint32_t>(Word(bytes, at + 2)) << 16);
}

IconEntry ReadEntry(std::string_view entry) {
  return {.width = Byte(entry, 0),
          .height = Byte(entry, 1),
          .colorCount = Byte(entry, 2),
          .reserved = Byte(entry, 3),
          .planes = Word(entry, 4),
          .bitCount = Word(entry, 6),
          .length = DoubleWord(entry, 8),
          .offset = DoubleWord(entry, 12)};
}

}  // namespace

std::vector<IconEntry> ParseIconDirectory(std::string_view bytes) {
  if (bytes.size() < kHeaderSize) return {};
  const size_t count = Word(bytes, kCountAt);
  // All or nothing: a file cut off inside its directory has lost its images too.
  if ((bytes.size() - kHeaderSize) / kEntrySize < count) return {};
  std::vector<IconEntry> entries;
  entries.reserve(count);
  for (size_t i = 0; i < count; ++i) {
    entries.push_back(ReadEntry(bytes.substr(kHeaderSize + kEntrySize * i, kEntrySize)));
  }
  return entries;
}

std::string_view IconImage(std::string_view bytes, const IconEntry& entry) {
  if (entry.offset > bytes.size() || entry.length > bytes.size() - entry.offset) return {};
  return bytes.substr(entry.offset, entry.length);
}

}  // namespace tellurvane
