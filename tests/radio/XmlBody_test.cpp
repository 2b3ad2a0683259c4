#include "radio/XmlBody.h"

#include <gtest/gtest.h>

#include "tests/radio/BrowserRules.h"

namespace tellurvane {
namespace {

TEST(XmlBodyTest, LeavesOutTheDeclarationOnly) {
  const struct {
    const wchar_t* text;
    const wchar_t* body;
  } rows[] = {
      {L"", L""},
      {L"<result/>", L"<result/>"},
      {L"\xFEFF<result/>", L"<result/>"},
      {L"<?xml version=\"1.0\" encoding=\"UTF-8\"?><result/>", L"<result/>"},
      {L"\xFEFF<?xml version='1.0'?>\r\n<result/>", L"\r\n<result/>"},
      {L"<?xml\tversion='1.0'?><?xml version='1.0'?>", L"<?xml version='1.0'?>"},
      {L" <?xml version='1.0'?><a/>", L" <?xml version='1.0'?><a/>"},
      {L"<?xml-stylesheet href='a'?><a/>", L"<?xml-stylesheet href='a'?><a/>"},
      {L"<?xml version='1.0'", L"<?xml version='1.0'"},
      {L"<?xml", L"<?xml"},
      {L"<?xm", L"<?xm"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(XmlBody(row.text), row.body) << row.text;
    EXPECT_EQ(BodyFault(row.text), "") << row.text;
  }
}

}  // namespace
}  // namespace tellurvane
