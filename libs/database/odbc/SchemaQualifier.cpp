#include "SchemaQualifier.h"

#include "database/SqlTokens.h"

namespace vlm::data::odbc {

namespace {

constexpr std::string_view kOwner = "dbo";

/// Whether the tokens from `at` on are `name..name`.
bool LacksSchema(const std::vector<SqlToken>& tokens, std::size_t at) {
    return at + 3 < tokens.size() && tokens[at].kind == SqlTokenKind::Name && tokens[at + 1].IsSymbol(".") &&
           tokens[at + 2].IsSymbol(".") && tokens[at + 3].kind == SqlTokenKind::Name;
}

}  // namespace

std::string WithSchema(std::string_view sql) {
    const std::vector<SqlToken> tokens = Tokenize(sql);
    std::string qualified;
    std::size_t copied = 0;
    for (std::size_t at = 0; at < tokens.size(); ++at) {
        if (!LacksSchema(tokens, at)) continue;
        const std::size_t secondDot = tokens[at + 2].start;
        qualified.append(sql.substr(copied, secondDot - copied)).append(kOwner);
        copied = secondDot;
    }
    return qualified.append(sql.substr(copied));
}

}  // namespace vlm::data::odbc
