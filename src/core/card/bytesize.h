#pragma once

#include <QString>

#include <cstdint>

namespace kavro {

constexpr int ByteSizeBufferSize = 7;

// A byte count as a short text in binary units: "0 B", "1023 B", "1.5 kB", "15 GB", "16 EB".
// Whole units round to the nearest, halves to even; below ten units one decimal is shown. The
// buffer takes six characters and a terminating zero; the rare longer text ("1000 kB" to
// "1023 kB", and so on for each unit) is cut there, never written beyond.
void formatByteSize(char (&buffer)[ByteSizeBufferSize], std::uint64_t bytes);

// The same text, never cut.
QString byteSizeString(std::uint64_t bytes);

} // namespace kavro
