#include "kvrtelemetrydisplay.h"

#include "applog.h"
#include "card/nmeadegrees.h"
#include "kvrplayinfo.h"
#include "map/kvrmapview.h"
#include "telemetry/graphview.h"
#include "telemetry/kvrblackboxdata.h"
#include "telemetry/telemetryexport.h"

#include <QLabel>

#include <cmath>

namespace kavro {

namespace {

void setText(QLabel* field, const QString& text)
{
    if (field)
        field->setText(text);
}

} // namespace

KVRTelemetryDisplay::KVRTelemetryDisplay(const Outputs& outputs, const KVRPlayInfo* playInfo,
                                         QObject* parent)
    : QObject(parent), m_outputs(outputs), m_playInfo(playInfo)
{
    connect(playInfo, &KVRPlayInfo::positionChanged, this, [this] {
        updateGsensorUIByPlayPositon();
        updateGpsUIByPlayPosition();
    });
}

void KVRTelemetryDisplay::setPlayerPositionSource(std::function<double()> source)
{
    m_playerPosition = std::move(source);
}

void KVRTelemetryDisplay::detachStore()
{
    m_store = nullptr;
}

void KVRTelemetryDisplay::recordingOpened(const KVRBlackBoxData* store)
{
    m_store = store;
    // A drive in the other hemisphere must not carry over from the previous recording.
    m_south = false;
    m_west = false;
    if (m_outputs.mapWebView && store)
        m_outputs.mapWebView->setRoute(routePoints(*store));
}

std::size_t KVRTelemetryDisplay::indexForPosition(double position, std::size_t count)
{
    if (count == 0)
        return 0;
    const double index = std::trunc(position * double(count));
    // Written so that NaN fails the test too.
    if (!(index >= 0 && index < double(count)))
        return count - 1;
    return std::size_t(index);
}

QString KVRTelemetryDisplay::gsensorText(char axis, float value)
{
    // A negative value brings its own sign; zero has none.
    return QStringLiteral("%1=%2%3")
        .arg(QLatin1Char(axis))
        .arg(value > 0 ? QStringLiteral("+") : QString())
        .arg(double(value), 0, 'f', 2);
}

QString KVRTelemetryDisplay::speedText(const _AVI_GPS_DATA_T& record)
{
    const QString number = QString::number(record.fSpeed);
    return record.KM == '9' ? number + QStringLiteral(" Km/h") : number + QStringLiteral(" Mi/h");
}

QString KVRTelemetryDisplay::hdopText(double hdop)
{
    // The receiver's text is read in single precision: 0.95 is 0.949999988 and shows as 0.9.
    return QString::asprintf("%.1f", double(float(hdop)));
}

QString KVRTelemetryDisplay::satelliteText(std::uint32_t count)
{
    return QString::number(count);
}

void KVRTelemetryDisplay::updateGsensorUIByPlayPositon()
{
    if (m_outputs.graphView && m_playerPosition)
        m_outputs.graphView->updateTimePosition(m_playerPosition());
    if (!m_store || m_store->GSensors().empty())
        return;
    const std::vector<KVRGSensor>& samples = m_store->GSensors();
    const KVRGSensor& sample = samples[indexForPosition(m_playInfo->position(), samples.size())];
    setText(m_outputs.gsensorXField, gsensorText('X', sample.x));
    setText(m_outputs.gsensorYField, gsensorText('Y', sample.y));
    setText(m_outputs.gsensorZField, gsensorText('Z', sample.z));
}

void KVRTelemetryDisplay::updateGpsUIByPlayPosition()
{
    if (!m_store)
        return;
    const double position = m_playInfo->position();
    const auto& records = m_store->vGpsData();
    if (records.empty()) {
        if (m_outputs.mapWebView)
            m_outputs.mapWebView->showNoGpsData();
    } else {
        showGpsRecord(indexForPosition(position, records.size()));
    }

    // HDOP and satellites come from the fix at the same fraction of all sentences read.
    const std::vector<KVRGpsData>& fixes = m_store->NMEAs();
    if (fixes.empty())
        return;
    const KVRGpsData& fix = fixes[indexForPosition(position, fixes.size())];
    setText(m_outputs.hdopField, hdopText(fix.HDOP));
    setText(m_outputs.sateliteField, satelliteText(fix.SatelliteUsedCount));
}

void KVRTelemetryDisplay::showGpsRecord(std::size_t index)
{
    const KVRBlackBoxData::GpsRecordRef& ref = m_store->vGpsData()[index];
    if (!ref)
        return;
    const _AVI_GPS_DATA_T& record = ref->data();

    // The hemisphere is read from the fix with the record's own index; where the fixes run out
    // the last hemisphere seen stays in force.
    const std::vector<KVRGpsData>& fixes = m_store->NMEAs();
    if (index < fixes.size()) {
        m_south = fixes[index].NS != 'N';
        m_west = fixes[index].EW != 'E';
    }
    const double latitude = std::fabs(record.fLatitude) * (m_south ? -1 : 1);
    const double longitude = std::fabs(record.fLongitude) * (m_west ? -1 : 1);
    if (m_outputs.mapWebView)
        m_outputs.mapWebView->showPosition(nmeaToDegrees(latitude), nmeaToDegrees(longitude));
    setText(m_outputs.speedField, speedText(record));
}

} // namespace kavro
