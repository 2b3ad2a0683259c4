// The user's settings for all programs.
#pragma once

namespace tellurvane {

struct UserPreferences {
  bool (*isHighContrast)() = nullptr;  // if null: no
  bool (*hasAnimations)() = nullptr;   // if null: yes
};

// The system's answers.
UserPreferences SystemPreferences();

// Called once, by the entry routine. Without a call there are animations and no high contrast.
void SetUserPreferences(const UserPreferences& preferences);

// Whether everything that we paint takes the system's colours. The answer of the last refresh:
// painting asks hundreds of times.
bool IsHighContrast();
// Call it when the system's colours or settings have changed.
void RefreshHighContrast();

// Whether windows may fade.
bool HasAnimations();

}  // namespace tellurvane
