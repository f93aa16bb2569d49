#include "playerlog.h"

Q_LOGGING_CATEGORY(lcVlcPlayer, "kavro.player")
Q_LOGGING_CATEGORY(lcLibVlc, "kavro.player.libvlc", QtWarningMsg)
