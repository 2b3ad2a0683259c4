// What the decoding is tested against: the named entities and Windows-1252, written down apart from
// the product's tables.
#pragma once

namespace tellurvane::expected {

struct Named {
  const wchar_t* name;
  char16_t character;
};

// In the order in which they are replaced.
inline constexpr Named kNamed[] = {
    {L"&sp;", 0x20},       {L"&excl;", 0x21},     {L"&quot;", 0x22},     {L"&num;", 0x23},
    {L"&dollar;", 0x24},   {L"&percent;", 0x25},  {L"&amp;", 0x26},      {L"&apos;", 0x27},
    {L"&#039;", 0x27},     {L"&lpar;", 0x28},     {L"&rpar;", 0x29},     {L"&ast;", 0x2A},
    {L"&plus;", 0x2B},     {L"&comma;", 0x2C},    {L"&hyphen;", 0x2D},   {L"&minus;", 0x2D},
    {L"&period;", 0x2E},   {L"&sol;", 0x2F},      {L"&colon;", 0x3A},    {L"&semi;", 0x3B},
    {L"&lt;", 0x3C},       {L"&equals;", 0x3D},   {L"&gt;", 0x3E},       {L"&quest;", 0x3F},
    {L"&commat;", 0x40},   {L"&lsqb;", 0x5B},     {L"&bsol;", 0x5C},     {L"&rsqb;", 0x5D},
    {L"&circ;", 0x5E},     {L"&lowbar;", 0x5F},   {L"&horbar;", 0x5F},   {L"&grave;", 0x60},
    {L"&lcub;", 0x7B},     {L"&verbar;", 0x7C},   {L"&rcub;", 0x7D},     {L"&tilde;", 0x7E},
    {L"&lsquor;", 0x201A}, {L"&fnof;", 0x192},    {L"&ldquor;", 0x201E}, {L"&hellip", 0x2026},
    {L"&ldots;", 0x2026},  {L"&dagger;", 0x2020}, {L"&Dagger;", 0x2021}, {L"&permil;", 0x2030},
    {L"&Scaron;", 0x160},  {L"&lsaquo;", 0x2039}, {L"&OElig;", 0x152},   {L"&lsquo;", 0x2018},
    {L"&rsquor;", 0x2018}, {L"&rsquo;", 0x2019},  {L"&ldquo;", 0x201C},  {L"&rdquor;", 0x201D},
    {L"&bull;", 0x2022},   {L"&ndash;", 0x2013},  {L"&endash;", 0x2013}, {L"&mdash;", 0x2014},
    {L"&emdash;", 0x2014}, {L"&trade;", 0x2122},  {L"&scaron;", 0x161},  {L"&rsaquo;", 0x203A},
    {L"&oelig;", 0x153},   {L"&Yuml;", 0x178},    {L"&nbsp;", 0x20},     {L"&iexcl;", 0xA1},
    {L"&cent;", 0xA2},     {L"&pound;", 0xA3},    {L"&curren;", 0xA4},   {L"&yen;", 0xA5},
    {L"&brvbar;", 0xA6},   {L"&brkbar;", 0xA6},   {L"&sect;", 0xA7},     {L"&uml;", 0xA8},
    {L"&die;", 0xA8},      {L"&copy;", 0xA9},     {L"&ordf;", 0xAA},     {L"&laquo;", 0xAB},
    {L"&not;", 0xAC},      {L"&shy;", 0xAD},      {L"&reg;", 0xAE},      {L"&macr;", 0xAF},
    {L"&hibar;", 0xAF},    {L"&deg;", 0xB0},      {L"&plusmn;", 0xB1},   {L"&sup2;", 0xB2},
    {L"&sup3;", 0xB3},     {L"&acute;", 0xB4},    {L"&micro;", 0xB5},    {L"&para;", 0xB6},
    {L"&middot;", 0xB7},   {L"&cedil;", 0xB8},    {L"&sup1;", 0xB9},     {L"&ordm;", 0xBA},
    {L"&raquo;", 0xBB},    {L"&frac14;", 0xBC},   {L"&frac12;", 0xBD},   {L"&half;", 0xBD},
    {L"&frac34;", 0xBE},   {L"&iquest;", 0xBF},   {L"&Agrave;", 0xC0},   {L"&Aacute;", 0xC1},
    {L"&Acirc;", 0xC2},    {L"&Atilde;", 0xC3},   {L"&Auml;", 0xC4},     {L"&Aring;", 0xC5},
    {L"&AElig;", 0xC6},    {L"&Ccedil;", 0xC7},   {L"&Egrave;", 0xC8},   {L"&Eacute;", 0xC9},
    {L"&Ecirc;", 0xCA},    {L"&Euml;", 0xCB},     {L"&Igrave;", 0xCC},   {L"&Iacute;", 0xCD},
    {L"&Icirc;", 0xCE},    {L"&Iuml;", 0xCF},     {L"&ETH;", 0xD0},      {L"&Ntilde;", 0xD1},
    {L"&Ograve;", 0xD2},   {L"&Oacute;", 0xD3},   {L"&Ocirc;", 0xD4},    {L"&Otilde;", 0xD5},
    {L"&Ouml;", 0xD6},     {L"&times;", 0xD7},    {L"&Oslash;", 0xD8},   {L"&Ugrave;", 0xD9},
    {L"&Uacute;", 0xDA},   {L"&Ucirc;", 0xDB},    {L"&Uuml;", 0xDC},     {L"&Yacute;", 0xDD},
    {L"&THORN;", 0xDE},    {L"&szlig;", 0xDF},    {L"&agrave;", 0xE0},   {L"&aacute;", 0xE1},
    {L"&acirc;", 0xE2},    {L"&atilde;", 0xE3},   {L"&auml;", 0xE4},     {L"&aring;", 0xE5},
    {L"&aelig;", 0xE6},    {L"&ccedil;", 0xE7},   {L"&egrave;", 0xE8},   {L"&eacute;", 0xE9},
    {L"&ecirc;", 0xEA},    {L"&euml;", 0xEB},     {L"&igrave;", 0xEC},   {L"&iacute;", 0xED},
    {L"&icirc;", 0xEE},    {L"&iuml;", 0xEF},     {L"&eth;", 0xF0},      {L"&ntilde;", 0xF1},
    {L"&ograve;", 0xF2},   {L"&oacute;", 0xF3},   {L"&ocirc;", 0xF4},    {L"&otilde;", 0xF5},
    {L"&ouml;", 0xF6},     {L"&divide;", 0xF7},   {L"&oslash;", 0xF8},   {L"&ugrave;", 0xF9},
    {L"&uacute;", 0xFA},   {L"&ucirc;", 0xFB},    {L"&uuml;", 0xFC},     {L"&yacute;", 0xFD},
    {L"&thorn;", 0xFE},    {L"&yuml;", 0xFF},
};

// The values 128 to 159. Those without a character keep their number.
inline constexpr char16_t kWindows1252From128[] = {
    0x20AC, 0x81,   0x201A, 0x192,  0x201E, 0x2026, 0x2020, 0x2021, 0x2C6,  0x2030, 0x160,
    0x2039, 0x152,  0x8D,   0x17D,  0x8F,   0x90,   0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x2DC,  0x2122, 0x161,  0x203A, 0x153,  0x9D,   0x17E,  0x178};

}  // namespace tellurvane::expected
