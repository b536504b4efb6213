#include "workbooks/Workbook.h"

#include <array>
#include <cmath>
#include <utility>

#include "values/DateText.h"
#include "values/Number.h"

namespace vlm::files {

namespace {

std::string TimeText(const Date::Civil& moment) {
    return text::FormatZeros(moment.hour, 2) + ':' + text::FormatZeros(moment.minute, 2) + ':' +
           text::FormatZeros(moment.second, 2);
}

std::string DateAndTime(Date date) {
    const Date::Civil moment = date.ToCivil();
    const bool hasTime = moment.hour != 0 || moment.minute != 0 || moment.second != 0;
    if (!hasTime) return text::DdMmYyyySlashes(date);
    if (std::trunc(date.Serial()) == 0) return TimeText(moment);
    return text::DdMmYyyySlashes(date) + ' ' + TimeText(moment);
}

struct TextForm {
    std::string operator()(std::monostate) const { return {}; }
    std::string operator()(bool value) const { return value ? "Vero" : "Falso"; }
    std::string operator()(double value) const { return text::NumberText(value); }
    std::string operator()(Date value) const { return DateAndTime(value); }
    std::string operator()(const std::string& value) const { return value; }
};

}  // namespace

std::string TextOf(const SheetValue& value) { return std::visit(TextForm{}, value); }

std::string_view ErrorText(std::string_view code) noexcept {
    using Name = std::pair<std::string_view, std::string_view>;
    constexpr std::array<Name, 5> kItalian = {Name{"#N/A", "#N/D"}, Name{"#VALUE!", "#VALORE!"}, Name{"#REF!", "#RIF!"},
                                              Name{"#NAME?", "#NOME?"}, Name{"#NULL!", "#NULLO!"}};
    for (const auto& [english, italian] : kItalian) {
        if (code == english) return italian;
    }
    return code;
}

}  // namespace vlm::files
