#include "filepanel.h"

#include <QStandardPaths>

namespace kavro {

QFileDialog* openFilePanel(QWidget* window, QFileDialog::AcceptMode mode, const QString& title,
                           const QString& suffix, const QString& proposedName,
                           const QString& folder)
{
    const bool saving = mode == QFileDialog::AcceptSave;
    auto* panel = new QFileDialog(
        window, title,
        folder.isEmpty() ? QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation)
                         : folder);
    panel->setObjectName(QLatin1String(saving ? "savePanel" : "openPanel"));
    panel->setAttribute(Qt::WA_DeleteOnClose);
    panel->setAcceptMode(mode);
    panel->setFileMode(saving ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
    panel->setOption(QFileDialog::DontUseNativeDialog);
    if (!suffix.isEmpty()) {
        panel->setNameFilter(QStringLiteral("*.") + suffix);
        if (saving)
            panel->setDefaultSuffix(suffix);
    }
    if (!proposedName.isEmpty())
        panel->selectFile(proposedName);
    panel->setWindowModality(Qt::WindowModal);
    panel->open();
    return panel;
}

} // namespace kavro
