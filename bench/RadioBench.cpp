// The rules of the radio directories on this machine: a page as the directory sends it, and pages
// that are made to be slow.
#include <benchmark/benchmark.h>
#include <malloc.h>

#include <algorithm>
#include <functional>
#include <limits>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/Text.h"
#include "radio/ReplaceHTML.h"
#include "radio/StationParsers.h"
#include "tests/radio/SamplePages.h"

namespace tellurvane {
namespace {

constexpr size_t kPage = size_t{1} << 20;
constexpr size_t kLongPage = 16 * kPage;

// What a search does with a page; how much came out.
using Work = std::function<size_t(const std::wstring& page)>;

struct Rule {
  const char* name;
  std::wstring_view sample;
  Work work;
  std::vector<std::wstring_view> hostile;  // repeated, each makes a page
};

const std::vector<Rule> kRules = {
    {"ReplaceHTML",
     kIcecastSample,
     [](const std::wstring& page) { return ReplaceHTML(page).size(); },
     {L"&",        L"& ",       L"&; ",        L"&;;;;;; ",  L"&lt; ",   L"&a",     L"&o",
      L"a",        L"<b>",      L"b> ",        L"&#65;",     L"&#1",     L"&#",     L"&Aacute",
      L"&aacute;", L"&amp;lt;", L"&&num;039;", L"&lt&semi;", L"&hellip", L"&l<b>t;"}},
    {"GetShoutcast",
     kShoutcastSample,
     [](const std::wstring& page) { return GetShoutcast(PreparedShoutcast(page)).rows.size(); },
     {L"id:", L"id\"", L"i", L"\"", L"\":", L",", L"m", L"mt:", L"t:e:c:r:d:", L"id:\"1\",mt:\"",
      L"id:\"1\",mt:\"t\",name:\"n\",lc:1"}},
    {"GetIcecast",
     kIcecastSample,
     [](const std::wstring& page) { return GetIcecast(page).size(); },
     {L"streams\">", L"streams\"><", L"listeners\">[", L"-description\">", L"/listen/",
      L"format\" title=\"", L"listener", L"&", L"&o"}},
    {"GetLiveDoor",
     kLiveDoorSample,
     [](const std::wstring& page) {
       return GetLiveDoor(PreparedLiveDoor(page), AsciiLoweredText).size();
     },
     {L"button\"><a href=\"", L"細\">", L"tool/kbps_", L"tool/type_.gif", L"tool/", L"<",
      L"listener\"><span><", L"</strong>", L"</a></li><li class=\"user\"><strong>DJ"}},
    {"GetHinet",
     kHinetSample,
     [](const std::wstring& page) { return GetHinet(page, L"mms://host/").rows.size(); },
     {L"item id", L"item id\"\"", L"i", L"\"", L"m", L"item id\"\"myTitle=\"\""}}};

std::wstring Repeated(std::wstring_view piece, size_t size) {
  std::wstring page;
  while (page.size() < size) page += piece;
  page.resize(size);
  return page;
}

void Measure(const std::string& name, std::wstring_view piece, size_t size, const Work& work) {
  benchmark::RegisterBenchmark(name.c_str(), [=](benchmark::State& state) {
    const std::wstring page = Repeated(piece, size);
    for (auto _ : state) benchmark::DoNotOptimize(work(page));
  })->Unit(benchmark::kMillisecond);
}

// What the rules are compared with.
size_t CountMarks(const std::wstring& page) {
  return static_cast<size_t>(std::ranges::count(page, L'&') + std::ranges::count(page, L'<') +
                             std::ranges::count(page, L'"'));
}

void MeasureAll() {
  Measure("count_marks", kIcecastSample, kPage, CountMarks);
  for (const Rule& rule : kRules) {
    const std::string name = rule.name;
    Measure(name + "/1MB", rule.sample, kPage, rule.work);
    Measure(name + "/16MB", rule.sample, kLongPage, rule.work);
    for (const std::wstring_view piece : rule.hostile) {
      std::string text;
      for (const wchar_t unit : piece) text += unit < 128 ? static_cast<char>(unit) : '?';
      Measure(name + "/hostile/" + text, piece, kPage, rule.work);
    }
  }
}

}  // namespace
}  // namespace tellurvane

int main(int count, char** arguments) {
  // The allocator keeps its memory: fresh pages from the system are not the rules' own time.
  mallopt(M_MMAP_MAX, 0);
  mallopt(M_TRIM_THRESHOLD, std::numeric_limits<int>::max());
  benchmark::Initialize(&count, arguments);
  tellurvane::MeasureAll();
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
