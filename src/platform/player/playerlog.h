#pragma once

#include <QLoggingCategory>

// The players' own diagnostics.
Q_DECLARE_LOGGING_CATEGORY(lcVlcPlayer)
// libVLC's messages; off unless asked for (QT_LOGGING_RULES="kavro.player.libvlc=true"), as
// libVLC reports routine fallbacks as errors.
Q_DECLARE_LOGGING_CATEGORY(lcLibVlc)
