#include "ui/UserPreferences.h"

#include <windows.h>

namespace tellurvane {
namespace {

UserPreferences asked;
bool isHighContrast = false;

bool IsSystemHighContrast() {
  HIGHCONTRASTW contrast = {};
  contrast.cbSize = sizeof(contrast);
  return SystemParametersInfoW(SPI_GETHIGHCONTRAST, sizeof(contrast), &contrast, 0) != FALSE &&
         (contrast.dwFlags & HCF_HIGHCONTRASTON) != 0;
}

bool HasSystemAnimations() {
  BOOL hasAnimations = TRUE;
  return SystemParametersInfoW(SPI_GETCLIENTAREAANIMATION, 0, &hasAnimations, 0) == FALSE ||
         hasAnimations != FALSE;
}

}  // namespace

UserPreferences SystemPreferences() { return {IsSystemHighContrast, HasSystemAnimations}; }

void SetUserPreferences(const UserPreferences& preferences) {
  asked = preferences;
  RefreshHighContrast();
}

bool IsHighContrast() { return isHighContrast; }

void RefreshHighContrast() {
  isHighContrast = asked.isHighContrast != nullptr && asked.isHighContrast();
}

bool HasAnimations() { return asked.hasAnimations == nullptr || asked.hasAnimations(); }

}  // namespace tellurvane
