#include "packaging/kit/TestResults.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <utility>

namespace tellurvane {
namespace {

struct Tag {
  std::string_view name;        // "/testcase" for an end tag
  std::string_view attributes;  // with the blank before each
  bool isEmpty = false;         // <testcase ... />
};

// Reads the tags one after the other and leaves out the text between them.
class TagReader {
 public:
  explicit TagReader(std::string_view xml) : rest_(xml) {}

  // Empty at the end and where the text is cut off.
  std::optional<Tag> Next() {
    constexpr std::string_view kData = "<![CDATA[";
    for (;;) {
      rest_.remove_prefix(std::min(rest_.find('<'), rest_.size()));
      const bool isData = rest_.starts_with(kData);
      const std::string_view end = isData ? "]]>" : ">";
      const size_t length = rest_.find(end);
      if (length == std::string_view::npos) return std::nullopt;
      const std::string_view inside = rest_.substr(1, length - 1);
      rest_.remove_prefix(length + end.size());
      // The text of a test may look like a tag.
      if (isData || inside.starts_with('?')) continue;
      const size_t nameEnd = std::min(inside.find_first_of(" \r\n/", 1), inside.size());
      return Tag{inside.substr(0, nameEnd), inside.substr(nameEnd), inside.ends_with('/')};
    }
  }

 private:
  std::string_view rest_;
};

void AppendUtf8(std::string& text, std::uint32_t unit) {
  if (unit < 0x80) {
    text += static_cast<char>(unit);
    return;
  }
  // GoogleTest writes a number for control characters only, so two bytes are enough.
  text += static_cast<char>(0xC0 | (unit >> 6 & 0x1F));
  text += static_cast<char>(0x80 | (unit & 0x3F));
}

// The text of "&...;", without these two characters.
void AppendEntity(std::string& text, std::string_view entity) {
  constexpr std::pair<std::string_view, char> kNames[] = {
      {"amp", '&'}, {"lt", '<'}, {"gt", '>'}, {"quot", '"'}, {"apos", '\''}};
  for (const auto& [name, character] : kNames) {
    if (entity == name) {
      text += character;
      return;
    }
  }
  if (!entity.starts_with("#x")) return;
  std::uint32_t unit = 0;
  std::from_chars(entity.data() + 2, entity.data() + entity.size(), unit, 16);
  AppendUtf8(text, unit);
}

std::string Unescaped(std::string_view escaped) {
  std::string text;
  while (!escaped.empty()) {
    const size_t plain = std::min(escaped.find('&'), escaped.size());
    text += escaped.substr(0, plain);
    escaped.remove_prefix(plain);
    if (escaped.empty()) break;
    const size_t end = std::min(escaped.find(';'), escaped.size() - 1);
    AppendEntity(text, escaped.substr(1, end - 1));
    escaped.remove_prefix(end + 1);
  }
  return text;
}

// From value to value: a value may end like the beginning of an attribute.
std::string Attribute(const Tag& tag, const std::string& name) {
  const std::string wanted = " " + name + "=";
  std::string_view rest = tag.attributes;
  for (;;) {
    const size_t begin = rest.find('"');
    if (begin == std::string_view::npos) return "";
    const size_t end = rest.find('"', begin + 1);
    if (end == std::string_view::npos) return "";
    if (rest.substr(0, begin) == wanted) return Unescaped(rest.substr(begin + 1, end - begin - 1));
    rest.remove_prefix(end + 1);
  }
}

// Collects what the tags say.
class ResultsBuilder {
 public:
  void Add(const Tag& tag) {
    if (tag.name == "testcase") {
      Begin(tag);
      if (tag.isEmpty) End();
    } else if (tag.name == "failure") {
      isFailed_ = true;
      // Each failure of a test has a tag of its own.
      if (!note_.text.empty()) note_.text += '\n';
      note_.text += Attribute(tag, "message");
    } else if (tag.name == "skipped") {
      if (!isFailed_) note_.text = Attribute(tag, "message");
    } else if (tag.name == "/testcase") {
      End();
    }
  }

  TestResults Take() { return std::move(results_); }

 private:
  void Begin(const Tag& tag) {
    note_ = {Attribute(tag, "classname") + "." + Attribute(tag, "name"), ""};
    result_ = Attribute(tag, "result");
    isFailed_ = false;
    isOpen_ = true;
  }

  void End() {
    if (!std::exchange(isOpen_, false)) return;
    if (isFailed_) {
      results_.failed.push_back(std::move(note_));
    } else if (result_ == "skipped") {
      results_.skipped.push_back(std::move(note_));
    } else if (result_ == "completed") {
      ++results_.passed;
    }
  }

  TestResults results_;
  TestNote note_;
  std::string result_;
  bool isFailed_ = false;
  bool isOpen_ = false;
};

}  // namespace

std::optional<TestResults> ReadTestXml(std::string_view xml) {
  TagReader reader(xml);
  ResultsBuilder builder;
  while (const std::optional<Tag> tag = reader.Next()) {
    if (tag->name == "/testsuites") return builder.Take();
    builder.Add(*tag);
  }
  return std::nullopt;
}

std::string UnfinishedTest(std::string_view output) {
  constexpr std::string_view kRun = "[ RUN      ] ";
  const size_t begin = output.rfind(kRun);
  if (begin == std::string_view::npos) return "";
  output.remove_prefix(begin + kRun.size());
  std::string test(output.substr(0, output.find_first_of("\r\n")));
  for (const char* const end : {"[       OK ] ", "[  FAILED  ] ", "[  SKIPPED ] "}) {
    if (output.find(end + test) != std::string_view::npos) return "";
  }
  return test;
}

}  // namespace tellurvane
