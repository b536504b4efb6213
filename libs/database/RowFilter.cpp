#include "database/RowFilter.h"

#include <charconv>

#include "values/ColumnConversion.h"
#include "values/Error.h"
#include "values/Utf8.h"

namespace vlm::data {

namespace {

class FilterReader {
public:
    explicit FilterReader(std::string_view filter) : filter_(filter), rest_(text::Trim(filter)) {}

    bool AtEnd() const { return rest_.empty(); }

    std::string_view TakeColumn() {
        if (rest_.empty()) Refuse();
        if (rest_.front() == '[') return TakeEnclosed(']');
        return Take(rest_.find_first_of(" =\t"));
    }

    void Expect(std::string_view word) {
        if (!text::EqualNoCase(text::Left(rest_, word.size()), word)) Refuse();
        Take(word.size());
    }

    Value TakeLiteral() {
        if (rest_.empty()) Refuse();
        if (rest_.front() == '\'') return TakeText();
        if (rest_.front() == '#') return TakeDate();
        return TakeWord();
    }

    [[noreturn]] void Refuse() const { throw Error("Il filtro '" + std::string(filter_) + "' non è valido."); }

private:
    std::string_view Take(std::size_t count) {
        const std::string_view taken = rest_.substr(0, count);
        if (taken.empty()) Refuse();
        rest_ = text::TrimLeft(rest_.substr(taken.size()));
        return taken;
    }

    /// What stands between the current character and the next `close`.
    std::string_view TakeEnclosed(char close) {
        const std::size_t end = rest_.find(close, 1);
        if (end == std::string_view::npos) Refuse();
        return Take(end + 1).substr(1, end - 1);
    }

    std::string TakeText() {
        std::string value;
        std::size_t position = 1;
        for (;; ++position) {
            if (position >= rest_.size()) Refuse();
            if (rest_[position] == '\'') {
                if (position + 1 >= rest_.size() || rest_[position + 1] != '\'') break;
                ++position;
            }
            value += rest_[position];
        }
        Take(position + 1);
        return value;
    }

    /// A number in plain form, or a truth value.
    Value TakeWord() {
        const std::string_view word = Take(rest_.find(' '));
        if (text::EqualNoCase(word, "True")) return true;
        if (text::EqualNoCase(word, "False")) return false;
        const char* const end = word.data() + word.size();
        std::int64_t whole = 0;
        if (const auto read = std::from_chars(word.data(), end, whole); read.ec == std::errc() && read.ptr == end) {
            return whole;
        }
        double number = 0;
        const auto read = std::from_chars(word.data(), end, number);
        if (read.ec != std::errc() || read.ptr != end) Refuse();
        return number;
    }

    Value TakeDate() {
        const std::string_view written = text::Trim(TakeEnclosed('#'));
        if (const auto date = ParseIsoDate(written)) return *date;
        int parts[3] = {};
        const char* position = written.data();
        const char* const end = position + written.size();
        for (int index = 0; index < 3; ++index) {
            if (index > 0 && (position == end || *position++ != '/')) Refuse();
            const auto [next, failure] = std::from_chars(position, end, parts[index]);
            if (failure != std::errc()) Refuse();
            position = next;
        }
        const auto date = Date::FromYmd(parts[2], parts[0], parts[1]);
        if (!date || position != end) Refuse();
        return *date;
    }

    std::string_view filter_;
    std::string_view rest_;
};

/// A number keeps its fraction: a whole number column never equals it.
Value LiteralFor(FieldType type, const Value& literal, std::string_view column) {
    switch (type) {
        case FieldType::SmallInt:
        case FieldType::Integer:
        case FieldType::BigInt:
            if (std::get<double>(ConvertTo(FieldType::Double, literal, column)) !=
                static_cast<double>(ColumnInteger(literal, column))) {
                return ConvertTo(FieldType::Double, literal, column);
            }
            return ColumnInteger(literal, column);
        default:
            return ConvertTo(type, literal, column);
    }
}

}  // namespace

bool CellEquals(const Value& cell, const Value& value) { return !IsNull(cell) && Compare(cell, value) == 0; }

std::vector<RowCondition> ParseRowFilter(std::string_view filter, const Recordset& columns) {
    std::vector<RowCondition> conditions;
    FilterReader reader(filter);
    while (!reader.AtEnd()) {
        if (!conditions.empty()) reader.Expect("AND");
        const int ordinal = columns.Ordinal(reader.TakeColumn());
        reader.Expect("=");
        const Value literal = reader.TakeLiteral();
        conditions.push_back({ordinal, LiteralFor(columns.TypeOf(ordinal), literal, columns.FieldName(ordinal))});
    }
    return conditions;
}

}  // namespace vlm::data
