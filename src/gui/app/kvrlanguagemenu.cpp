#include "kvrlanguagemenu.h"

#include "applog.h"
#include "card/alertsheet.h"
#include "resources/translations/infoplisttranslator.h"

#include <QActionGroup>
#include <QLocale>
#include <QMenu>

namespace kavro {

KVRLanguageMenu::KVRLanguageMenu(QMenu* menu, QWidget* window, QObject* parent)
    : QObject(parent), m_window(window), m_group(new QActionGroup(this))
{
    //% "&Language"
    m_menu = menu->addMenu(qtTrId("main.menu.language"));
    // Each language is named in itself, so that a person who cannot read the current one finds
    // their own.
    const struct
    {
        const char* choice;
        QString text;
    } entries[] = {
        {LanguageEnglish, QStringLiteral("English")},
        {LanguageKorean, QStringLiteral("한국어")},
        //% "System"
        {LanguageSystem, qtTrId("main.menu.language_system")},
    };
    for (const auto& entry : entries) {
        const QString choice = QString::fromLatin1(entry.choice);
        QAction* action = m_menu->addAction(entry.text);
        action->setCheckable(true);
        action->setData(choice);
        m_group->addAction(action);
        connect(action, &QAction::triggered, this, [this, choice] { choose(choice); });
    }
    checkStoredChoice();
}

QAction* KVRLanguageMenu::action(const QString& choice) const
{
    for (QAction* action : m_group->actions()) {
        if (action->data().toString() == choice)
            return action;
    }
    return nullptr;
}

void KVRLanguageMenu::checkStoredChoice()
{
    const QString stored = storedLanguageChoice();
    if (QAction* checked = action(stored.isEmpty() ? QString::fromLatin1(LanguageEnglish) : stored))
        checked->setChecked(true);
}

void KVRLanguageMenu::choose(const QString& choice)
{
    if (!storeLanguageChoice(choice)) {
        checkStoredChoice();
        //% "The language could not be kept: the program's settings cannot be written."
        showAlert(m_window, QStringLiteral("KAVRO"), qtTrId("main.language_not_stored"));
        return;
    }
    qCInfo(lcApp) << "language choice" << choice;
    const QString language = infoPlistLanguageForChoice(choice, QLocale::system().uiLanguages());
    if (language == installedInfoPlistLanguage())
        return;
    // Said in the language running now and in the one chosen, so that both readers understand.
    //% "The texts change to the chosen language the next time KAVRO Viewer starts."
    const QString now = qtTrId("main.language_at_restart");
    const QString next = infoPlistText(language, "main.language_at_restart");
    showAlert(m_window, now, next == now ? QString() : next);
}

} // namespace kavro
