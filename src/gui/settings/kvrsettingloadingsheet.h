#pragma once

#include <QDialog>

class QLabel;

namespace kavro {

class PMProgressIndicator;

// The sheet the settings window shows while it reads the card. It fills up in half-second steps
// and closes at the first step after hideLoading(), or by itself once full (about 15.5 s).
class KVRSettingLoadingSheet : public QDialog
{
    Q_OBJECT

public:
    static constexpr double LongestDisplayTime = 15.0; // seconds
    static constexpr int TickMs = 500;

    explicit KVRSettingLoadingSheet(QWidget* window);

    void showLoading(const QString& message);
    void hideLoading();

    bool stopLoadingWindow() const { return m_stopLoadingWindow; }
    double progress() const { return m_progress; }
    PMProgressIndicator* progressIndicator() const { return m_progressIndicator; }

    // Escape does not close it: the window is not ready before the card has been read.
    void reject() override {}

private:
    void updateLoadingWindow(double seconds);

    PMProgressIndicator* m_progressIndicator;
    QLabel* m_progressTitleField;
    bool m_stopLoadingWindow = true;
    double m_progress = 0;
    // Each showLoading starts a run of steps; steps of an older run end quietly.
    quint64 m_run = 0;
};

} // namespace kavro
