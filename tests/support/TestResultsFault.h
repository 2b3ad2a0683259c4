// What must hold for the results of a test program; shared by the fuzz target and the tests.
#pragma once

#include <algorithm>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "packaging/kit/TestResults.h"

namespace tellurvane {

// As GoogleTest writes the value of an attribute.
inline std::string EscapedValue(std::string_view text) {
  using Escape = std::pair<char, std::string_view>;
  constexpr Escape kEscapes[] = {{'<', "&lt;"},    {'>', "&gt;"},   {'&', "&amp;"},
                                 {'\'', "&apos;"}, {'"', "&quot;"}, {'\t', "&#x09;"},
                                 {'\r', "&#x0D;"}};
  std::string value;
  for (const char character : text) {
    const auto* const escape = std::ranges::find(kEscapes, character, &Escape::first);
    if (escape == std::end(kEscapes)) {
      value += character;
    } else {
      value += escape->second;
    }
  }
  return value;
}

// GoogleTest writes a text a second time, as data.
inline std::string DataSection(std::string text) {
  constexpr std::string_view kEnd = "]]>";
  constexpr std::string_view kSplitEnd = "]]>]]&gt;<![CDATA[";
  for (size_t at = text.find(kEnd); at != std::string::npos;
       at = text.find(kEnd, at + kSplitEnd.size())) {
    text.replace(at, kEnd.size(), kSplitEnd);
  }
  return "<![CDATA[" + text + "]]>";
}

// A result file, and the results that it stands for.
struct WrittenResults {
  std::string xml = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<testsuites>\n<testsuite>\n";
  TestResults results = {};
};

// Each line is the name and the text of a test. Its first byte chooses how the test ended.
inline WrittenResults WrittenFrom(std::string_view lines) {
  constexpr char kSuite[] = "Suite";
  WrittenResults written;
  while (!lines.empty()) {
    std::string text(lines.substr(0, lines.find('\n')));
    lines.remove_prefix(std::min(text.size() + 1, lines.size()));
    // GoogleTest leaves them out.
    std::erase_if(text, [](char c) { return c >= 0 && c < ' ' && c != '\t' && c != '\r'; });
    const int ending = text.empty() ? 0 : static_cast<unsigned char>(text[0]) % 4;
    const std::string value = EscapedValue(text);
    const std::string note = " message=\"" + value + "\" type=\"\">" + DataSection(text) + "</";
    const std::string test = std::string(kSuite) + "." + text;
    written.xml += "<testcase name=\"" + value + "\" result=\"" +
                   (ending == 1 ? "skipped" : "completed") + "\" classname=\"" + kSuite + "\"";
    if (ending == 1) {
      written.xml += ">\n<skipped" + note + "skipped>\n</testcase>\n";
      written.results.skipped.push_back({test, text});
    } else if (ending > 1) {
      // Some fail at two places.
      const bool isTwice = ending == 3;
      const std::string failure = "<failure" + note + "failure>\n";
      written.xml += ">\n" + failure + (isTwice ? failure : "") + "</testcase>\n";
      written.results.failed.push_back({test, isTwice ? text + "\n" + text : text});
    } else {
      written.xml += " />\n";
      ++written.results.passed;
    }
  }
  written.xml += "</testsuite>\n</testsuites>\n";
  return written;
}

// Any bytes as a file: a part of it gives no results or all, and a longer part not fewer.
inline std::string CutFileFault(std::string_view xml) {
  constexpr size_t kParts = 16;
  const std::optional<TestResults> whole = ReadTestXml(xml);
  bool isComplete = false;
  for (size_t part = 0; part < kParts; ++part) {
    const std::optional<TestResults> results =
        ReadTestXml(xml.substr(0, xml.size() * part / kParts));
    if (results ? results != whole : isComplete) return "a part of a file gives other results";
    isComplete = results.has_value();
  }
  return {};
}

// Any lines as the texts of tests: the results read as they were written, or not at all.
inline std::string WrittenFileFault(std::string_view lines) {
  const WrittenResults written = WrittenFrom(lines);
  if (ReadTestXml(written.xml) != written.results)
    return "results read differently: " + written.xml;
  const std::string_view cutOff(written.xml.data(), written.xml.rfind('>'));
  if (ReadTestXml(cutOff)) return "a file without its end gives results";
  return CutFileFault(written.xml);
}

// Any bytes as what a program printed.
inline std::string UnfinishedTestFault(const std::string& output) {
  const std::string run = "[ RUN      ] ";
  const std::string test = UnfinishedTest(output);
  if (test.find_first_of("\r\n") != std::string::npos) return "a name has two lines";
  if (!test.empty()) {
    if (output.find(run + test) == std::string::npos) return "a test ran that was not printed";
    if (!UnfinishedTest(output + "\n[       OK ] " + test).empty()) return "a test never ends";
  }
  if (UnfinishedTest(output + "\n" + run + "A.b\r\n") != "A.b") return "the last test is not found";
  return {};
}

// Returns the fault; empty if there is none.
inline std::string TestResultsFault(const std::string& bytes) {
  for (const std::string& fault :
       {CutFileFault(bytes), WrittenFileFault(bytes), UnfinishedTestFault(bytes)}) {
    if (!fault.empty()) return fault;
  }
  return {};
}

}  // namespace tellurvane
