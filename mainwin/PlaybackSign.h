#pragma once

namespace tellurvane {

// The mark of the task that was started.
enum class PlaybackSign { kNone, kTrying, kPlaying };

}  // namespace tellurvane
