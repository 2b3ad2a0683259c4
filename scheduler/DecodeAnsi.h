// Decodes a list file that is not UTF-16, for example one written by hand.
#pragma once

#include <string_view>

#include "scheduler/TaskListText.h"

namespace tellurvane {

// Decodes bytes in the user's ANSI code page, or as UTF-8 when they are not valid in that page.
// Reports a loss when they are neither, when they could be both, and when they have the mark of
// UTF-8 but are not UTF-8.
DecodedText DecodeAnsi(std::string_view bytes);

// The same with a given code page. If that is UTF-8 itself, nothing can be both.
DecodedText DecodeFromCodePage(std::string_view bytes, unsigned codePage);

}  // namespace tellurvane
