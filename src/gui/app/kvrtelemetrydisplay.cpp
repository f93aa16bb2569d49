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
    setText(m_outputs.positionField, QString());
    if (m_outputs.mapWebView && store)
        m_outputs.mapWebView->setRoute(routePoints(*store));
}

void KVRTelemetryDisplay::clear()
{
    // A recording that failed must not leave the last one's values looking like its own.
    m_store = nullptr;
    for (QLabel* field : {m_outputs.gsensorXField, m_outputs.gsensorYField, m_outputs.gsensorZField,
                          m_outputs.speedField, m_outputs.hdopField, m_outputs.sateliteField,
                          m_outputs.positionField})
        setText(field, QString());
    if (m_outputs.graphView)
        m_outputs.graphView->setGraphData({});
    if (m_outputs.mapWebView) {
        m_outputs.mapWebView->setRoute({});
        m_outputs.mapWebView->clearPosition();
    }
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

QString KVRTelemetryDisplay::positionText(double latitude, double longitude)
{
    return QStringLiteral("%1\u00b0 %2   %3\u00b0 %4")
        .arg(std::fabs(latitude), 0, 'f', 6)
        .arg(latitude < 0 ? QLatin1Char('S') : QLatin1Char('N'))
        .arg(std::fabs(longitude), 0, 'f', 6)
        .arg(longitude < 0 ? QLatin1Char('W') : QLatin1Char('E'));
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
        //% "This recording has no GPS data"
        setText(m_outputs.positionField, qtTrId("main.map.no_gps"));
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
    const double latitudeDegrees = nmeaToDegrees(latitude);
    const double longitudeDegrees = nmeaToDegrees(longitude);
    if (m_outputs.mapWebView)
        m_outputs.mapWebView->showPosition(latitudeDegrees, longitudeDegrees);
    setText(m_outputs.positionField, positionText(latitudeDegrees, longitudeDegrees));
    setText(m_outputs.speedField, speedText(record));
}

} // namespace kavro
