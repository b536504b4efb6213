#pragma once

#include <algorithm>
#include <concepts>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "record/FixedLine.h"
#include "record/FixedText.h"
#include "values/Currency.h"
#include "values/Date.h"
#include "values/Value.h"

namespace vlm {

/// Kinds of field, numbered as the layouts number them.
enum class FieldMode { Number = 1, Text = 2, Date = 3, Amount = 4 };

/// Where the regions differ in how a field is written.
struct FieldPolicy {
    bool trimNumbers;      // blanks around a number's text are dropped before it is filled with zeros
    bool upperText;        // texts in capitals
    bool zeroDates;        // a missing or short date is filled with zeros instead of left blank
    int amountDecimals;    // 2 or 3
    bool amountComma;      // the decimal comma is written; otherwise the decimals are implied
    bool shortShownYears;  // dates are shown with two digits of the year, otherwise with four and blank for zeros
};

inline constexpr FieldPolicy kCommonFields{false, false, false, 2, true, true};
inline constexpr FieldPolicy kPugliaFields{true, true, true, 3, false, false};

/// Fields of fixed-width lines: written, shown readably, read back. Widths count characters; Italian number forms.
/// A written field is at most its width long; filling the rest of the line with blanks is the line's business.
class FieldFormat {
public:
    constexpr explicit FieldFormat(const FieldPolicy& policy) : policy_(policy) {}

    /// Zeros in front up to the width; of a longer text the rightmost characters.
    void AppendNumber(std::string& out, std::string_view value, int width) const;
    void AppendNumber(std::string& out, std::int64_t value, int width) const;
    /// The leftmost characters.
    void AppendText(std::string& out, std::string_view value, int width) const;
    /// "ddmmyyyy"; nothing for no date, or zeros where the region wants them.
    void AppendDate(std::string& out, const std::optional<Date>& value, int width) const;
    /// Zeros in front up to the width, behind a minus sign; of a longer text the rightmost characters.
    void AppendAmount(std::string& out, Currency value, int width) const;

    /// Into a place of a line, by the place's rule. The value's kind decides what a rule can mean: a number under a
    /// text rule is written as plain digits, a text under a number rule is filled with zeros, a text under a date rule
    /// is a date that is written already ("" for none).
    void Place(FixedLine& line, const FieldPlace& place, std::string_view value) const;
    template <std::size_t Width>
    void Place(FixedLine& line, const FieldPlace& place, const FixedText<Width>& value) const {
        if (place.rule != FieldRule::Text || policy_.upperText || !value.IsPlain()) {
            return Place(line, place, value.View());
        }
        value.View().copy(line.Slot(place), std::min(Width, static_cast<std::size_t>(place.length)));
    }
    void Place(FixedLine& line, const FieldPlace& place, std::integral auto value) const {
        PlaceInteger(line, place, value);
    }
    /// By its shortest text.
    void Place(FixedLine& line, const FieldPlace& place, double value) const;
    void Place(FixedLine& line, const FieldPlace& place, Currency value) const;
    void Place(FixedLine& line, const FieldPlace& place, const std::optional<Date>& value) const;

    /// The same by mode. Null gives what no date gives; in another mode than Date it counts as empty text or 0.
    std::string FormatField(const data::Value& value, int width, FieldMode mode) const;
    /// Grouped, with the region's decimals: 1.234,50.
    std::string FormatAmount(Currency value) const;

    /// A written date field readably: dd/mm/yy, or dd/mm/yyyy and "" for eight zeros.
    std::string DisplayDate(std::string_view field) const;
    /// Two decimals, not grouped, right-aligned in `width` characters (rightmost kept); width 0 leaves it as it is.
    std::string DisplayAmount(Currency value, int width) const;
    /// The same by mode, an amount from its text form; other modes give "".
    std::string DisplayField(std::string_view text, int width, FieldMode mode) const;

    /// A written amount field as an amount; what is no number counts as 0.
    Currency ParseAmount(std::string_view field) const;

private:
    void PlaceInteger(FixedLine& line, const FieldPlace& place, std::int64_t value) const;
    void FillAmount(char* slot, int width, Currency value) const;

    FieldPolicy policy_;
};

}  // namespace vlm
