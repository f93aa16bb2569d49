#pragma once

#include "filedata.h"

#include <QString>

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

// What each field a settings page edits may hold and how a control's choice maps to the stored
// value. The pages build their controls from this table and `kavro config set` accepts a value
// only when a page could have written it, so the two never disagree.
namespace kavro {

enum class SettingPage
{
    Video,
    Basic,
    Gps,
    Aux,
    Motion,
    Audio
};

// The text of one choice as the page shows it.
struct ChoiceLabel
{
    enum Kind : std::uint8_t
    {
        None,           // the control has its own title (check boxes)
        Literal,        // shown as it is: "Km/h", "0.1v", "1"
        Key,            // a localisation key: "unuse"
        KeyWithNumber,  // a localised format with one number: "nSecond_fmt" of 10
        LiteralWithKey, // a literal format filled with a localised word: "1(%1)" with "insensitive"
    };
    Kind kind = None;
    const char* text = "";
    const char* argument = ""; // LiteralWithKey
    int number = 0;            // KeyWithNumber
};

struct SettingChoice
{
    std::int64_t value;
    ChoiceLabel label;
};

enum class SettingKind
{
    Choice,       // one of the choices, by index (segments, lists, check boxes, radio cells)
    Threshold,    // a typed impact threshold: 0 (empty field) or 5..150 hundredths of g
    CardShare,    // the card-share slider: both shares in tens, each at least 20
    PlateNumber,  // up to 8 ASCII letters and digits
    MotionBlocks, // twelve block boxes: bits 0 to 11, the others written as 0
    KeptBits,     // check boxes on some bits; the other bits are kept as stored
};

struct SettingField
{
    std::string_view name;
    SettingPage page;
    SettingKind kind;
    std::span<const SettingChoice> choices = {};
    // The choice shown for a stored value that is none of the choices; -1 shows none selected.
    int fallbackIndex = 0;
    std::uint32_t editedBits = 0; // KeptBits
};

// Every edited field, page by page.
std::span<const SettingField> settingFields();
const SettingField* findSettingField(std::string_view name);

// A Choice field's stored value as the control's index: the choice holding the value, else the
// field's fallback.
int choiceIndexForValue(const SettingField& field, std::int64_t value);
// The value a choice stores; none for an index outside the choices (nothing selected).
std::optional<std::int64_t> choiceValueAt(const SettingField& field, int index);

// Shown and stored through the table. Showing never changes the record; collecting an index
// outside the choices (nothing selected) keeps the stored value.
int choiceIndexInRecord(const _FILEDATA& record, const SettingField& field);
void storeChoiceIndex(_FILEDATA& record, const SettingField& field, int index);

// Whether a page could have left this value in the field, given what the record holds now (the
// kept bits of KeptBits must stay as they are).
bool isStorableValue(const _FILEDATA& record, const SettingField& field, std::int64_t value);

} // namespace kavro
