#pragma once

#include <QString>
#include <QVariantList>

#include <optional>

namespace kavro {

// A message for the user: a localisation key and the arguments of its placeholders. The window
// that shows it translates it.
struct ValidationMessage
{
    QString key;
    QVariantList args;
    friend bool operator==(const ValidationMessage&, const ValidationMessage&) = default;
};

// The checks shared by the settings pages. Each returns none for acceptable input.
class KVRValidator
{
public:
    static constexpr double MinGsensorThreshold = 0.05;
    static constexpr double MaxGsensorThreshold = 1.5;
    static constexpr int MinSDCardSizeRatio = 20;
    static constexpr int CarNumberLength = 8;

    // Empty text passes (the page then stores 0); otherwise the text must start with a number
    // from 0.05 to 1.5, bounds included. What follows the number is ignored.
    static std::optional<ValidationMessage> validateGsensorThreshold(const QString& text);
    // A share of the card below 20 percent leaves too little room for its recordings.
    static std::optional<ValidationMessage> validateSDCardSizeRatio(int percent);
    // Both shares of a card-share slider position, continuous first.
    static std::optional<ValidationMessage> validateCardShare(int sliderPosition);

    // The number at the start of the text after leading white space, as the threshold check
    // reads it; none when the text does not start with one.
    static std::optional<double> scanNumber(const QString& text);

    // What the car-number field keeps of typed text: ASCII letters (case kept) and digits, at
    // most eight; the camera's overlay font has nothing else.
    static QString filterCarNumber(const QString& text);

    static bool isEmptyText(const QString& text) { return text.isEmpty(); }
};

} // namespace kavro
