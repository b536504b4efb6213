#include "database/RowFilter.h"

#include <charconv>

#include "values/ColumnConversion.h"
#include "values/Error.h"
#include "values/Utf8.h"

namespace vlm::data {

namespace {

class FilterReader {
public:
    /// `what` names the text in an error.
    FilterReader(std::string_view filter, std::string_view what)
        : filter_(filter), rest_(text::Trim(filter)), what_(what) {}

    bool AtEnd() const { return rest_.empty(); }

    std::string_view TakeColumn() {
        if (rest_.empty()) Refuse();
        if (rest_.front() == '[') return TakeEnclosed(']');
        return Take(rest_.find_first_of(" =<>,\t"));
    }

    bool Accept(std::string_view word) {
        if (!text::EqualNoCase(text::Left(rest_, word.size()), word)) return false;
        Take(word.size());
        return true;
    }
    void Expect(std::string_view word) {
        if (!Accept(word)) Refuse();
    }

    Comparison TakeComparison() {
        static constexpr std::pair<std::string_view, Comparison> kWords[] = {
            {"=", Comparison::Equal},           {"<>", Comparison::NotEqual}, {"<=", Comparison::LessOrEqual},
            {">=", Comparison::GreaterOrEqual}, {"<", Comparison::Less},      {">", Comparison::Greater},
            {"LIKE", Comparison::Like},
        };
        for (const auto& [word, comparison] : kWords) {
            if (Accept(word)) return comparison;
        }
        Refuse();
    }

    Value TakeLiteral() {
        if (rest_.empty()) Refuse();
        if (rest_.front() == '\'') return TakeText();
        if (rest_.front() == '#') return TakeDate();
        return TakeWord();
    }

    [[noreturn]] void Refuse() const {
        throw Error(std::string(what_) + " '" + std::string(filter_) + "' non è valido.");
    }

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
    std::string_view what_;
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

bool IsWildcard(char c) { return c == '*' || c == '%'; }

bool IsLike(std::string_view content, std::string_view pattern) {
    const bool atEnd = !pattern.empty() && IsWildcard(pattern.back());
    if (atEnd) pattern.remove_suffix(1);
    const bool atStart = atEnd && !pattern.empty() && IsWildcard(pattern.front());
    if (atStart) pattern.remove_prefix(1);
    if (!atEnd) return text::EqualNoCase(content, pattern);
    const std::size_t found = text::FoldCase(content).find(text::FoldCase(pattern));
    return atStart ? found != std::string::npos : found == 0;
}

RowCondition TakeCondition(FilterReader& reader, const Recordset& columns) {
    RowCondition condition;
    condition.ordinal = columns.Ordinal(reader.TakeColumn());
    condition.comparison = reader.TakeComparison();
    const Value literal = reader.TakeLiteral();
    const FieldType type = columns.TypeOf(condition.ordinal);
    if (condition.comparison == Comparison::Like && type != FieldType::Text) reader.Refuse();
    condition.value = LiteralFor(type, literal, columns.FieldName(condition.ordinal));
    return condition;
}

}  // namespace

bool RowCondition::IsMetBy(const Value& cell) const {
    if (IsNull(cell)) return false;
    if (comparison == Comparison::Like) return IsLike(TextOf(cell), TextOf(value));
    const int order = Compare(cell, value);
    switch (comparison) {
        case Comparison::NotEqual:
            return order != 0;
        case Comparison::Less:
            return order < 0;
        case Comparison::LessOrEqual:
            return order <= 0;
        case Comparison::Greater:
            return order > 0;
        case Comparison::GreaterOrEqual:
            return order >= 0;
        default:
            return order == 0;
    }
}

std::vector<RowCondition> ParseRowFilter(std::string_view filter, const Recordset& columns) {
    std::vector<RowCondition> conditions;
    FilterReader reader(filter, "Il filtro");
    while (!reader.AtEnd()) {
        if (!conditions.empty()) reader.Expect("AND");
        conditions.push_back(TakeCondition(reader, columns));
    }
    return conditions;
}

std::vector<SortKey> ParseSortKeys(std::string_view sort, const Recordset& columns) {
    std::vector<SortKey> keys;
    FilterReader reader(sort, "L'ordinamento");
    while (!reader.AtEnd()) {
        if (!keys.empty()) reader.Expect(",");
        const int ordinal = columns.Ordinal(reader.TakeColumn());
        const bool descending = reader.Accept("DESC");
        if (!descending) reader.Accept("ASC");
        keys.push_back({ordinal, descending});
    }
    return keys;
}

}  // namespace vlm::data
