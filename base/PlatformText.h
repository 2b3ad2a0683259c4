// The platform's letter case, which is the same in every locale, and its words for errors.
#pragma once

#include <string>
#include <string_view>

namespace tellurvane {

// Without regard to the case of letters of any script.
bool EqualsIgnoringCase(std::wstring_view left, std::wstring_view right);
// Each letter that has a capital of one unit becomes that capital.
std::wstring Capitals(std::wstring_view text);

// The system's words for one of its errors, in the user's language, without a line break at the
// end. `subject` replaces "%1". Empty if the system has no words.
std::wstring SystemErrorText(unsigned long error, std::wstring_view subject);

}  // namespace tellurvane
