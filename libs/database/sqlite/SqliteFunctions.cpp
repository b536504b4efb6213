#include <algorithm>
#include <cmath>
#include <memory>
#include <optional>
#include <sqlite3.h>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "SqlExpression.h"
#include "SqliteSession.h"
#include "values/Error.h"
#include "values/Utf8.h"

namespace vlm::data {

namespace {

/// A pattern of LIKE as the host's server reads it: `%` any characters, `_` one, `[a-f]` and `[^a-f]` one of a class.
/// Without regard to case, for letters with accents too.
class LikePattern {
public:
    /// `escape` (0 for none) takes the character after it for itself.
    explicit LikePattern(std::string_view pattern, char32_t escape = 0);

    bool Matches(std::string_view value) const noexcept;

private:
    enum class Kind { Character, Any, AnyRun, Class };
    struct Element {
        Kind kind = Kind::Character;
        char32_t character = 0;
        bool negated = false;
        std::vector<std::pair<char32_t, char32_t>> ranges;
    };
    static bool TakeClass(std::string_view& rest, Element& element);
    static bool Accepts(const Element& element, char32_t character) noexcept;

    std::vector<Element> elements_;
};

char32_t TakeFolded(std::string_view& rest) noexcept { return text::ToLower(text::Decode(rest)); }

LikePattern::LikePattern(std::string_view pattern, char32_t escape) {
    while (!pattern.empty()) {
        Element element;
        const bool opensClass = pattern.front() == '[';
        if (opensClass && TakeClass(pattern, element)) {
            elements_.push_back(std::move(element));
            continue;
        }
        char32_t character = text::Decode(pattern);
        if (escape != 0 && character == escape && !pattern.empty()) {
            character = text::Decode(pattern);
        } else if (character == '%') {
            element.kind = Kind::AnyRun;
        } else if (character == '_') {
            element.kind = Kind::Any;
        }
        element.character = text::ToLower(character);
        elements_.push_back(std::move(element));
    }
}

/// False, with nothing taken, when the bracket does not close: it then stands for itself.
bool LikePattern::TakeClass(std::string_view& rest, Element& element) {
    const std::size_t end = rest.find(']', 1);
    if (end == std::string_view::npos) return false;
    std::string_view members = rest.substr(1, end - 1);
    element.kind = Kind::Class;
    element.negated = !members.empty() && members.front() == '^';
    if (element.negated) members.remove_prefix(1);
    while (!members.empty()) {
        const char32_t first = TakeFolded(members);
        char32_t last = first;
        if (members.size() > 1 && members.front() == '-') {
            members.remove_prefix(1);
            last = TakeFolded(members);
        }
        element.ranges.emplace_back(first, last);
    }
    rest.remove_prefix(end + 1);
    return true;
}

bool LikePattern::Accepts(const Element& element, char32_t character) noexcept {
    if (element.kind == Kind::Any) return true;
    if (element.kind == Kind::Character) return element.character == character;
    const bool member = std::any_of(element.ranges.begin(), element.ranges.end(), [character](const auto& range) {
        return character >= range.first && character <= range.second;
    });
    return member != element.negated;
}

/// Where a character does not fit, the last run takes one character more: earlier runs never need to.
bool LikePattern::Matches(std::string_view value) const noexcept {
    std::size_t element = 0;
    std::optional<std::size_t> run;
    std::string_view afterRun;
    while (!value.empty()) {
        if (element < elements_.size() && elements_[element].kind == Kind::AnyRun) {
            run = element++;
            afterRun = value;
            continue;
        }
        std::string_view next = value;
        if (element < elements_.size() && Accepts(elements_[element], TakeFolded(next))) {
            ++element;
            value = next;
            continue;
        }
        if (!run) return false;
        text::Decode(afterRun);
        value = afterRun;
        element = *run + 1;
    }
    while (element < elements_.size() && elements_[element].kind == Kind::AnyRun) ++element;
    return element == elements_.size();
}

std::string_view ViewOf(const void* bytes, int size) {
    return {static_cast<const char*>(bytes), static_cast<std::size_t>(size)};
}

std::string_view TextOf(sqlite3_value* value) {
    const void* const bytes = sqlite3_value_text(value);
    return bytes == nullptr ? std::string_view() : ViewOf(bytes, sqlite3_value_bytes(value));
}

bool IsNull(sqlite3_value* value) { return sqlite3_value_type(value) == SQLITE_NULL; }

int CompareTexts(void*, int leftSize, const void* left, int rightSize, const void* right) {
    return text::CompareNoCase(ViewOf(left, leftSize), ViewOf(right, rightSize));
}

template <double (*Round)(double)>
void RoundNumber(sqlite3_context* context, int, sqlite3_value** arguments) {
    switch (sqlite3_value_numeric_type(arguments[0])) {
        case SQLITE_NULL:
            sqlite3_result_null(context);
            break;
        case SQLITE_INTEGER:
            sqlite3_result_int64(context, sqlite3_value_int64(arguments[0]));
            break;
        default:
            sqlite3_result_double(context, Round(sqlite3_value_double(arguments[0])));
    }
}

double Ceiling(double value) { return std::ceil(value); }
double Floor(double value) { return std::floor(value); }

template <std::string (*Convert)(std::string_view)>
void ConvertText(sqlite3_context* context, int, sqlite3_value** arguments) {
    if (IsNull(arguments[0])) return sqlite3_result_null(context);
    try {
        const std::string converted = Convert(TextOf(arguments[0]));
        sqlite3_result_text64(context, converted.data(), converted.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
    } catch (const std::bad_alloc&) {
        sqlite3_result_error_nomem(context);
    }
}

/// `value LIKE pattern [ESCAPE character]` comes as (pattern, value[, character]). The pattern is read once for all
/// the rows when it is the same for all.
void Like(sqlite3_context* context, int count, sqlite3_value** arguments) {
    if (IsNull(arguments[0]) || IsNull(arguments[1])) return sqlite3_result_null(context);
    try {
        std::string_view escape = count > 2 ? TextOf(arguments[2]) : std::string_view();
        const char32_t escapes = escape.empty() ? 0 : text::Decode(escape);
        const auto* pattern = static_cast<const LikePattern*>(sqlite3_get_auxdata(context, 0));
        if (pattern != nullptr) {
            sqlite3_result_int(context, pattern->Matches(TextOf(arguments[1])) ? 1 : 0);
            return;
        }
        auto read = std::make_unique<LikePattern>(TextOf(arguments[0]), escapes);
        sqlite3_result_int(context, read->Matches(TextOf(arguments[1])) ? 1 : 0);
        sqlite3_set_auxdata(context, 0, read.release(), [](void* kept) { delete static_cast<LikePattern*>(kept); });
    } catch (const std::bad_alloc&) {
        sqlite3_result_error_nomem(context);
    }
}

struct Function {
    const char* name;
    int arguments;
    void (*call)(sqlite3_context*, int, sqlite3_value**);
};

constexpr Function kFunctions[] = {
    {"vlm_ceiling", 1, RoundNumber<Ceiling>},
    {"vlm_floor", 1, RoundNumber<Floor>},
    {"vlm_upper", 1, ConvertText<text::ToUpper>},
    {"vlm_lower", 1, ConvertText<text::ToLower>},
    {"like", 2, Like},
    {"like", 3, Like},
};

}  // namespace

void RegisterFunctions(sqlite3* database) {
    int result = sqlite3_create_collation_v2(database, std::string(kTextCollation).c_str(), SQLITE_UTF8, nullptr,
                                             CompareTexts, nullptr);
    for (const Function& function : kFunctions) {
        if (result != SQLITE_OK) break;
        result = sqlite3_create_function_v2(database, function.name, function.arguments,
                                            SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS, nullptr,
                                            function.call, nullptr, nullptr, nullptr);
    }
    if (result != SQLITE_OK) throw Error(std::string("Errore del database: ") + sqlite3_errmsg(database));
}

}  // namespace vlm::data
