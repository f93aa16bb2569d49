#include "kvrrendersizefollower.h"

#include "player/vlcmediaplayer.h"

#include <QEvent>
#include <QWidget>

namespace kavro {

namespace {

// Smaller than this an area is being hidden or laid out; its player keeps the size it has.
constexpr int MinSide = 16;

} // namespace

KVRRenderSizeFollower::KVRRenderSizeFollower(QWidget* largeArea, VLCMediaPlayer* large,
                                             QWidget* smallArea, VLCMediaPlayer* small,
                                             QObject* parent)
    : QObject(parent), m_largeArea(largeArea), m_large(large), m_smallArea(smallArea),
      m_small(small)
{
    m_settle.setSingleShot(true);
    m_settle.setInterval(SettleMs);
    connect(&m_settle, &QTimer::timeout, this, &KVRRenderSizeFollower::apply);
    largeArea->installEventFilter(this);
    smallArea->installEventFilter(this);
    apply();
}

void KVRRenderSizeFollower::apply()
{
    m_settle.stop();
    for (const auto& [area, player] : {std::pair{m_largeArea, m_large}, {m_smallArea, m_small}}) {
        const QSize shown = area->size() * area->devicePixelRatioF();
        if (shown.width() >= MinSide && shown.height() >= MinSide)
            player->setRenderSizeLimit(shown);
    }
}

bool KVRRenderSizeFollower::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Resize)
        m_settle.start();
    return QObject::eventFilter(watched, event);
}

} // namespace kavro
