#pragma once

#include <QFileDialog>
#include <QString>

namespace kavro {

// A file panel attached to a window, as every window of the program shows one: window-modal, the
// toolkit's own dialog (the same on every desktop, and drivable offscreen), deleted once closed,
// opened without waiting. A save panel is named "savePanel", proposes proposedName and adds the
// suffix to a name typed without one; an open panel is named "openPanel" and takes one existing
// file. Both list only files with the suffix. The caller connects fileSelected.
QFileDialog* openFilePanel(QWidget* window, QFileDialog::AcceptMode mode, const QString& title,
                           const QString& suffix, const QString& proposedName = {},
                           const QString& folder = {});

} // namespace kavro
