// An icon file (ICO) held in memory, one of whose images is drawn.
#pragma once

#include <windows.h>

#include <string>
#include <string_view>
#include <vector>

#include "ui/IconDirectory.h"

namespace tellurvane {

// Takes any bytes. Image indices count from 0; for an unknown image every field is 0, the data
// empty, and nothing is drawn.
class ClsIcon {
 public:
  // Keeps a copy of the bytes. False, and nothing kept, where they name no image or end inside
  // their directory.
  bool LoadFromData(std::string_view bytes);
  // False as above, and where the file cannot be read. An empty path changes nothing.
  bool LoadFromFile(const std::wstring& path);

  int Count() const { return static_cast<int>(directory_.size()); }

  // As stored: a width or height of 256 pixels is stored, and returned, as 0.
  int Width(int index) const { return Entry(index).width; }
  int Height(int index) const { return Entry(index).height; }
  int ColorCount(int index) const { return Entry(index).colorCount; }
  int BitCount(int index) const { return Entry(index).bitCount; }
  // Bytes.
  DWORD Length(int index) const { return Entry(index).length; }

  // The image's bytes, good until the next loading. Empty where they lie outside the file.
  std::string_view Data(int index) const { return IconImage(bytes_, Entry(index)); }

  // Draws the image in its own size, with its mask and opacity. False where the system does not
  // take it for one.
  bool Draw(HDC target, int x, int y, int index) const;

 private:
  IconEntry Entry(int index) const;

  std::string bytes_;
  std::vector<IconEntry> directory_;
};

}  // namespace tellurvane
