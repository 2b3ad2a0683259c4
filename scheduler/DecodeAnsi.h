// The bytes of a list that is not in UTF-16: one that was written by hand, say.
#pragma once

#include <string_view>

#include "scheduler/TaskListText.h"

namespace tellurvane {

// Decodes bytes in the user's ANSI code page. Bytes that are none of its text but are UTF-8, as
// today's editors write it, are read as that. A loss is told where they are neither, where they
// could be both, and where they bear the mark of UTF-8 and are none.
DecodedText DecodeAnsi(std::string_view bytes);

// The same with a code page by its number. Where it is UTF-8 itself, nothing can be both.
DecodedText DecodeFromCodePage(std::string_view bytes, unsigned codePage);

}  // namespace tellurvane
