#pragma once

#include <string>

namespace kavro {

// Diagnostics of the core, which links no toolkit: a category by name and a line per message.
// Without a handler, warnings go to stderr as "category: message" and debug lines only where
// QT_LOGGING_RULES switches them on ("kavro.telemetry.debug=true"), as the viewer does it; the
// viewer installs a handler that hands the lines to its own logging.
class CoreLog
{
public:
    enum class Level
    {
        Debug,
        Warning,
    };

    struct Handler
    {
        bool (*enabled)(const char* category, Level level);
        void (*write)(const char* category, Level level, const std::string& message);
    };

    static void setHandler(const Handler& handler);
    static bool enabled(const char* category, Level level);
    // printf-style; formats nothing when the level is off for the category.
    [[gnu::format(printf, 3, 4)]] static void print(const char* category, Level level,
                                                    const char* format, ...);
};

// The categories of the core's subsystems.
inline constexpr char LogTelemetry[] = "kavro.telemetry";

} // namespace kavro
