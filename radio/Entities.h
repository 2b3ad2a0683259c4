// The named entities and their characters, in the order in which they are replaced.
#pragma once

#include <array>
#include <string_view>

namespace tellurvane {

struct Entity {
  std::wstring_view name;  // from its ampersand on
  int value;               // in Windows-1252
};

// Deliberate: "&hellip" has no semicolon, "&rsquor;" is the same quote as "&lsquo;", and "&nbsp;"
// is a plain blank.
inline constexpr std::array<Entity, 162> kEntities = {{
    {L"&sp;", 32},      {L"&excl;", 33},    {L"&quot;", 34},    {L"&num;", 35},
    {L"&dollar;", 36},  {L"&percent;", 37}, {L"&amp;", 38},     {L"&apos;", 39},
    {L"&#039;", 39},    {L"&lpar;", 40},    {L"&rpar;", 41},    {L"&ast;", 42},
    {L"&plus;", 43},    {L"&comma;", 44},   {L"&hyphen;", 45},  {L"&minus;", 45},
    {L"&period;", 46},  {L"&sol;", 47},     {L"&colon;", 58},   {L"&semi;", 59},
    {L"&lt;", 60},      {L"&equals;", 61},  {L"&gt;", 62},      {L"&quest;", 63},
    {L"&commat;", 64},  {L"&lsqb;", 91},    {L"&bsol;", 92},    {L"&rsqb;", 93},
    {L"&circ;", 94},    {L"&lowbar;", 95},  {L"&horbar;", 95},  {L"&grave;", 96},
    {L"&lcub;", 123},   {L"&verbar;", 124}, {L"&rcub;", 125},   {L"&tilde;", 126},
    {L"&lsquor;", 130}, {L"&fnof;", 131},   {L"&ldquor;", 132}, {L"&hellip", 133},
    {L"&ldots;", 133},  {L"&dagger;", 134}, {L"&Dagger;", 135}, {L"&permil;", 137},
    {L"&Scaron;", 138}, {L"&lsaquo;", 139}, {L"&OElig;", 140},  {L"&lsquo;", 145},
    {L"&rsquor;", 145}, {L"&rsquo;", 146},  {L"&ldquo;", 147},  {L"&rdquor;", 148},
    {L"&bull;", 149},   {L"&ndash;", 150},  {L"&endash;", 150}, {L"&mdash;", 151},
    {L"&emdash;", 151}, {L"&trade;", 153},  {L"&scaron;", 154}, {L"&rsaquo;", 155},
    {L"&oelig;", 156},  {L"&Yuml;", 159},   {L"&nbsp;", 32},    {L"&iexcl;", 161},
    {L"&cent;", 162},   {L"&pound;", 163},  {L"&curren;", 164}, {L"&yen;", 165},
    {L"&brvbar;", 166}, {L"&brkbar;", 166}, {L"&sect;", 167},   {L"&uml;", 168},
    {L"&die;", 168},    {L"&copy;", 169},   {L"&ordf;", 170},   {L"&laquo;", 171},
    {L"&not;", 172},    {L"&shy;", 173},    {L"&reg;", 174},    {L"&macr;", 175},
    {L"&hibar;", 175},  {L"&deg;", 176},    {L"&plusmn;", 177}, {L"&sup2;", 178},
    {L"&sup3;", 179},   {L"&acute;", 180},  {L"&micro;", 181},  {L"&para;", 182},
    {L"&middot;", 183}, {L"&cedil;", 184},  {L"&sup1;", 185},   {L"&ordm;", 186},
    {L"&raquo;", 187},  {L"&frac14;", 188}, {L"&frac12;", 189}, {L"&half;", 189},
    {L"&frac34;", 190}, {L"&iquest;", 191}, {L"&Agrave;", 192}, {L"&Aacute;", 193},
    {L"&Acirc;", 194},  {L"&Atilde;", 195}, {L"&Auml;", 196},   {L"&Aring;", 197},
    {L"&AElig;", 198},  {L"&Ccedil;", 199}, {L"&Egrave;", 200}, {L"&Eacute;", 201},
    {L"&Ecirc;", 202},  {L"&Euml;", 203},   {L"&Igrave;", 204}, {L"&Iacute;", 205},
    {L"&Icirc;", 206},  {L"&Iuml;", 207},   {L"&ETH;", 208},    {L"&Ntilde;", 209},
    {L"&Ograve;", 210}, {L"&Oacute;", 211}, {L"&Ocirc;", 212},  {L"&Otilde;", 213},
    {L"&Ouml;", 214},   {L"&times;", 215},  {L"&Oslash;", 216}, {L"&Ugrave;", 217},
    {L"&Uacute;", 218}, {L"&Ucirc;", 219},  {L"&Uuml;", 220},   {L"&Yacute;", 221},
    {L"&THORN;", 222},  {L"&szlig;", 223},  {L"&agrave;", 224}, {L"&aacute;", 225},
    {L"&acirc;", 226},  {L"&atilde;", 227}, {L"&auml;", 228},   {L"&aring;", 229},
    {L"&aelig;", 230},  {L"&ccedil;", 231}, {L"&egrave;", 232}, {L"&eacute;", 233},
    {L"&ecirc;", 234},  {L"&euml;", 235},   {L"&igrave;", 236}, {L"&iacute;", 237},
    {L"&icirc;", 238},  {L"&iuml;", 239},   {L"&eth;", 240},    {L"&ntilde;", 241},
    {L"&ograve;", 242}, {L"&oacute;", 243}, {L"&ocirc;", 244},  {L"&otilde;", 245},
    {L"&ouml;", 246},   {L"&divide;", 247}, {L"&oslash;", 248}, {L"&ugrave;", 249},
    {L"&uacute;", 250}, {L"&ucirc;", 251},  {L"&uuml;", 252},   {L"&yacute;", 253},
    {L"&thorn;", 254},  {L"&yuml;", 255},
}};

// The values 128 to 159 of Windows-1252. The five without a character are the control characters of
// the same number, as the platform has it.
inline constexpr std::array<char16_t, 32> kWindows1252Upper = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

// The character of a Windows-1252 value, 0 to 255.
constexpr wchar_t FromWindows1252(int value) {
  constexpr int kFirstUpper = 128;
  const bool isUpper =
      value >= kFirstUpper && value < kFirstUpper + static_cast<int>(kWindows1252Upper.size());
  return static_cast<wchar_t>(isUpper ? kWindows1252Upper[static_cast<size_t>(value - kFirstUpper)]
                                      : static_cast<char16_t>(value));
}

}  // namespace tellurvane
