#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <tuple>
#include <type_traits>
#include <utility>

#include "database/Recordset.h"
#include "record/FixedText.h"
#include "values/DateText.h"
#include "values/Number.h"

/// What a record reads: one row for each column, in the order in which the columns are looked up and read.
namespace vlm {

/// How a cell becomes a member's value. By the member's type unless the table says otherwise: nulls are "" and 0, what
/// cannot be read as the member's type throws an error that names the column.
struct ByType {
    template <std::size_t Width>
    void operator()(FixedText<Width>& member, const data::Recordset& rows, int at) const {
        member = rows.TextOf(at);
    }
    void operator()(std::string& member, const data::Recordset& rows, int at) const { member = rows.TextOf(at); }
    void operator()(std::int16_t& member, const data::Recordset& rows, int at) const { member = rows.Int16Of(at); }
    void operator()(std::int32_t& member, const data::Recordset& rows, int at) const { member = rows.Int32Of(at); }
    void operator()(double& member, const data::Recordset& rows, int at) const { member = rows.NumberOf(at); }
    void operator()(Currency& member, const data::Recordset& rows, int at) const { member = rows.AmountOf(at); }
    void operator()(bool& member, const data::Recordset& rows, int at) const { member = rows.NumberOf(at) != 0; }
};

/// "ddmmyyyy"; "" for no date.
inline constexpr auto kDateText = [](auto& member, const data::Recordset& rows, int at) {
    const std::optional<Date::Civil> date = rows.CivilOf(at);
    member = date ? text::DdMmYyyy(*date) : std::string{};
};
/// A key or a number of a document: text that is no whole number throws.
inline constexpr auto kKey = [](std::int32_t& member, const data::Recordset& rows, int at) {
    member = text::ToInt32(static_cast<double>(rows.IntegerOf(at)), rows.FieldName(at));
};
/// Added to what an earlier column gave.
inline constexpr auto kAdded = [](Currency& member, const data::Recordset& rows, int at) {
    member += rows.AmountOf(at);
};

/// One row: the column `name` goes into `member`, by `rule(member, rows, ordinal)`; what is odd in one record is a rule
/// of its own, `rule(record, rows, ordinal)`.
template <class Member, class Rule = ByType>
struct Column {
    const char* name;
    Member member;
    Rule rule{};

    template <class Record>
    void Read(Record& record, const data::Recordset& rows, int at) const {
        if constexpr (std::is_invocable_v<const Rule&, decltype(record.*member), const data::Recordset&, int>) {
            rule(record.*member, rows, at);
        } else {
            rule(record, rows, at);
        }
    }
};
template <class Member, class Rule>
Column(const char*, Member, Rule) -> Column<Member, Rule>;
template <class Member>
Column(const char*, Member) -> Column<Member>;

/// Calls `each` with every row of a table of columns, in order.
template <const auto& kColumns, class Each>
void ForEachColumn(Each&& each) {
    [&]<std::size_t... I>(std::index_sequence<I...>) { (each(std::integral_constant<std::size_t, I>{}), ...); }
    (std::make_index_sequence<std::tuple_size_v<std::remove_cvref_t<decltype(kColumns)>>>{});
}

/// The columns of a table found in a row set. Finding throws an error that names the first one missing.
template <const auto& kColumns>
class BoundColumns {
public:
    explicit BoundColumns(const data::Recordset& rows) {
        ForEachColumn<kColumns>([&](auto index) { at_[index] = rows.Ordinal(std::get<index>(kColumns).name); });
    }
    /// Takes every column of the current row into the record.
    template <class Record>
    void Read(Record& record, const data::Recordset& rows) const {
        ForEachColumn<kColumns>([&](auto index) { std::get<index>(kColumns).Read(record, rows, at_[index]); });
    }

private:
    std::array<int, std::tuple_size_v<std::remove_cvref_t<decltype(kColumns)>>> at_{};
};

/// Finds and reads one column after the other, for a row set that may change between two rows.
template <const auto& kColumns, class Record>
void FindAndRead(Record& record, const data::Recordset& rows) {
    ForEachColumn<kColumns>([&](auto index) {
        const auto& column = std::get<index>(kColumns);
        column.Read(record, rows, rows.Ordinal(column.name));
    });
}

}  // namespace vlm
