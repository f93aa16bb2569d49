#include "vlclibrary.h"

#include "playerlog.h"

#include <QProcess>
#include <QProcessEnvironment>

#include <vlc/vlc.h>

#include <cstdio>
#include <vector>

namespace kavro {

namespace {

// What the viewer needs from libVLC regardless of the environment: no title drawn over the
// picture, and no console output of its own.
QStringList baseArguments()
{
    return {QStringLiteral("--no-video-title-show"), QStringLiteral("--no-stats"),
            QStringLiteral("--quiet")};
}

libvlc_instance_t* startLibVLC(const QStringList& arguments)
{
    std::vector<QByteArray> encoded;
    std::vector<const char*> argv;
    encoded.reserve(arguments.size());
    for (const QString& argument : arguments) {
        encoded.push_back(argument.toLocal8Bit());
        argv.push_back(encoded.back().constData());
    }
    return libvlc_new(static_cast<int>(argv.size()), argv.data());
}

// Notices and debug chatter are dropped before they are formatted: libVLC sends a great many of
// them from its decoding threads.
void forwardLogMessage(void*, int level, const libvlc_log_t*, const char* format, va_list args)
{
    if (level < LIBVLC_WARNING || !lcLibVlc().isInfoEnabled())
        return;
    char text[512];
    std::vsnprintf(text, sizeof text, format, args);
    if (level >= LIBVLC_ERROR)
        qCInfo(lcLibVlc, "%s", text);
    else
        qCDebug(lcLibVlc, "%s", text);
}

} // namespace

VLCLibrary* VLCLibrary::sharedLibrary()
{
    // Never released: players of a closing window may still hold it, and the process ends soon.
    static VLCLibrary* library = new VLCLibrary;
    return library;
}

VLCLibrary::VLCLibrary()
{
    QStringList arguments = baseArguments();
    const QString extra = QProcessEnvironment::systemEnvironment().value("KAVRO_VLC_ARGS");
    arguments += QProcess::splitCommand(extra);
    m_instance = startLibVLC(arguments);
    if (!m_instance && arguments != baseArguments()) {
        // libVLC refuses unknown options; a mistyped variable should not cost the user playback.
        qCWarning(lcVlcPlayer) << "libVLC refused the options" << extra
                               << "- starting without them";
        arguments = baseArguments();
        m_instance = startLibVLC(arguments);
    }
    if (!m_instance) {
        const char* reason = libvlc_errmsg();
        qCWarning(lcVlcPlayer, "libVLC could not be started: %s",
                  reason ? reason : "no reason given");
        return;
    }
    libvlc_log_set(m_instance, forwardLogMessage, nullptr);
}

} // namespace kavro
