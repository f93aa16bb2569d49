#include "common/corelog.h"

#include <QLoggingCategory>

#include <map>
#include <memory>
#include <mutex>
#include <string>

namespace kavro {

namespace {

// The core's lines go through Qt's logging in a Qt program, so that QT_LOGGING_RULES, message
// handlers and the tests' expected messages see them like any other category.
const QLoggingCategory& categoryNamed(const char* name)
{
    static std::mutex lock;
    static std::map<std::string, std::unique_ptr<QLoggingCategory>> categories;
    const std::lock_guard guard(lock);
    std::unique_ptr<QLoggingCategory>& category = categories[name];
    if (!category)
        category = std::make_unique<QLoggingCategory>(name, QtInfoMsg);
    return *category;
}

bool qtEnabled(const char* name, CoreLog::Level level)
{
    const QLoggingCategory& category = categoryNamed(name);
    return level == CoreLog::Level::Debug ? category.isDebugEnabled() : category.isWarningEnabled();
}

void qtWrite(const char* name, CoreLog::Level level, const std::string& message)
{
    const QMessageLogger logger(nullptr, 0, nullptr, categoryNamed(name).categoryName());
    if (level == CoreLog::Level::Debug)
        logger.debug("%s", message.c_str());
    else
        logger.warning("%s", message.c_str());
}

// Linked whole into every Qt program of the project (see the core's CMakeLists.txt).
const bool installed = [] {
    CoreLog::setHandler({qtEnabled, qtWrite});
    return true;
}();

} // namespace

} // namespace kavro
