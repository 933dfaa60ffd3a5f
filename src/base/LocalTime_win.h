// A moment on the clock of this machine's place.
#pragma once

#include <string>

#include "base/Clock.h"
#include "base/TrafficFacts.h"

namespace brennvar {

enum class TimeOfDay { Minutes, Seconds };

// "14:05" or "14:05:09", in local time; empty for a moment that Windows has no date for.
[[nodiscard]] std::string FormatTimeOfDay(FileTime utc, TimeOfDay precision);

[[nodiscard]] LocalMoment MomentNow();

}  // namespace brennvar
