#include "timesetfile.h"

#include "cardlog.h"

#include "common/outputfile.h"

#include <QRegularExpression>

#include <cstdio>

namespace kavro {

std::optional<QByteArray> timeSetText(QDate date, QTime time)
{
    if (!date.isValid() || !time.isValid() || date.year() < 1 || date.year() > 9999)
        return std::nullopt;
    char text[TimeSetTextLength + 1];
    std::snprintf(text, sizeof text, "%04d/%02d/%02d %02d:%02d:%02d", date.year(), date.month(),
                  date.day(), time.hour(), time.minute(), time.second());
    return QByteArray(text, TimeSetTextLength);
}

std::optional<QByteArray> timeSetText(const QDateTime& selectedDate, const QDateTime& selectedTime)
{
    return timeSetText(selectedDate.toLocalTime().date(), selectedTime.toLocalTime().time());
}

std::optional<std::pair<QDate, QTime>> parseTimeSetText(const QString& text)
{
    static const QRegularExpression pattern(
        QStringLiteral("^([0-9]{4})/([0-9]{2})/([0-9]{2}) ([0-9]{2}):([0-9]{2}):([0-9]{2})$"));
    QRegularExpressionMatch match = pattern.match(text);
    if (!match.hasMatch())
        return std::nullopt;
    auto field = [&match](int index) { return match.capturedView(index).toInt(); };
    QDate date(field(1), field(2), field(3));
    QTime time(field(4), field(5), field(6));
    if (!date.isValid() || !time.isValid() || date.year() < 1)
        return std::nullopt;
    return std::pair{date, time};
}

bool doWriteConfigFile(const QString& path, const QByteArray& text, QString* error)
{
    QString reason;
    if (writeFile(path, text, &reason, OutputFile::Rule::KeepTail))
        return true;
    qCDebug(lcCard, "cannot write %s: %s", qUtf8Printable(path), qUtf8Printable(reason));
    if (error)
        *error = reason;
    return false;
}

} // namespace kavro
