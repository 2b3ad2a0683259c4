#include "radio/StationFields.h"

#include <utility>

#include "base/Text.h"

namespace tellurvane {
namespace {

// Whether the text was taken.
bool Take(const StationField& field, std::wstring_view page, size_t marker, StationTexts& texts) {
  const size_t begin = field.startsWithMarker ? marker : marker + field.marker.size();
  const std::wstring_view rest = page.substr(begin, field.window + field.end.size());
  const size_t size = rest.find(field.end);
  if (size == std::wstring_view::npos) return false;
  texts.*field.text = rest.substr(0, size);
  return true;
}

}  // namespace

StationRows ScanStations(std::wstring page, std::span<const StationField> fields,
                         StationRows::MakeRow makeRow) {
  StationRows rows(std::move(page), std::move(makeRow));
  const std::wstring_view text = rows.Page();
  StationTexts latest;
  for (size_t at = 0; at < text.size(); ++at) {
    for (const StationField& field : fields) {
      const std::wstring_view here = text.substr(at, field.marker.size());
      if (!EqualsIgnoringAsciiCase(here, field.marker)) continue;
      if (Take(field, text, at, latest) && field.endsStation) rows.Append(latest);
    }
  }
  return rows;
}

}  // namespace tellurvane
