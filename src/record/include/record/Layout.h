#pragma once

#include <array>
#include <stdexcept>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>

#include "record/FieldFormat.h"
#include "values/Number.h"

/// Fixed-width records as tables. A record is a plain struct; a layout is one row for each field of its line, and the
/// line is written, read back, cut into its fields and described from the same rows. The rows are known to the
/// compiler, which writes out every line field by field: nothing is looked up and no pointer followed.
namespace vlm {

/// What reading a line back does with a field.
struct NotReadBack {};
struct AsItStands {
    template <class Member>
    void operator()(Member& member, std::string_view field, const FieldFormat&) const {
        member = field;
    }
};
struct Trimmed {
    template <class Member>
    void operator()(Member& member, std::string_view field, const FieldFormat&) const {
        member = text::Trim(field);
    }
};
struct ReadAsNumber {  // the digits that it starts with, or 0; a field's characters fit its member
    template <class Member>
    void operator()(Member& member, std::string_view field, const FieldFormat&) const {
        member = static_cast<Member>(text::LeadingInteger(field));
    }
};
struct ReadAsAmount {
    void operator()(Currency& member, std::string_view field, const FieldFormat& format) const {
        member = format.ParseAmount(field);
    }
};
inline constexpr NotReadBack kNotReadBack;
inline constexpr AsItStands kAsItStands;
inline constexpr Trimmed kTrimmed;
inline constexpr ReadAsNumber kReadAsNumber;
inline constexpr ReadAsAmount kReadAsAmount;

/// One row of a layout. What stands in the field is a member of the record, or a small function of the record; a
/// function may give a pointer, and then none leaves the field blank. `name` and `note` are for people.
template <class Value, class Back = NotReadBack>
struct Field : FieldPlace {
    Value value;
    Back back;
    const char* name;
    const char* note;

    constexpr Field(int at, int width, FieldRule how, const char* called, Value what, Back readBack,
                    const char* remark = "")
        : FieldPlace{at, width, how}, value(what), back(readBack), name(called), note(remark) {}
    constexpr Field(int at, int width, FieldRule how, const char* called, Value what, const char* remark = "")
        : Field(at, width, how, called, what, Back{}, remark) {}
};
template <class Value>
Field(int, int, FieldRule, const char*, Value, const char*) -> Field<Value>;
template <class Value>
Field(int, int, FieldRule, const char*, Value) -> Field<Value>;

/// Spaces.
constexpr auto Blank(int at, int width) { return Field(at, width, FieldRule::Blank, "spazi", nullptr); }
/// The same characters in every line.
constexpr auto Constant(int at, int width, FieldRule how, const char* written) {
    return Field(at, width, how, written, std::string_view(written), "costante");
}

/// A value that belongs to one kind of line only and elsewhere leaves its field blank; read back it is its member.
/// `Here` tells of a record whether its line is of that kind.
template <class Member, class Here>
struct Only {
    Member member;
    Here here;
    template <class Record>
    constexpr auto operator()(const Record& record) const {
        return here(record) ? &(record.*member) : nullptr;
    }
};
template <class Member, class Here>
Only(Member, Here) -> Only<Member, Here>;

/// A function of the record that stands for a member when the line is read back.
template <class Member, class Function>
struct Derived {
    Member member;
    Function function;
    template <class Record>
    constexpr decltype(auto) operator()(const Record& record) const {
        return function(record);
    }
};
template <class Member, class Function>
Derived(Member, Function) -> Derived<Member, Function>;

/// Does not compile when fields overlap, start before 1, or do not end at the line's length.
template <class... Fields>
struct Layout {
    int length;
    FieldFormat format;
    std::tuple<Fields...> fields;

    constexpr Layout(int characters, const FieldPolicy& policy, Fields... rows)
        : length(characters), format(policy), fields(rows...) {
        int next = 1;
        for (const FieldPlace& row : {static_cast<const FieldPlace&>(rows)...}) {
            if (row.position < next || row.length < 1) throw std::logic_error("fields overlap");
            next = row.position + row.length;
        }
        if (next != length + 1) throw std::logic_error("the last field does not end at the line's length");
    }

