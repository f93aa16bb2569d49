#pragma once

#include <QObject>
#include <QString>

class QAction;
class QActionGroup;
class QMenu;
class QWidget;

namespace kavro {

// View > Language: English, 한국어 or the system's language. The choice is kept in the
// preferences and takes effect at the next start; the window says so when the texts would change.
class KVRLanguageMenu : public QObject
{
    Q_OBJECT

public:
    // Adds the submenu at the end of menu; window carries the message.
    KVRLanguageMenu(QMenu* menu, QWidget* window, QObject* parent);

    QMenu* menu() const { return m_menu; }
    QAction* action(const QString& choice) const;

private:
    void choose(const QString& choice);
    void checkStoredChoice();

    QMenu* m_menu = nullptr;
    QWidget* m_window = nullptr;
    QActionGroup* m_group = nullptr;
};

} // namespace kavro
