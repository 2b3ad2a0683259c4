// The parsers of the radio directories on this machine: on a page as the directory sends it, and on
// pages that are made to be slow.
#include <benchmark/benchmark.h>
#include <malloc.h>

#include <algorithm>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

#include "base/Text.h"
#include "radio/ReplaceHTML.h"
#include "radio/StationParsers.h"
#include "tests/radio/SamplePages.h"

namespace tellurvane {
namespace {

constexpr size_t kMegabyte = size_t{1} << 20;

// What a search does with a page; how much came out.
using Work = size_t (*)(const std::wstring& page);

struct Rule {
  const char* name;
  Work work;
  std::wstring_view sample;
  std::vector<std::wstring_view> hostile;  // a page is one of these again and again
};

const std::vector<Rule> kRules = {
    {"ReplaceHTML",
     [](const std::wstring& page) { return ReplaceHTML(page).size(); },
     kIcecastSample,
     {L"&", L"&; ", L"&;; ", L"&;;;;;; ", L"&lt; ", L"&a", L"&Aacute", L"&#1", L"<b> ", L"&amp;lt;",
      L"&hellip"}},
    {"GetShoutcast",
     [](const std::wstring& page) { return GetShoutcast(PreparedShoutcast(page)).rows.size(); },
     kShoutcastSample,
     {L"id:", L"id\"", L"i", L"\"", L",", L"id:\"1\",mt:\"", L"id:\"1\",mt:\"t\",name:\"n\",lc:1"}},
    {"GetIcecast",
     [](const std::wstring& page) { return GetIcecast(page).size(); },
     kIcecastSample,
     {L"streams\">", L"streams\"><", L"listeners\">[", L"/listen/", L"&a", L"&lt; "}},
    {"GetLiveDoor",
     [](const std::wstring& page) {
       return GetLiveDoor(PreparedLiveDoor(page), AsciiLoweredText).size();
     },
     kLiveDoorSample,
     {L"button\"><a href=\"", L"tool/kbps_", L"tool/type_.gif", L"<", L"listener\"><span><"}},
    {"GetHinet",
     [](const std::wstring& page) { return GetHinet(page, L"mms://host/").rows.size(); },
     kHinetSample,
     {L"item id", L"item id\"\"", L"i", L"item id\"\"myTitle=\"\""}}};

void Measure(const std::string& name, Work work, std::wstring_view piece, size_t size) {
  benchmark::RegisterBenchmark(name.c_str(), [=](benchmark::State& state) {
    std::wstring page;
    while (page.size() < size) page += piece;
    page.resize(size);
    for (auto _ : state) benchmark::DoNotOptimize(work(page));
  })->Unit(benchmark::kMillisecond);
}

void MeasureAll() {
  // The comparison: three passes of the standard library.
  const Work countMarks = [](const std::wstring& page) {
    return static_cast<size_t>(std::ranges::count(page, L'&') + std::ranges::count(page, L'<') +
                               std::ranges::count(page, L'"'));
  };
  Measure("count_marks", countMarks, kIcecastSample, kMegabyte);
  for (const Rule& rule : kRules) {
    const std::string name = rule.name;
    Measure(name + "/1MB", rule.work, rule.sample, kMegabyte);
    Measure(name + "/16MB", rule.work, rule.sample, 16 * kMegabyte);
    for (const std::wstring_view piece : rule.hostile) {
      Measure(name + "/hostile/" + std::string(piece.begin(), piece.end()), rule.work, piece,
              kMegabyte);
    }
  }
}

}  // namespace
}  // namespace tellurvane

int main(int count, char** arguments) {
  // The allocator keeps its memory: fresh memory pages from the system would count as the parsers'
  // time.
  mallopt(M_MMAP_MAX, 0);
  mallopt(M_TRIM_THRESHOLD, std::numeric_limits<int>::max());
  benchmark::Initialize(&count, arguments);
  tellurvane::MeasureAll();
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
