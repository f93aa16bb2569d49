#include "kvrloadingcontroller.h"

#include "widgets/pmprogressindicator.h"

#include <QTimer>

namespace kavro {

KVRLoadingController::KVRLoadingController(PMProgressIndicator* indicator, QWidget* headBox,
                                           QObject* parent)
    : QObject(parent), m_indicator(indicator), m_headBox(headBox)
{
}

void KVRLoadingController::showLoading(const QString& message)
{
    Q_UNUSED(message);
    ++m_run;
    m_stopVideoLoadingView = false;
    m_progress = 0;
    m_showing = true;
    if (m_indicator) {
        m_indicator->setIndeterminate(true);
        m_indicator->setDoubleValue(m_indicator->minValue());
        if (m_headBox) {
            const int x = m_headBox->x() + (m_headBox->width() - m_indicator->width()) / 2;
            m_indicator->move(x, m_indicator->y());
        }
        m_indicator->show();
        m_indicator->raise();
        m_indicator->startAnimation();
    }
    scheduleTick(m_longestDisplayTime);
}

void KVRLoadingController::hideLoading()
{
    m_stopVideoLoadingView = true;
}

void KVRLoadingController::scheduleTick(double longestDisplayTime)
{
    const quint64 run = m_run;
    QTimer::singleShot(TickMs, this, [this, run, longestDisplayTime] {
        if (run == m_run)
            updateLoadingWindow(longestDisplayTime);
    });
}

void KVRLoadingController::updateLoadingWindow(double longestDisplayTime)
{
    const double ticks = longestDisplayTime / (TickMs / 1000.0);
    m_progress += ticks > 0 ? 100.0 / ticks : 100.0;
    if (m_indicator)
        m_indicator->setDoubleValue(m_progress);
    if (m_progress >= 100.0 || m_stopVideoLoadingView) {
        if (m_indicator) {
            m_indicator->setDoubleValue(m_indicator->minValue());
            m_indicator->stopAnimation();
            m_indicator->hide();
        }
        m_stopVideoLoadingView = true;
        m_showing = false;
        return;
    }
    scheduleTick(longestDisplayTime);
}

} // namespace kavro
