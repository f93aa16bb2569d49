#include "corelog.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace kavro {

namespace {

// True when the rules name this category's debug lines, or all of them, as on.
bool debugByRules(const char* category)
{
    const char* rules = std::getenv("QT_LOGGING_RULES");
    if (!rules)
        return false;
    const std::string text(rules);
    const std::string name(category);
    for (const std::string& rule : {name + ".debug=true", std::string("*.debug=true"),
                                    name.substr(0, name.find('.')) + ".*.debug=true"})
        if (text.find(rule) != std::string::npos)
            return true;
    return false;
}

bool plainEnabled(const char* category, CoreLog::Level level)
{
    return level == CoreLog::Level::Warning || debugByRules(category);
}

void plainWrite(const char* category, CoreLog::Level, const std::string& message)
{
    std::fprintf(stderr, "%s: %s\n", category, message.c_str());
}

CoreLog::Handler g_handler{plainEnabled, plainWrite};

} // namespace

void CoreLog::setHandler(const Handler& handler)
{
    g_handler = handler;
}

bool CoreLog::enabled(const char* category, Level level)
{
    return g_handler.enabled(category, level);
}

void CoreLog::print(const char* category, Level level, const char* format, ...)
{
    if (!enabled(category, level))
        return;
    char buffer[512];
    va_list arguments;
    va_start(arguments, format);
    const int length = std::vsnprintf(buffer, sizeof buffer, format, arguments);
    va_end(arguments);
    if (length < 0)
        return;
    g_handler.write(
        category, level,
        std::string(buffer, std::min<std::size_t>(std::size_t(length), sizeof buffer - 1)));
}

} // namespace kavro
