#include "SqliteFunctions.h"

#include <cmath>
#include <sqlite3.h>
#include <string>

#include "LikePattern.h"
#include "SqlExpression.h"
#include "values/Error.h"
#include "values/Utf8.h"

namespace vlm::data {

namespace {

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
