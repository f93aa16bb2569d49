#include "kvrhelpcommands.h"

#include "resources/map/mappageresources.h"

#include <QAction>
#include <QCoreApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QFile>
#include <QHeaderView>
#include <QMenuBar>
#include <QMessageBox>
#include <QRegularExpression>
#include <QTableWidget>
#include <QVBoxLayout>

namespace kavro {

KVRHelpCommands::KVRHelpCommands(QWidget* window, QObject* parent)
    : QObject(parent), m_window(window)
{
}

void KVRHelpCommands::addHelpMenu(QMenuBar* bar)
{
    //% "&Help"
    QMenu* menu = bar->addMenu(qtTrId("main.menu.help"));
    //% "Keyboard Shortcuts"
    QAction* shortcuts = menu->addAction(qtTrId("main.menu.shortcuts"));
    shortcuts->setShortcut(QKeySequence::HelpContents);
    connect(shortcuts, &QAction::triggered, this, &KVRHelpCommands::showKeyboardShortcuts);
    // On the window too, so the key works while the menu bar is hidden.
    m_window->addAction(shortcuts);
    //% "About KAVRO Viewer"
    QAction* about = menu->addAction(qtTrId("main.menu.about"));
    about->setMenuRole(QAction::AboutRole);
    connect(about, &QAction::triggered, this, &KVRHelpCommands::showAbout);
}

QList<QPair<QString, QString>> KVRHelpCommands::shortcutRows(const QList<QAction*>& actions)
{
    QList<QPair<QString, QString>> rows;
    for (const QAction* action : actions) {
        if (action->shortcut().isEmpty())
            continue;
        QString text = action->text();
        text.remove(QRegularExpression(QStringLiteral("&(?!&)")));
        rows.append({text.remove(QStringLiteral("...")).trimmed(),
                     action->shortcut().toString(QKeySequence::NativeText)});
    }
    return rows;
}

void KVRHelpCommands::showKeyboardShortcuts()
{
    auto* sheet = new QDialog(m_window);
    sheet->setObjectName(QStringLiteral("keyboardShortcutsSheet"));
    //% "Keyboard Shortcuts"
    sheet->setWindowTitle(qtTrId("main.menu.shortcuts"));
    sheet->setWindowModality(Qt::WindowModal);
    sheet->setAttribute(Qt::WA_DeleteOnClose);

    const QList<QPair<QString, QString>> rows = shortcutRows(m_window->actions());
    auto* table = new QTableWidget(int(rows.size()), 2, sheet);
    //% "Command"
    const QString command = qtTrId("main.shortcuts.command");
    //% "Key"
    table->setHorizontalHeaderLabels({command, qtTrId("main.shortcuts.key")});
    for (int row = 0; row < rows.size(); ++row) {
        table->setItem(row, 0, new QTableWidgetItem(rows[row].first));
        table->setItem(row, 1, new QTableWidgetItem(rows[row].second));
    }
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->setSelectionMode(QAbstractItemView::NoSelection);
    table->verticalHeader()->hide();
    table->verticalHeader()->setDefaultSectionSize(table->fontMetrics().height() + 8);
    table->horizontalHeader()->setSectionResizeMode(0, QHeaderView::Stretch);
    table->horizontalHeader()->setSectionResizeMode(1, QHeaderView::ResizeToContents);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, sheet);
    connect(buttons, &QDialogButtonBox::rejected, sheet, &QDialog::reject);
    auto* layout = new QVBoxLayout(sheet);
    layout->addWidget(table);
    layout->addWidget(buttons);
    sheet->resize(420, 520);
    sheet->open();
}

QString KVRHelpCommands::leafletName()
{
    initMapPageResources();
    QFile script(QStringLiteral(":/map/leaflet/leaflet.js"));
    // The version is in the banner at the top; a few hundred bytes hold it.
    const QString banner =
        script.open(QIODevice::ReadOnly) ? QString::fromUtf8(script.read(512)) : QString();
    const QRegularExpressionMatch match =
        QRegularExpression(QStringLiteral("Leaflet (\\d+\\.\\d+\\.\\d+)")).match(banner);
    return match.hasMatch() ? match.captured(0) : QStringLiteral("Leaflet");
}

void KVRHelpCommands::showAbout()
{
    auto* sheet = new QMessageBox(m_window);
    sheet->setObjectName(QStringLiteral("aboutSheet"));
    sheet->setWindowModality(Qt::WindowModal);
    sheet->setAttribute(Qt::WA_DeleteOnClose);
    sheet->setIconPixmap(m_window->windowIcon().pixmap(64, 64));
    //% "KAVRO Viewer %1"
    sheet->setText(qtTrId("main.about.version").arg(QCoreApplication::applicationVersion()));
    //% "A viewer and card manager for the KAVRO dash camera.<br><br>"
    //% "The map page uses %1, under the BSD 2-Clause licence (see Show Details).<br>"
    //% "Map data &copy; OpenStreetMap contributors, under the Open Database License (ODbL)."
    sheet->setInformativeText(qtTrId("main.about.licences").arg(leafletName()));
    sheet->setTextFormat(Qt::RichText);
    QFile licence(QStringLiteral(":/map/leaflet/LICENSE"));
    if (licence.open(QIODevice::ReadOnly))
        sheet->setDetailedText(QString::fromUtf8(licence.read(64 * 1024)));
    sheet->setStandardButtons(QMessageBox::Ok);
    sheet->open();
}

} // namespace kavro
