#pragma once

#include <QObject>
#include <QPointer>

namespace kavro {

class PMProgressIndicator;

// The loading indicator of the main window while a recording opens. It fills up in 0.3-second
// ticks over at most the longest display time and is hidden at the first tick after
// hideLoading(), or when it is full; the opening itself keeps its own time.
class KVRLoadingController : public QObject
{
    Q_OBJECT

public:
    static constexpr double LongestDisplayTime = 15.0; // seconds
    static constexpr int TickMs = 300;

    KVRLoadingController(PMProgressIndicator* indicator, QWidget* headBox,
                         QObject* parent = nullptr);

    // The message is not shown; the indicator speaks for itself.
    void showLoading(const QString& message);
    void hideLoading();

    bool stopVideoLoadingView() const { return m_stopVideoLoadingView; }
    double progress() const { return m_progress; }
    bool isShowing() const { return m_showing; }

    // Tests shorten the longest display time.
    void setLongestDisplayTime(double seconds) { m_longestDisplayTime = seconds; }
    double longestDisplayTime() const { return m_longestDisplayTime; }

private:
    void updateLoadingWindow(double longestDisplayTime);
    void scheduleTick(double longestDisplayTime);

    QPointer<PMProgressIndicator> m_indicator;
    QPointer<QWidget> m_headBox;
    bool m_stopVideoLoadingView = false;
    bool m_showing = false;
    double m_progress = 0;
    double m_longestDisplayTime = LongestDisplayTime;
    // Each showLoading starts a new run of ticks; ticks of an older run end quietly.
    quint64 m_run = 0;
};

} // namespace kavro
