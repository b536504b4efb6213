#include "ControlKinds.h"

#include <algorithm>
#include <charconv>
#include <optional>

#include "TextLayout.h"
#include "dialogs/Dialog.h"
#include "dialogs/Grid.h"
#include "dialogs/PickList.h"
#include "values/DateText.h"
#include "values/Number.h"
#include "values/Utf8.h"

namespace vlm::ui {

namespace {

constexpr std::size_t kFieldWidth = 60;  // at most
constexpr std::size_t kTextWidth = 24;   // at least, as are the next two
constexpr std::size_t kListWidth = 12;
constexpr std::size_t kNumberWidth = 4;

[[noreturn]] void Refuse(const ScriptStep& step, const std::string& reason) { throw ScriptError(step.text, reason); }

[[noreturn]] void RefusePosition(const ScriptStep& step, std::string_view digits) {
    Refuse(step, "\"" + std::string(digits) + "\" non è una posizione");
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

/// The entries of a list; `key` is the position, or the row's key of a pick list.
struct Entry {
    int key;
    std::string text;
};
using Entries = std::vector<Entry>;

Entries Numbered(const std::vector<std::string>& texts) {
    Entries entries;
    for (const std::string& each : texts) entries.push_back({static_cast<int>(entries.size()), each});
    return entries;
}

void WriteEntries(const Entries& entries, JsonWriter& json) {
    json.Number("rows", static_cast<double>(entries.size())).Key("items").BeginArray();
    for (const Entry& each : entries) json.BeginObject().Number("key", each.key).String("text", each.text).EndObject();
    json.EndArray();
}

int PositionOfText(const Entries& entries, const ScriptStep& step) {
    const auto found = std::find_if(entries.begin(), entries.end(),
                                    [&step](const Entry& each) { return text::EqualNoCase(each.text, step.value); });
    if (found == entries.end()) Refuse(step, "l'elenco non ha la voce \"" + step.value + "\"");
    return static_cast<int>(found - entries.begin());
}

std::string Bracketed(const std::string& inside) {
    std::string drawn = "[";
    return drawn.append(inside).append("]");
}

std::string DrawMarked(bool set, const std::string& caption) { return (set ? "[x] " : "[ ] ") + caption; }

std::string DrawDropDown(const std::string& text) {
    return Bracketed(PadRight(Fit(text, kFieldWidth), kListWidth) + " ▾");
}

/// A kind of which the others say how they differ: without a value, rows or anything to draw.
struct Plain {
    static void WriteValue(const Control& /*control*/, JsonWriter& json) { json.String(""); }
    /// The number of rows, and what stands in them.
    static void WriteRows(const Control& /*control*/, JsonWriter& json) { json.Number("rows", 0); }
    static void Enter(Control& control, const ScriptStep& step) {
        Refuse(step, "il controllo " + control.Name() + " non prende un valore");
    }
    static std::string Draw(const Control& /*control*/) { return {}; }
};

struct Captions : Plain {
    static std::string Draw(const Control& control) { return WithoutMnemonic(control.Caption()); }
};

struct Commands : Plain {
    static std::string Draw(const Button& button) {
        return Bracketed(std::string(1, ' ').append(WithoutMnemonic(button.Caption())).append(" "));
    }
};

struct Texts : Plain {
    static void WriteValue(const TextField& field, JsonWriter& json) { json.String(field.ShownText()); }
    static void Enter(TextField& field, const ScriptStep& step) { field.SetText(step.value); }
    static std::string Draw(const TextField& field) {
        const Lines lines = Wrap(ShownValue(field), std::string::npos - 1);
        return Bracketed(PadRight(Fit(lines.front(), kFieldWidth), kTextWidth) + (lines.size() > 1 ? " …" : ""));
    }
};

struct Numbers : Plain {
    static void WriteValue(const NumberField& field, JsonWriter& json) { json.Number(field.Value()); }
    static void Enter(NumberField& field, const ScriptStep& step) {
        const std::optional<double> value = step.value.empty() ? 0 : text::ParseNumber(step.value);
        if (!value) Refuse(step, "\"" + step.value + "\" non è un numero");
        if (field.SetValue(*value)) return;
        Refuse(step, "il numero deve stare tra " + text::NumberText(field.Minimum()) + " e " +
                         text::NumberText(field.Maximum()) + " con al più " + std::to_string(field.Decimals()) +
                         " decimali");
    }
    static std::string Draw(const NumberField& field) { return Bracketed(PadRight(field.ShownText(), kNumberWidth)); }
};

struct Dates : Plain {
    static void WriteValue(const DateField& field, JsonWriter& json) { json.String(field.ShownText()); }
    static void Enter(DateField& field, const ScriptStep& step) {
        const std::optional<Date> date = text::ParseItalianDate(step.value);
        if (!date && !step.value.empty()) Refuse(step, "\"" + step.value + "\" non è una data gg/mm/aaaa");
        field.SetValue(date);
    }
    static std::string Draw(const DateField& field) {
        return Bracketed(field.Value() ? field.ShownText() : "  /  /    ");
    }
};

struct Checks : Plain {
    static void WriteValue(const CheckBox& box, JsonWriter& json) { json.Number(box.Checked() ? 1 : 0); }
    static void Enter(CheckBox& box, const ScriptStep& step) {
        if (step.value != "0" && step.value != "1") Refuse(step, "una casella vuole 0 oppure 1");
        box.SetChecked(step.value == "1");
    }
    static std::string Draw(const CheckBox& box) { return DrawMarked(box.Checked(), WithoutMnemonic(box.Caption())); }
};

/// Options, and what they share with the lists of fixed texts.
struct Options : Plain {
    static void WriteValue(const ChoiceControl& list, JsonWriter& json) { json.Number(list.Position()); }
    static void WriteRows(const ChoiceControl& list, JsonWriter& json) { WriteEntries(Numbered(list.Items()), json); }
    static void Enter(ChoiceControl& group, const ScriptStep& step) {
        const int count = static_cast<int>(group.Items().size());
        const std::optional<int> marked = MarkedPosition(count, step);
        group.SetPosition(marked ? *marked : Position(step.value, count, step));
    }
    static std::string Draw(const ChoiceControl& group) {
        std::string drawn;
        for (const Entry& each : Numbered(group.Items())) {
            drawn += (drawn.empty() ? "" : "  ") + std::string(each.key == group.Position() ? "(•) " : "( ) ") +
                     WithoutMnemonic(each.text);
        }
        return drawn;
    }
};

struct FixedLists : Options {
    static void Enter(ChoiceControl& list, const ScriptStep& step) {
        const std::optional<int> marked = MarkedPosition(static_cast<int>(list.Items().size()), step);
        list.SetPosition(marked ? *marked : PositionOfText(Numbered(list.Items()), step));
    }
    static std::string Draw(const ChoiceControl& list) { return DrawDropDown(list.ShownText()); }
};

struct PickLists : Plain {
    static Entries Keyed(const PickList& list) {
        Entries entries;
        for (int i = 0; i < list.RowCount(); ++i) entries.push_back({list.KeyAt(i), list.TextAt(i)});
        return entries;
    }
    static void WriteValue(const PickList& list, JsonWriter& json) { json.Number(list.SelectedKey()); }
    static void WriteRows(const PickList& list, JsonWriter& json) { WriteEntries(Keyed(list), json); }
    static void Enter(PickList& list, const ScriptStep& step) {
        if (const std::optional<int> marked = MarkedPosition(list.RowCount(), step)) return list.SelectIndex(*marked);
        const std::optional<std::int32_t> key = WholeNumber(step.value);
        if (!key) return list.SelectIndex(PositionOfText(Keyed(list), step));
        if (!list.SelectKey(*key)) Refuse(step, "l'elenco non ha la chiave " + step.value);
    }
    static std::string Draw(const PickList& list) { return DrawDropDown(list.ShownText()); }
};

struct MultiLists : Plain {
    static void WriteValue(const MultiList& list, JsonWriter& json) {
        json.BeginArray();
        for (const int position : list.Selected()) json.Number(position);
        json.EndArray();
    }
    static void WriteRows(const MultiList& list, JsonWriter& json) { WriteEntries(Numbered(list.Items()), json); }
    static void Enter(MultiList& list, const ScriptStep& step) {
        std::set<int> positions;
        std::string_view rest = step.value == "#-1" ? std::string_view() : std::string_view(step.value);
        while (!rest.empty()) {
            const std::size_t comma = rest.find(',');
            const std::string_view digits = text::Trim(rest.substr(0, comma));
            const int position = Position(digits, static_cast<int>(list.Items().size()), step);
            if (position < 0) RefusePosition(step, digits);
            positions.insert(position);
            if (comma + 1 == rest.size()) Refuse(step, "dopo l'ultima virgola manca una posizione");
            rest.remove_prefix(comma == std::string_view::npos ? rest.size() : comma + 1);
        }
        list.SetSelected(std::move(positions));
    }
    static std::string Draw(const MultiList& list) {
        std::string drawn;
        for (const Entry& each : Numbered(list.Items())) {
            drawn += (drawn.empty() ? "" : "  ") + DrawMarked(list.IsSelected(each.key), each.text);
        }
        return drawn;
    }
};

struct Bars : Plain {
    static void WriteValue(const ProgressBar& bar, JsonWriter& json) { json.Number(bar.Value()); }
    static std::string Draw(const ProgressBar& bar) {
        const auto full = static_cast<std::size_t>(bar.Value() / 5);
        return Bracketed(std::string(full, '#') + std::string(20 - full, '.')) + " " + bar.ShownText() + "%";
    }
};

struct Grids : Plain {
    static void WriteRows(const Grid& grid, JsonWriter& json) {
        const std::vector<GridModel::Column> none;
        const std::vector<GridModel::Column>& columns = grid.Model() ? grid.Model()->Columns() : none;
        json.Number("rows", grid.RowCount()).Key("columns").BeginArray();
        for (const GridModel::Column& column : columns) {
            json.BeginObject().String("name", column.name).String("title", column.title);
            json.Number("width", column.width).Boolean("visible", column.visible).EndObject();
        }
        json.EndArray().Key("cells").BeginArray();
        for (int row = 0; row < grid.RowCount(); ++row) {
            json.BeginArray();
            for (int column = 0; column < static_cast<int>(columns.size()); ++column) {
                json.String(grid.Model()->Cell(row, column));
            }
            json.EndArray();
        }
        json.EndArray().Number("current", grid.CurrentRow() + 1);
    }
};

struct Description {
    ControlKind kind;
    void (*writeValue)(const Control&, JsonWriter&);
    void (*writeRows)(const Control&, JsonWriter&);
    void (*enter)(Control&, const ScriptStep&);
    std::string (*draw)(const Control&);
};

template <class Kind, class Type>
constexpr Description Describe(ControlKind kind) {
    return {kind, [](const Control& control, JsonWriter& json) { Kind::WriteValue(As<Type>(control), json); },
            [](const Control& control, JsonWriter& json) { Kind::WriteRows(As<Type>(control), json); },
            [](Control& control, const ScriptStep& step) { Kind::Enter(As<Type>(control), step); },
            [](const Control& control) { return Kind::Draw(As<Type>(control)); }};
}

constexpr Description kKinds[] = {Describe<Captions, Label>(ControlKind::Label),
                                  Describe<Captions, Frame>(ControlKind::Frame),
                                  Describe<Commands, Button>(ControlKind::Button),
                                  Describe<Texts, TextField>(ControlKind::Text),
                                  Describe<Numbers, NumberField>(ControlKind::Number),
                                  Describe<Dates, DateField>(ControlKind::Date),
                                  Describe<Checks, CheckBox>(ControlKind::CheckBox),
                                  Describe<Options, OptionGroup>(ControlKind::OptionGroup),
                                  Describe<FixedLists, FixedList>(ControlKind::FixedList),
                                  Describe<PickLists, PickList>(ControlKind::PickList),
                                  Describe<MultiLists, MultiList>(ControlKind::MultiList),
                                  Describe<Bars, ProgressBar>(ControlKind::Progress),
                                  Describe<Grids, Grid>(ControlKind::Grid)};

constexpr bool StandInOrder() {
    std::size_t at = 0;
    for (const Description& each : kKinds) {
        if (static_cast<std::size_t>(each.kind) != at++) return false;
    }
    return at == static_cast<std::size_t>(ControlKind::Grid) + 1;  // the last kind
}
static_assert(StandInOrder(), "a description for each kind, in the kinds' order");

const Description& KindOf(const Control& control) { return kKinds[static_cast<std::size_t>(control.Kind())]; }

}  // namespace

void WriteState(const Control& control, JsonWriter& json) {
    const Description& kind = KindOf(control);
    json.String("name", control.Name()).Key("value");
    kind.writeValue(control, json);
    json.String("text", control.ShownText());
    json.Boolean("enabled", control.Owner().IsEnabled(control)).Boolean("visible", control.Owner().IsVisible(control));
    json.String("caption", control.Caption());
    kind.writeRows(control, json);
}

void EnterValue(Control& control, const ScriptStep& step) { KindOf(control).enter(control, step); }

std::string DrawControl(const Control& control) { return KindOf(control).draw(control); }

bool IsSecret(const Control& control) { return control.Kind() == ControlKind::Text && As<TextField>(control).password; }

std::string ShownValue(const Control& control) {
    const std::string text = control.ShownText();
    return IsSecret(control) ? std::string(text::Length(text), '*') : text;
}

}  // namespace vlm::ui
