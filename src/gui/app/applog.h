#pragma once

#include <QLoggingCategory>

namespace kavro {

// The main window: start-up, the recording list, playback and layout.
Q_DECLARE_LOGGING_CATEGORY(lcApp)

} // namespace kavro
