#include "card/alertsheet.h"

#include <QMessageBox>
#include <QPushButton>

namespace kavro {

namespace {

QMessageBox* openAlert(QWidget* window, const QString& message, const QString& informative)
{
    auto* box = new QMessageBox(window);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setWindowModality(Qt::WindowModal);
    box->setIcon(QMessageBox::Warning);
    box->setText(message);
    box->setInformativeText(informative);
    // A literal title rather than QMessageBox::Ok, whose text the toolkit would translate.
    QPushButton* ok = box->addButton(QStringLiteral("OK"), QMessageBox::AcceptRole);
    box->setDefaultButton(ok);
    box->setEscapeButton(ok);
    box->open();
    return box;
}

} // namespace

QMessageBox* showAlertSheet(QWidget* window, const QString& message, const QString& informative,
                            QObject* receiver, const char* didEndSlot)
{
    QMessageBox* box = openAlert(window, message, informative);
    // finished is emitted once the alert is hidden, so the slot sees the window without it.
    if (receiver && didEndSlot)
        QObject::connect(box, SIGNAL(finished(int)), receiver, didEndSlot);
    return box;
}

QMessageBox* showAlertSheet(QWidget* window, const QString& message, const QString& informative,
                            QObject* receiver, std::function<void()> didEnd)
{
    QMessageBox* box = openAlert(window, message, informative);
    if (receiver && didEnd)
        QObject::connect(box, &QDialog::finished, receiver,
                         [didEnd = std::move(didEnd)] { didEnd(); });
    return box;
}

QMessageBox* showAlert(QWidget* window, const QString& message, const QString& informative)
{
    return openAlert(window, message, informative);
}

} // namespace kavro
