#pragma once

#include <QList>
#include <QObject>
#include <QPair>
#include <QString>

class QAction;
class QMenuBar;
class QWidget;

namespace kavro {

// The Help menu of the main window: the keyboard shortcuts, read from the window's own actions,
// and the program's version with the licences of what it bundles.
class KVRHelpCommands : public QObject
{
    Q_OBJECT

public:
    explicit KVRHelpCommands(QWidget* window, QObject* parent = nullptr);

    // Adds the Help menu to the bar and its actions to the window.
    void addHelpMenu(QMenuBar* bar);

    void showKeyboardShortcuts();
    void showAbout();

    // Command and key of every action with a shortcut, in the order the actions were added.
    static QList<QPair<QString, QString>> shortcutRows(const QList<QAction*>& actions);
    // "Leaflet 1.9.4" as the bundled script names itself, or "Leaflet".
    static QString leafletName();

private:
    QWidget* m_window;
};

} // namespace kavro
