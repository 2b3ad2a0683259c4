// The properties of icon data with any bytes. The fuzz target and the tests check them.
#pragma once

#include <string>
#include <string_view>

#include "ui/IconDirectory.h"

namespace tellurvane {

// Parses the bytes and checks every image. Returns the fault; empty if there is none.
inline std::string IconDirectoryFault(std::string_view bytes) {
  const auto entries = ParseIconDirectory(bytes);
  if (!entries.empty() && bytes.size() < 6 + 16 * entries.size()) {
    return "there are more entries than the bytes hold";
  }
  for (size_t i = 0; i < entries.size(); ++i) {
    if (entries[i].width != static_cast<unsigned char>(bytes[6 + 16 * i])) {
      return "an entry is at a wrong place";
    }
    const std::string_view image = IconImage(bytes, entries[i]);
    if (image.empty()) continue;
    if (image.size() != entries[i].length) return "an image is cut";
    if (image.data() != bytes.data() + entries[i].offset) return "an image is displaced";
    if (image.data() + image.size() > bytes.data() + bytes.size()) return "an image is outside";
    // The copy reads all bytes, so that the sanitizer checks them.
    if (std::string(image).size() != image.size()) return "an image cannot be read";
  }
  return {};
}

}  // namespace tellurvane
