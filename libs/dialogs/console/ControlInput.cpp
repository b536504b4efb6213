#include "ControlInput.h"

#include <charconv>
#include <optional>

#include "ControlState.h"
#include "console/ScriptError.h"
#include "dialogs/PickList.h"
#include "values/DateText.h"
#include "values/Number.h"
#include "values/Utf8.h"

namespace vlm::ui {

namespace {

[[noreturn]] void Refuse(const ScriptStep& step, const std::string& reason) { throw ScriptError(step.text, reason); }

[[noreturn]] void RefusePosition(const ScriptStep& step, std::string_view digits) {
    std::string reason = "\"";
    Refuse(step, reason.append(digits).append("\" non è una posizione"));
}

std::optional<std::int32_t> WholeNumber(std::string_view text) {
    std::int32_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return value;
}

/// A position of a list of `count` entries, or -1 for none.
int Position(std::string_view digits, int count, const ScriptStep& step) {
    const std::optional<std::int32_t> position = WholeNumber(digits);
    if (!position) RefusePosition(step, digits);
    if (*position < -1 || *position >= count) {
        const std::string places =
            count == 0 ? "l'elenco è vuoto" : "le posizioni vanno da 0 a " + std::to_string(count - 1);
        Refuse(step, "la posizione " + std::to_string(*position) + " non c'è: " + places);
    }
    return *position;
}

/// "#2" or "" as a position; nothing for a text of another form.
std::optional<int> MarkedPosition(int count, const ScriptStep& step) {
    if (step.value.empty()) return -1;
    if (step.value.front() != '#') return std::nullopt;
    return Position(std::string_view(step.value).substr(1), count, step);
}

int PositionOfText(const Control& list, const ScriptStep& step) {
    const std::vector<ControlState::Item> items = ControlState(list).Items();
    for (std::size_t i = 0; i < items.size(); ++i) {
        if (text::EqualNoCase(items[i].text, step.value)) return static_cast<int>(i);
    }
    Refuse(step, "l'elenco non ha la voce \"" + step.value + "\"");
}

void EnterNumber(NumberField& field, const ScriptStep& step) {
    const std::optional<double> value = step.value.empty() ? 0 : text::ParseNumber(step.value);
    if (!value) Refuse(step, "\"" + step.value + "\" non è un numero");
    if (field.SetValue(*value)) return;
    Refuse(step, "il numero deve stare tra " + text::NumberText(field.Minimum()) + " e " +
                     text::NumberText(field.Maximum()) + " con al più " + std::to_string(field.Decimals()) +
                     " decimali");
}

void EnterDate(DateField& field, const ScriptStep& step) {
    const std::optional<Date> date = text::ParseItalianDate(step.value);
    if (!date && !step.value.empty()) Refuse(step, "\"" + step.value + "\" non è una data gg/mm/aaaa");
    field.SetValue(date);
}

void EnterCheck(CheckBox& box, const ScriptStep& step) {
    if (step.value != "0" && step.value != "1") Refuse(step, "una casella vuole 0 oppure 1");
    box.SetChecked(step.value == "1");
}

void EnterOption(OptionGroup& group, const ScriptStep& step) {
    const int count = static_cast<int>(group.Items().size());
    const std::optional<int> marked = MarkedPosition(count, step);
    group.SetPosition(marked ? *marked : Position(step.value, count, step));
}

void EnterFixed(FixedList& list, const ScriptStep& step) {
    const std::optional<int> marked = MarkedPosition(static_cast<int>(list.Items().size()), step);
    list.SetPosition(marked ? *marked : PositionOfText(list, step));
}

void EnterPick(PickList& list, const ScriptStep& step) {
    if (const std::optional<int> marked = MarkedPosition(list.RowCount(), step)) return list.SelectIndex(*marked);
    const std::optional<std::int32_t> key = WholeNumber(step.value);
    if (!key) return list.SelectIndex(PositionOfText(list, step));
    if (!list.SelectKey(*key)) Refuse(step, "l'elenco non ha la chiave " + step.value);
}

void EnterSeveral(MultiList& list, const ScriptStep& step) {
    std::set<int> positions;
    std::string_view rest = step.value == "#-1" ? std::string_view() : std::string_view(step.value);
    while (!rest.empty()) {
        const std::size_t comma = rest.find(',');
        const std::string_view digits = text::Trim(rest.substr(0, comma));
        const int position = Position(digits, static_cast<int>(list.Items().size()), step);
        if (position < 0) RefusePosition(step, digits);
        positions.insert(position);
        if (comma != std::string_view::npos && comma + 1 == rest.size())
            Refuse(step, "dopo l'ultima virgola manca una posizione");
        rest.remove_prefix(comma == std::string_view::npos ? rest.size() : comma + 1);
    }
    list.SetSelected(std::move(positions));
}

}  // namespace

void EnterValue(Control& control, const ScriptStep& step) {
    switch (control.Kind()) {
        case ControlKind::Text:
            return As<TextField>(control).SetText(step.value);
        case ControlKind::Number:
            return EnterNumber(As<NumberField>(control), step);
        case ControlKind::Date:
            return EnterDate(As<DateField>(control), step);
        case ControlKind::CheckBox:
            return EnterCheck(As<CheckBox>(control), step);
        case ControlKind::OptionGroup:
            return EnterOption(As<OptionGroup>(control), step);
        case ControlKind::FixedList:
            return EnterFixed(As<FixedList>(control), step);
        case ControlKind::PickList:
            return EnterPick(As<PickList>(control), step);
        case ControlKind::MultiList:
            return EnterSeveral(As<MultiList>(control), step);
        case ControlKind::Label:
        case ControlKind::Frame:
        case ControlKind::Button:
        case ControlKind::Progress:
        case ControlKind::Grid:
            break;
    }
    Refuse(step, "il controllo " + control.Name() + " non prende un valore");
}

}  // namespace vlm::ui
