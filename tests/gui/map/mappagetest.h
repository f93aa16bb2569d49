#pragma once

#include "map/kvrmapview.h"
#include "resources/translations/infoplisttranslator.h"

#include <QBuffer>
#include <QImage>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTest>
#include <QWebEnginePage>

// Reading the real map page back, and tile servers to point it at.
namespace kavro::test {

// WebEngine starts slowly on a loaded machine.
constexpr int PageTimeoutMs = 60000;

inline QVariant evaluate(QWebEngineView& view, const QString& script)
{
    QVariant result;
    bool done = false;
    view.page()->runJavaScript(script, [&](const QVariant& value) {
        result = value;
        done = true;
    });
    if (!QTest::qWaitFor([&] { return done; }, PageTimeoutMs))
        qWarning("no answer from the page to %s", qPrintable(script));
    return result;
}

// What the page shows: marker, route length, offline label, zoom, centre, debug lines.
inline QVariantMap mapState(QWebEngineView& view)
{
    return evaluate(view, QStringLiteral("kvrMapState()")).toMap();
}

// The marker as {latitude, longitude}, empty without one.
inline QList<double> markerOf(const QVariantMap& state)
{
    QList<double> position;
    for (const QVariant& value : state.value(QStringLiteral("marker")).toList())
        position.append(value.toDouble());
    return position;
}

inline bool waitForPage(KVRMapView& view)
{
    if (view.isPageReady())
        return true;
    QSignalSpy ready(&view, &KVRMapView::pageReady);
    return ready.wait(PageTimeoutMs);
}

// A tile URL on this machine where nothing listens: every tile fails at once, as offline.
inline QString refusedTiles()
{
    QTcpServer probe;
    probe.listen(QHostAddress::LocalHost);
    const quint16 port = probe.serverPort();
    probe.close();
    return QStringLiteral("http://127.0.0.1:%1/{z}/{x}/{y}.png").arg(port);
}

// Loads the page offline; true once it is ready and has the calls made so far.
inline bool loadOffline(KVRMapView& view)
{
    view.setTileUrlTemplate(refusedTiles());
    view.loadMapPage();
    return waitForPage(view);
}

// English texts, and the page's tile cache in the test folders rather than the user's.
inline void prepareMapTests()
{
    QStandardPaths::setTestModeEnabled(true);
    installInfoPlistTranslator(QStringLiteral("en"));
}

// A tile server on this machine answering every request with one light-green 256 px tile, or
// with 404 when the request starts with `failing`. It keeps the head of each request (request
// line and headers).
class TileServer
{
public:
    TileServer()
    {
        QImage tile(256, 256, QImage::Format_RGB32);
        tile.fill(QColor(200, 230, 200));
        QBuffer buffer(&m_png);
        tile.save(&buffer, "PNG");
        m_server.listen(QHostAddress::LocalHost);
        QObject::connect(&m_server, &QTcpServer::newConnection, &m_server, [this] {
            while (QTcpSocket* socket = m_server.nextPendingConnection()) {
                QObject::connect(socket, &QTcpSocket::readyRead, socket,
                                 [this, socket] { answer(socket); });
                QObject::connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
            }
        });
    }

    QString urlTemplate() const
    {
        return QStringLiteral("http://127.0.0.1:%1/{z}/{x}/{y}.png").arg(m_server.serverPort());
    }
    QList<QByteArray> requests;
    QByteArray failing = "-";

private:
    // Once the head is in: the tile, then the connection closes.
    void answer(QTcpSocket* socket)
    {
        if (!socket->peek(65536).contains("\r\n\r\n"))
            return;
        requests.append(socket->readAll());
        if (requests.last().startsWith(failing))
            socket->write(
                "HTTP/1.1 404 Not Found\r\nContent-Length: 0\r\nConnection: close\r\n\r\n");
        else
            socket->write("HTTP/1.1 200 OK\r\nContent-Type: image/png\r\nContent-Length: " +
                          QByteArray::number(m_png.size()) + "\r\nConnection: close\r\n\r\n" +
                          m_png);
        socket->disconnectFromHost();
    }

    QTcpServer m_server;
    QByteArray m_png;
};

} // namespace kavro::test
