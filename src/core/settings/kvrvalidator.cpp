#include "kvrvalidator.h"

#include "settingvalues.h"

namespace kavro {

namespace {

bool isAsciiDigit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

bool isAsciiLetter(QChar c)
{
    return (c >= u'A' && c <= u'Z') || (c >= u'a' && c <= u'z');
}

// Length of the run of ASCII digits starting at position.
qsizetype digitsAt(const QString& text, qsizetype position)
{
    qsizetype end = position;
    while (end < text.size() && isAsciiDigit(text.at(end)))
        ++end;
    return end - position;
}

} // namespace

std::optional<double> KVRValidator::scanNumber(const QString& text)
{
    qsizetype start = 0;
    while (start < text.size() && text.at(start).isSpace())
        ++start;
    qsizetype end = start;
    if (end < text.size() && (text.at(end) == u'+' || text.at(end) == u'-'))
        ++end;
    qsizetype integerDigits = digitsAt(text, end);
    end += integerDigits;
    qsizetype fractionDigits = 0;
    if (end < text.size() && text.at(end) == u'.') {
        fractionDigits = digitsAt(text, end + 1);
        if (integerDigits > 0 || fractionDigits > 0)
            end += 1 + fractionDigits;
    }
    if (integerDigits == 0 && fractionDigits == 0)
        return std::nullopt;
    // An exponent counts only when digits follow it; "1e" is the number 1 and a letter.
    if (end < text.size() && (text.at(end) == u'e' || text.at(end) == u'E')) {
        qsizetype digitsStart = end + 1;
        if (digitsStart < text.size() &&
            (text.at(digitsStart) == u'+' || text.at(digitsStart) == u'-'))
            ++digitsStart;
        qsizetype exponentDigits = digitsAt(text, digitsStart);
        if (exponentDigits > 0)
            end = digitsStart + exponentDigits;
    }
    // The run is a well-formed number, so conversion fails only on overflow (giving infinity) or
    // underflow (giving 0); both are the right value to check against the bounds.
    return text.mid(start, end - start).toDouble();
}

std::optional<ValidationMessage> KVRValidator::validateGsensorThreshold(const QString& text)
{
    if (isEmptyText(text))
        return std::nullopt;
    std::optional<double> value = scanNumber(text);
    if (!value)
        return ValidationMessage{QStringLiteral("msg.input_value_invalid_format"), {}};
    if (*value < MinGsensorThreshold || *value > MaxGsensorThreshold)
        return ValidationMessage{QStringLiteral("msg.gsensor_outofrange_fmt"),
                                 {MinGsensorThreshold, MaxGsensorThreshold}};
    return std::nullopt;
}

std::optional<ValidationMessage> KVRValidator::validateSDCardSizeRatio(int percent)
{
    if (percent < MinSDCardSizeRatio)
        return ValidationMessage{QStringLiteral("msg.sdcard_ratio_too_low"), {}};
    return std::nullopt;
}

std::optional<ValidationMessage> KVRValidator::validateCardShare(int sliderPosition)
{
    CardShare share = cardShareForSliderPosition(sliderPosition);
    if (auto message = validateSDCardSizeRatio(static_cast<int>(share.always)))
        return message;
    return validateSDCardSizeRatio(static_cast<int>(share.motion));
}

QString KVRValidator::filterCarNumber(const QString& text)
{
    QString kept;
    for (QChar c : text) {
        if (kept.size() == CarNumberLength)
            break;
        if (isAsciiLetter(c) || isAsciiDigit(c))
            kept.append(c);
    }
    return kept;
}

} // namespace kavro
