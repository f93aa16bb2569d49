#pragma once

#include <string>

namespace kavro {

// Shortest decimal text that reads back as the same value. Used wherever numbers leave the
// program for other tools (JSON, CSV, GPX), so that a single-precision value survives the trip.
// Non-finite values give "null" in JSON and an empty text elsewhere; callers choose.
std::string shortestText(float value);
std::string shortestText(double value);

} // namespace kavro
