#pragma once

#include "filedata.h"

#include <QString>
#include <QStringList>

#include <optional>

// The fields the settings pages edit, with the values their controls can store. The command
// line changes a settings file only within these bounds, so that what it writes is a file the
// settings window could have written.
namespace kavro {

QStringList editableFieldNames();

// Sets one field from text as its page would: checks the value and, where one control writes
// two fields (the card share) or only some bits (the external rear camera), does the same.
// Integers are decimal or "0x" hexadecimal. Returns why the value is refused, or none.
std::optional<QString> assignField(_FILEDATA& record, const QString& name, const QString& value);

// Applies "NAME=VALUE" assignments in order to a copy of the record and stores the copy only
// when every one was accepted and none undoes another. Returns the first refusal, or none.
std::optional<QString> assignFields(_FILEDATA& record, const QStringList& assignments);

} // namespace kavro
