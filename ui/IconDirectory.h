// The directory of an icon file (ICO) held in memory, as the format's description has it.
//
//   0  reserved, 2 bytes    not checked
//   2  type, 2 bytes        not checked
//   4  count, 2 bytes
//   6  count entries of 16 bytes: width, height, colour count, reserved (a byte each), planes,
//      bit count (2 bytes each), length and offset of the image (4 bytes each)
//
// All numbers are little-endian; offsets count from the file's begin.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace tellurvane {

// The fields as stored. A width or height of 0 means 256.
struct IconEntry {
  std::uint8_t width = 0;
  std::uint8_t height = 0;
  std::uint8_t colorCount = 0;
  std::uint8_t reserved = 0;
  std::uint16_t planes = 0;
  std::uint16_t bitCount = 0;
  std::uint32_t length = 0;
  std::uint32_t offset = 0;

  bool operator==(const IconEntry&) const = default;
};

// Takes any bytes. Empty where the count is 0, or where the data ends before the directory does.
std::vector<IconEntry> ParseIconDirectory(std::string_view bytes);

// The image that the entry names: a part of the bytes. Empty where it lies outside them, wholly or
// in part.
std::string_view IconImage(std::string_view bytes, const IconEntry& entry);

}  // namespace tellurvane
