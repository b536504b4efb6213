#include "SystemValues.h"

#include <algorithm>

#include "values/Utf8.h"

namespace vlm::host::tds {

namespace {

using data::SqlToken;
using data::SqlTokenKind;

constexpr const char* kVersion = "Microsoft SQL Server 2019 (asltds)";

SqlToken Number(std::size_t value) { return {SqlTokenKind::Number, std::to_string(value), std::to_string(value)}; }
SqlToken Text(const std::string& value) { return {SqlTokenKind::Text, data::SqlTextLiteral(value), value}; }
SqlToken Null() { return {SqlTokenKind::Name, "NULL", "NULL"}; }

class Replacement {
public:
    Replacement(const Tokens& statement, const ServedFolder& folder, const CurrentDatabase& database)
        : tokens_(statement), folder_(folder), database_(database) {}

    Tokens Write() {
        while (at_ < tokens_.size()) {
            if (!TakeVariable() && !TakeFunction() && !TakeDatabases()) replaced_.push_back(tokens_[at_++]);
        }
        return std::move(replaced_);
    }

private:
    const SqlToken& At(std::size_t ahead) const { return tokens_[std::min(at_ + ahead, tokens_.size() - 1)]; }

    bool Replace(std::size_t count, SqlToken token) {
        at_ += count;
        replaced_.push_back(std::move(token));
        return true;
    }

    bool TakeVariable() {
        if (!At(0).IsSymbol("@") || !At(1).IsSymbol("@")) return false;
        if (At(2).IsWord("TRANCOUNT")) return Replace(3, Number(database_.TransactionCount()));
        if (At(2).IsWord("SPID")) return Replace(3, Number(51));
        if (At(2).IsWord("VERSION")) return Replace(3, Text(kVersion));
        data::RefuseSql("@@" + At(2).source);
    }

    /// NAME() or NAME('argument'[, 'kind'])
    bool TakeFunction() {
        if (!At(0).IsAnyWord({"DB_ID", "DB_NAME", "OBJECT_ID"}) || !At(1).IsSymbol("(")) return false;
        std::size_t after = 2;
        const std::string argument = At(2).kind == SqlTokenKind::Text ? At(2).value : std::string();
        while (!At(after).IsSymbol(")") && At(after).kind != SqlTokenKind::End) ++after;
        const std::size_t count = after + 1;
        if (At(0).IsWord("DB_NAME")) return Replace(count, Text(database_.Name()));
        if (At(0).IsWord("OBJECT_ID")) return Replace(count, HasObject(argument) ? Number(1) : Null());
        return Replace(count, DatabaseNumber(argument.empty() ? database_.Name() : argument));
    }

    SqlToken DatabaseNumber(const std::string& name) const {
        const std::vector<std::string> names = folder_.Names();
        const auto known = std::find(names.begin(), names.end(), folder_.Find(name));
        return known == names.end() ? Null() : Number(static_cast<std::size_t>(known - names.begin()) + 1);
    }

    bool HasObject(const std::string& name) const {
        const std::size_t owner = name.rfind('.');
        const std::string object = owner == std::string::npos ? name : name.substr(owner + 1);
        const Tokens bare = data::Tokenize(object);  // without brackets
        const std::string sql =
            "WITH o AS (SELECT 1 AS n FROM sqlite_master WHERE name = " + data::SqlTextLiteral(bare.front().value) +
            " COLLATE NOCASE) SELECT n FROM o";
        return !database_.Connection().Open(sql)->AtEnd();
    }

    /// A query that gives the names, in the place of the table.
    bool TakeDatabases() {
        if (!At(0).IsWord("sys") || !At(1).IsSymbol(".") || !At(2).IsWord("databases")) return false;
        std::string query;
        std::size_t number = 0;
        for (const std::string& name : folder_.Names()) {
            query += (query.empty() ? "(SELECT " : " UNION ALL SELECT ") + data::SqlTextLiteral(name) + " AS name, " +
                     std::to_string(++number) + " AS database_id";
        }
        Tokens tokens = data::Tokenize(query + ") AS databases");
        at_ += 3;
        const bool aliased = At(0).IsWord("AS") || (At(0).kind == SqlTokenKind::Name &&
                                                    !At(0).IsAnyWord({"WHERE", "ORDER", "GROUP", "UNION"}));
        tokens.resize(tokens.size() - (aliased ? 3 : 1));
        replaced_.insert(replaced_.end(), tokens.begin(), tokens.end());
        return true;
    }

    const Tokens& tokens_;
    const ServedFolder& folder_;
    const CurrentDatabase& database_;
    std::size_t at_ = 0;
    Tokens replaced_;
};

}  // namespace

Tokens WithSystemValues(const Tokens& statement, const ServedFolder& folder, const CurrentDatabase& database) {
    return Replacement(statement, folder, database).Write();
}

}  // namespace vlm::host::tds
