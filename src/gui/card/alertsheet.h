#pragma once

#include <QString>

#include <functional>

class QMessageBox;
class QObject;
class QWidget;

namespace kavro {

// A one-button warning alert attached to a window: window-modal, one button titled "OK" (not
// translated), opened without waiting; the function returns at once. When the user has closed it,
// didEnd runs (or the receiver's slot is invoked) unless the receiver is gone by then. The alert
// deletes itself once closed; the returned pointer is for callers that want to watch it.
QMessageBox* showAlertSheet(QWidget* window, const QString& message, const QString& informative,
                            QObject* receiver, const char* didEndSlot);
QMessageBox* showAlertSheet(QWidget* window, const QString& message, const QString& informative,
                            QObject* receiver, std::function<void()> didEnd);

// The same alert with nothing to call afterwards.
QMessageBox* showAlert(QWidget* window, const QString& message, const QString& informative);

} // namespace kavro