    static constexpr std::size_t kCount = sizeof...(Fields);
};

/// A layout of several tuples of rows, one behind the other.
template <class... Parts>
constexpr auto LayoutOf(int characters, const FieldPolicy& policy, const Parts&... parts) {
    return std::apply([&](const auto&... rows) { return Layout(characters, policy, rows...); },
                      std::tuple_cat(parts...));
}

/// Calls `each` with every row of a layout, in order.
template <const auto& kLayout, class Each>
constexpr void ForEachField(Each&& each) {
    [&]<std::size_t... I>(std::index_sequence<I...>) { (each(std::integral_constant<std::size_t, I>{}), ...); }
    (std::make_index_sequence<std::remove_cvref_t<decltype(kLayout)>::kCount>{});
}

/// What a row says of a record.
template <class Row, class Record>
constexpr decltype(auto) ValueOf(const Row& row, const Record& record) {
    if constexpr (std::is_member_object_pointer_v<decltype(row.value)>) {
        return (record.*row.value);
    } else if constexpr (std::is_invocable_v<decltype(row.value), const Record&>) {
        return row.value(record);
    } else {
        return (row.value);
    }
}

/// The member that a row stands for; nullptr for one that stands for none.
template <class Row>
constexpr auto MemberOf(const Row& row) {
    if constexpr (std::is_member_object_pointer_v<decltype(row.value)>) {
        return row.value;
    } else if constexpr (requires { row.value.member; }) {
        return row.value.member;
    } else {
        return nullptr;
    }
}

/// Puts the fields of a layout that stand between two positions into a line.
template <const auto& kLayout, int kFrom = 1, int kTo = kLayout.length, class Record>
void PutFields(FixedLine& line, const Record& record) {
    ForEachField<kLayout>([&](auto index) {
        static constexpr const auto& kRow = std::get<index>(kLayout.fields);
        if constexpr (kRow.rule != FieldRule::Blank && kRow.position >= kFrom && kRow.position <= kTo) {
            decltype(auto) value = ValueOf(kRow, record);
            if constexpr (std::is_pointer_v<std::remove_cvref_t<decltype(value)>>) {
                if (value != nullptr) kLayout.format.Place(line, kRow, *value);
            } else {
                kLayout.format.Place(line, kRow, value);
            }
        }
    });
}

/// Writes a whole line.
template <const auto& kLayout, class Record>
void WriteLine(std::string& out, const Record& record) {
    FixedLine line(out, kLayout.length);
    PutFields<kLayout>(line, record);
}

/// Reads back what the rows say is read back; the rest of the record stays. Short lines give what they have.
template <const auto& kLayout, class Record>
void ParseLine(std::string_view line, Record& record) {
    ForEachField<kLayout>([&](auto index) {
        static constexpr const auto& kRow = std::get<index>(kLayout.fields);
        if constexpr (!std::is_same_v<std::remove_cvref_t<decltype(kRow.back)>, NotReadBack>) {
            const std::string_view field = FieldAt(line, kRow);
            kRow.back(record.*MemberOf(kRow), field, kLayout.format);
        }
    });
}

/// The texts of a line's fields, in order; put again at their places they are the line.
template <const auto& kLayout>
auto CutLine(std::string_view line) {
    std::array<std::string_view, std::remove_cvref_t<decltype(kLayout)>::kCount> fields;
    ForEachField<kLayout>([&](auto index) { fields[index] = FieldAt(line, std::get<index>(kLayout.fields)); });
    return fields;
}

/// Where a member of the record stands in the line, the first time. Does not compile for one that does not.
template <const auto& kLayout, auto kMember>
consteval FieldPlace PlaceOf() {
    FieldPlace found{0, 0, FieldRule::Blank};
    ForEachField<kLayout>([&](auto index) {
        const auto& row = std::get<index>(kLayout.fields);
        if constexpr (std::is_same_v<decltype(MemberOf(row)), std::remove_cvref_t<decltype(kMember)>>) {
            if (found.position == 0 && MemberOf(row) == kMember) found = row;
        }
    });
    if (found.position == 0) throw std::logic_error("not in the layout");
    return found;
}

}  // namespace vlm
