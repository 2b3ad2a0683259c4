// The stations of Radio Browser's answer, read with the platform's XML parser.
#pragma once

#include <string>
#include <vector>

#include "radio/BrowserStation.h"

namespace tellurvane {

// `answer` is UTF-8. Throws DirectoryError if it is no complete list of stations. A text with a
// document type, through which entities could be declared, is not parsed. Needs a thread with COM.
std::vector<BrowserStation> ReadStationXml(const std::string& answer);

}  // namespace tellurvane
