#include "editablefields.h"

#include "kvrvalidator.h"
#include "settingfields.h"
#include "settingvalues.h"

#include <QRegularExpression>

namespace kavro {

namespace {

std::optional<std::int64_t> parseInteger(const QString& text)
{
    static const QRegularExpression Decimal(QStringLiteral("^[0-9]{1,10}$"));
    static const QRegularExpression Hex(QStringLiteral("^0[xX][0-9a-fA-F]{1,8}$"));
    bool ok = false;
    qulonglong value = 0;
    if (Decimal.match(text).hasMatch())
        value = text.toULongLong(&ok, 10);
    else if (Hex.match(text).hasMatch())
        value = text.mid(2).toULongLong(&ok, 16);
    if (!ok)
        return std::nullopt;
    return static_cast<std::int64_t>(value);
}

// What a refused value should have been, in the terms of `kavro config set --help`.
QString expectation(const _FILEDATA& record, const SettingField& field)
{
    switch (field.kind) {
    case SettingKind::Choice: {
        QStringList values;
        for (const SettingChoice& choice : field.choices)
            values.append(QString::number(choice.value));
        return QStringLiteral("must be one of %1").arg(values.join(QStringLiteral(", ")));
    }
    case SettingKind::Threshold:
        return QStringLiteral("must be 0 or %1 to %2 (hundredths of g)")
            .arg(MinThresholdHundredths)
            .arg(MaxThresholdHundredths);
    case SettingKind::CardShare:
        return QStringLiteral("must be 20 to 80 in steps of 10");
    case SettingKind::MotionBlocks:
        return QStringLiteral("must be 0 to 0x%1").arg(MotionBlockMask, 0, 16);
    case SettingKind::KeptBits: {
        auto stored =
            static_cast<std::uint32_t>(fieldInteger(record, *findFileDataField(field.name)));
        return QStringLiteral("must be 0 to %1, or keep the other bits as stored (0x%2)")
            .arg(field.editedBits)
            .arg(stored & ~field.editedBits, 0, 16);
    }
    case SettingKind::PlateNumber:
        break;
    }
    return QString();
}

std::optional<QString> assignPlateNumber(_FILEDATA& record, const QString& text)
{
    if (text.size() > KVRValidator::CarNumberLength || KVRValidator::filterCarNumber(text) != text)
        return QStringLiteral("takes up to %1 ASCII letters and digits")
            .arg(KVRValidator::CarNumberLength);
    setPlateNumber(record, text);
    return std::nullopt;
}

} // namespace

QStringList editableFieldNames()
{
    QStringList names;
    for (const SettingField& field : settingFields())
        names.append(
            QString::fromLatin1(field.name.data(), static_cast<qsizetype>(field.name.size())));
    return names;
}

std::optional<QString> assignField(_FILEDATA& record, const QString& name, const QString& value)
{
    QByteArray latinName = name.toLatin1();
    std::string_view fieldName(latinName.constData(), static_cast<std::size_t>(latinName.size()));
    const FileDataField* field = findFileDataField(fieldName);
    if (!field)
        return QStringLiteral("no such field");
    const SettingField* editable = findSettingField(fieldName);
    if (!editable) {
        if (fieldName == "checksum" || fieldName == "osd_plate_flag")
            return QStringLiteral("is computed when the file is saved");
        return QStringLiteral("is not edited by any settings page");
    }
    if (editable->kind == SettingKind::PlateNumber)
        return assignPlateNumber(record, value);

    std::optional<std::int64_t> number = parseInteger(value);
    if (!number)
        return QStringLiteral("'%1' is not a number (decimal, or hexadecimal with 0x)").arg(value);
    std::int64_t stored = *number;
    // The camera-bit boxes: a value of their bits alone leaves the others as stored.
    if (editable->kind == SettingKind::KeptBits && stored >= 0 && stored <= editable->editedBits)
        stored |= fieldInteger(record, *field) & ~std::int64_t(editable->editedBits);
    if (!isStorableValue(record, *editable, stored))
        return expectation(record, *editable);
    if (editable->kind == SettingKind::CardShare) {
        // One slider writes both shares.
        bool always = fieldName == "sd_mem_always_ratio";
        record.sd_mem_always_ratio = static_cast<std::uint32_t>(always ? stored : 100 - stored);
        record.sd_mem_motion_ratio = 100 - record.sd_mem_always_ratio;
        return std::nullopt;
    }
    setFieldInteger(record, *field, stored);
    return std::nullopt;
}

std::optional<QString> assignFields(_FILEDATA& record, const QStringList& assignments)
{
    _FILEDATA edited = record;
    for (const QString& assignment : assignments) {
        qsizetype equals = assignment.indexOf(u'=');
        if (equals <= 0)
            return QStringLiteral("'%1' is not NAME=VALUE").arg(assignment);
        if (auto refusal = assignField(edited, assignment.left(equals), assignment.mid(equals + 1)))
            return QStringLiteral("%1: %2").arg(assignment.left(equals), *refusal);
    }
    // Two assignments of one control (a field named twice, or both card shares) must agree:
    // each must still hold once all are applied.
    for (const QString& assignment : assignments) {
        qsizetype equals = assignment.indexOf(u'=');
        _FILEDATA again = edited;
        assignField(again, assignment.left(equals), assignment.mid(equals + 1));
        if (fileDataBytes(again) != fileDataBytes(edited))
            return QStringLiteral("%1: conflicts with another assignment")
                .arg(assignment.left(equals));
    }
    record = edited;
    return std::nullopt;
}

} // namespace kavro
