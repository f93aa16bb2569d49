#include "kvrsettingloadingsheet.h"

#include "widgets/pmprogressindicator.h"

#include <QLabel>
#include <QTimer>
#include <QVBoxLayout>

namespace kavro {

KVRSettingLoadingSheet::KVRSettingLoadingSheet(QWidget* window)
    : QDialog(window, Qt::Sheet), m_progressIndicator(new PMProgressIndicator(this)),
      m_progressTitleField(new QLabel(this))
{
    setObjectName(QStringLiteral("progressPanel"));
    setWindowModality(Qt::WindowModal);
    m_progressIndicator->setObjectName(QStringLiteral("progressIndicator"));
    m_progressTitleField->setObjectName(QStringLiteral("progressTitleField"));
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_progressTitleField);
    layout->addWidget(m_progressIndicator);
    setFixedWidth(320);
}

void KVRSettingLoadingSheet::showLoading(const QString& message)
{
    m_progressIndicator->setIndeterminate(true);
    m_progressIndicator->startAnimation();
    m_stopLoadingWindow = false;
    m_progress = 0;
    m_progressIndicator->setDoubleValue(m_progressIndicator->minValue());
    m_progressTitleField->setText(message);
    const quint64 run = ++m_run;
    QTimer::singleShot(TickMs, this, [this, run] {
        if (run == m_run)
            updateLoadingWindow(LongestDisplayTime);
    });
    open();
}

void KVRSettingLoadingSheet::updateLoadingWindow(double seconds)
{
    m_progress += 100.0 / (2.0 * seconds);
    m_progressIndicator->setDoubleValue(m_progress);
    if (m_progress >= 100.0 || m_stopLoadingWindow) {
        m_progressIndicator->setDoubleValue(m_progressIndicator->minValue());
        m_progressIndicator->stopAnimation();
        m_stopLoadingWindow = true;
        done(Accepted);
        return;
    }
    const quint64 run = m_run;
    QTimer::singleShot(TickMs, this, [this, run, seconds] {
        if (run == m_run)
            updateLoadingWindow(seconds);
    });
}

void KVRSettingLoadingSheet::hideLoading()
{
    m_stopLoadingWindow = true;
}

} // namespace kavro
