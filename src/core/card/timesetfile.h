#pragma once

#include <QByteArray>
#include <QDate>
#include <QDateTime>
#include <QString>
#include <QTime>

#include <optional>

namespace kavro {

// The camera takes its clock from "timeset.cfg": exactly 19 ASCII bytes, "yyyy/MM/dd HH:mm:ss",
// no line end. The digits are always Gregorian and ASCII, whatever the user's locale.
inline constexpr int TimeSetTextLength = 19;

// The text of a day and a time of day; none for an invalid date or time, or a year the four
// digits cannot hold.
std::optional<QByteArray> timeSetText(QDate date, QTime time);

// The clock window's rule: the date part of selectedDate and the time part of selectedTime, each
// in the computer's local time.
std::optional<QByteArray> timeSetText(const QDateTime& selectedDate, const QDateTime& selectedTime);

// Parses the text back: "2026/11/16 13:05:00" exactly, with a real day and a real time. Used for
// the command line's --at.
std::optional<std::pair<QDate, QTime>> parseTimeSetText(const QString& text);

// Writes the text over the start of the file at path, creating the file when it is missing. The
// file is not truncated: an existing longer file keeps its bytes from offset 19 on, as on the
// camera. Returns false with a message when the file cannot be created, opened or written.
bool doWriteConfigFile(const QString& path, const QByteArray& text, QString* error = nullptr);

} // namespace kavro
