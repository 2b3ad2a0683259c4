// The directory of radio-browser.info: community-run, with several servers that answer alike.
#pragma once

#include <chrono>
#include <functional>
#include <string>
#include <vector>

#include "radio/BrowserStation.h"
#include "radio/DirectorySearch.h"

namespace tellurvane {

// All must be set. `fetch` and `read` throw DirectoryError.
struct RadioBrowserCallbacks {
  // The bytes of a server's answer, within the time.
  std::function<std::string(const std::wstring& host, const std::wstring& path,
                            std::chrono::milliseconds limit)>
      fetch;
  // The stations of an answer.
  std::function<std::vector<BrowserStation>(const std::string& answer)> read;
  // The time since any fixed moment.
  std::function<std::chrono::milliseconds()> elapsed;
  IsUsableAddress isUsable;
};

// Path and query of a search.
std::wstring RadioBrowserPath(const DirectoryQuery& query);

class RadioBrowser {
 public:
  static constexpr std::chrono::seconds kServerLimit{5};
  static constexpr std::chrono::seconds kWholeLimit{10};

  explicit RadioBrowser(RadioBrowserCallbacks callbacks) : callbacks_(std::move(callbacks)) {}

  // Asks one server after another until one answers with a list of stations. The next search asks
  // that server first. Throws the last server's DirectoryError when none does.
  StationSearch Search(const DirectoryQuery& query);

 private:
  RadioBrowserCallbacks callbacks_;
  std::vector<std::wstring> servers_ = {L"all", L"de1", L"de2", L"fi1"};
};

}  // namespace tellurvane
