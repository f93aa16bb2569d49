#pragma once

#include "filedata.h"

#include <QString>

#include <cstdint>
#include <optional>

namespace kavro {

// The error key of a settings file that cannot be written.
inline constexpr char FileOpenFailKey[] = "msg.file_open_fail";

// Zeroes the record, then stores the camera's defaults. The external rear camera takes the bits
// last chosen on this computer (the preference "3t40externalRearCamera"), so that a reset card
// keeps them. checksum and osd_plate_flag stay 0.
void makeDefaultFileData(_FILEDATA& record);

// Reads up to FileDataSize bytes from the start of the file into the record and returns whether
// all of them were there. Nothing is checked: not the version, not the checksum, not the values.
// A file that cannot be opened leaves the record as it was.
bool readSettingFile(const QString& path, _FILEDATA& record);

// Writes the record as it is (prepare it first). The old file is replaced only once the new one
// is complete, so a failed write leaves it intact; where the card has no room for the new one, the
// old one is overwritten in place and read back. File and folder are synced before it returns,
// since people pull the card right after. Returns FileOpenFailKey on failure.
std::optional<QString> writeSettingFile(const _FILEDATA& record, const QString& path);

// The defaults, written exactly as makeDefaultFileData leaves them (checksum 0).
std::optional<QString> writeDefaultSettingFile(const QString& path);

// XOR of the 106 little-endian words after the first, reduced to 16 bits.
std::uint16_t fileDataChecksum(const _FILEDATA& record);
bool hasValidChecksum(const _FILEDATA& record);

// What every save does once the pages have copied their controls into the record: the overlay
// shows the car number only when there is one, and the checksum covers the final bytes.
void prepareFileDataForSave(_FILEDATA& record);

} // namespace kavro
