// The rules of the radio directories on this machine. The report sets each beside scalar_pass over
// the same page in the same run, and a flood beside the directory's own page.
#include <benchmark/benchmark.h>
#include <malloc.h>

#include <functional>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "base/LetterCase.h"
#include "bench/RadioPages.h"
#include "bench/ScalarPass.h"
#include "radio/ReplaceHTML.h"
#include "radio/StationParsers.h"
#include "tests/radio/LiteralRules.h"

namespace tellurvane {
namespace {

constexpr size_t kSmall = size_t{64} << 10;
constexpr size_t kMiddle = size_t{1} << 20;
constexpr size_t kLarge = size_t{16} << 20;

// What a search does with the page that came, which is its own; how much came out.
using Work = std::function<size_t(std::wstring page)>;
struct Directory {
  const char* name;
  std::wstring (*page)(size_t size);
  Work fast;
  Work literal;
  std::vector<std::wstring> floods;
};

std::vector<Directory> Directories() {
  return {
      {"decoding",
       IcecastPage,
       [](std::wstring page) { return ReplaceHTML(std::move(page)).size(); },
       [](const std::wstring& page) { return literal::ReplaceHTML(page).size(); },
       {L"&#",      L"<b>",        L"</b>",      L"&",        L"& ",
        L"<",       L"b>",         L"ab> ",      L"&#65;",    L"&#0000000065;",
        L"&#1",     L"&#999;",     L"&amp;",     L"&amp;lt;", L"&amp;amp;",
        L"&l<b>t;", L"&&num;039;", L"&lt&semi;", L"&hellip",  L"&aaaaaaa;",
        L"&p",      L";&",         L"&;;;;;;;",  L"<<b>b>",   L"</<b>b>"}},
      {"GetShoutcast",
       ShoutcastPage,
       [](std::wstring page) {
         return GetShoutcast(PreparedShoutcast(std::move(page))).rows.size();
       },
       [](const std::wstring& page) {
         return literal::GetShoutcast(PreparedShoutcast(page)).rows.size();
       },
       {L"id:", L"id\"", L"i", L"id", L"d:", L"\"", L"\":", L",", L"mt:", L"t:e:c:r:d:",
        L"id:\"1\",mt:\"", L"id:\"1\",mt:\"t\",name:\"", L"id:\"1\",mt:\"t\",name:\"n\",lc:1"}},
      {"GetIcecast",
       IcecastPage,
       [](std::wstring page) { return GetIcecast(std::move(page)).size(); },
       [](const std::wstring& page) { return literal::GetIcecast(page).size(); },
       {L"streams\">", L"streams\"><", L"listeners\">[", L"listeners\">[ ", L"-description\">",
        L"-description\"><", L"/listen/", L"/listen/.m3u", L"/listen/.", L"format\" title=\"",
        L"s\">", L"n/", L"t\"", L"listeners\">[streams\"><", L"&#", L"<b>", L"&amp;lt;", L"&"}},
      {"GetLiveDoor",
       LiveDoorPage,
       [](std::wstring page) { return GetLiveDoor(PreparedLiveDoor(std::move(page))).size(); },
       [](const std::wstring& page) {
         return literal::GetLiveDoor(PreparedLiveDoor(page), Capitals).size();
       },
       {L"button\"><a href=\"", L"細\">", L"細\"><", L"tool/kbps_", L"tool/ch_.", L"tool/type_.gif",
        L"listener\"><span>", L"listener\"><span><", L"r\">", L"l/", L"<", L"</strong>",
        L"</a></li><li class=\"user\"><strong>DJ", L"<span class=\"many\">"}},
      {"GetHinet",
       HinetPage,
       [](std::wstring page) { return GetHinet(std::move(page), L"mms://host/").rows.size(); },
       [](const std::wstring& page) { return literal::GetHinet(page, L"mms://host/").rows.size(); },
       {L"item id", L"item id\"", L"item id\"\"", L"id", L" i", L"item i", L"\"", L"myTitle=",
        L"item id\"\"myTitle=\"\"", L"item id\"\"myTitle= \"ne\""}},
  };
}

void Measure(const std::string& name, const std::function<std::wstring()>& makePage,
             const Work& work) {
  benchmark::RegisterBenchmark(name.c_str(), [makePage, work](benchmark::State& state) {
    const std::wstring page = makePage();
    for (auto _ : state) {
      // A search gives the page away, so making another one is not the rule's own time.
      state.PauseTiming();
      std::wstring own = page;
      state.ResumeTiming();
      benchmark::DoNotOptimize(work(std::move(own)));
    }
  })->Unit(benchmark::kMicrosecond);
}

size_t CountMarks(const std::wstring& page) {
  const MarkCounts counts = ScalarPass(page);
  return counts.ampersands + counts.lessThan + counts.greaterThan + counts.quotes;
}

void MeasureAll() {
  for (const Directory& directory : Directories()) {
    const std::string name = directory.name;
    for (const size_t size : {kSmall, kMiddle, kLarge}) {
      const auto page = [make = directory.page, size] { return make(size); };
      const std::string suffix = "/" + std::to_string(size);
      Measure(name + "/scalar_pass" + suffix, page, CountMarks);
      Measure(name + "/fast" + suffix, page, directory.fast);
      if (size == kSmall) Measure(name + "/literal" + suffix, page, directory.literal);
    }
    for (const std::wstring& piece : directory.floods) {
      std::string text;
      for (const wchar_t unit : piece) text += unit < 128 ? static_cast<char>(unit) : '?';
      Measure(
          name + "/flood/" + text, [piece] { return Flood(piece, kMiddle); }, directory.fast);
    }
  }
}

}  // namespace
}  // namespace tellurvane

int main(int count, char** arguments) {
  // The allocator keeps its memory: what the system takes to hand out fresh pages is not the rules'
  // own time, and a large buffer would cost more of it than a small one.
  mallopt(M_MMAP_MAX, 0);
  mallopt(M_TRIM_THRESHOLD, std::numeric_limits<int>::max());
  benchmark::Initialize(&count, arguments);
  tellurvane::MeasureAll();
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
