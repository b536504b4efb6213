#include "Dialect.h"

#include <algorithm>

#include "values/Utf8.h"

namespace vlm::host::tds {

namespace {

using data::SqlToken;
using data::SqlTokenKind;

/// Goes through a definition and leaves out what only the clients' dialect has.
class DefinitionWriter {
public:
    explicit DefinitionWriter(const Tokens& statement) : tokens_(statement) {}

    std::string Write() {
        while (At().kind != SqlTokenKind::End) {
            if (!SkipOwner() && !SkipStorage() && !WriteLargeText() && !TakeTop()) WriteToken();
        }
        if (!top_.empty()) text_ += " LIMIT " + top_;
        return std::move(text_);
    }

private:
    const SqlToken& At(std::size_t ahead = 0) const { return tokens_[std::min(at_ + ahead, tokens_.size() - 1)]; }

    void Add(std::string_view text) {
        if (!text_.empty()) text_ += ' ';
        text_ += text;
    }

    void WriteToken() {
        const bool coalesces = At().IsWord("ISNULL") && At(1).IsSymbol("(");
        Add(coalesces ? "IFNULL" : At().source);
        ++at_;
    }

    bool SkipOwner() {
        if (!text::EqualNoCase(At().value, "dbo") || !At(1).IsSymbol(".")) return false;
        at_ += 2;
        return true;
    }

    void SkipParentheses() {
        int depth = 0;
        do {
            if (At().IsSymbol("(")) ++depth;
            if (At().IsSymbol(")")) --depth;
            ++at_;
        } while (depth > 0 && At().kind != SqlTokenKind::End);
    }

    /// How rows are kept is the engine's own business.
    bool SkipStorage() {
        const bool primary = At().IsWord("ON") && text::EqualNoCase(At(1).value, "PRIMARY");
        const bool listed = At().IsAnyWord({"INCLUDE", "IDENTITY", "WITH"}) && At(1).IsSymbol("(");
        const bool word = At().IsAnyWord({"CLUSTERED", "NONCLUSTERED", "IDENTITY"});
        if (!primary && !listed && !word) return false;
        at_ += primary ? 2 : 1;
        if (listed) SkipParentheses();
        return true;
    }

    /// "VARCHAR(MAX)"
    bool WriteLargeText() {
        const SqlToken& type = At();
        const bool text = text::EqualNoCase(type.value, "VARCHAR") || text::EqualNoCase(type.value, "NVARCHAR");
        if (!text || !At(1).IsSymbol("(") || !At(2).IsWord("MAX")) return false;
        Add(text::EqualNoCase(type.value, "NVARCHAR") ? "NTEXT" : "TEXT");
        at_ += 4;
        return true;
    }

    /// "SELECT TOP (n)" of a view; the limit stands at its end.
    bool TakeTop() {
        if (!At().IsWord("TOP")) return false;
        const bool enclosed = At(1).IsSymbol("(");
        top_ = At(enclosed ? 2 : 1).source;
        at_ += enclosed ? 4 : 2;
        if (!At().IsWord("PERCENT")) return true;
        if (top_ != "100") data::RefuseSql("PERCENT");
        top_.clear();
        ++at_;
        return true;
    }

    const Tokens& tokens_;
    std::size_t at_ = 0;
    std::string text_, top_;
};

/// The names of the parameters that stand before AS.
std::vector<std::string> TakeParameters(data::SqlCursor& cursor, const Tokens& tokens) {
    std::vector<std::string> names;
    for (; !cursor.IsWord("AS"); cursor.Take()) {
        if (cursor.AtEnd()) cursor.Refuse();
        const std::string_view name = VariableAt(tokens, cursor.Position());
        if (!name.empty()) names.push_back(text::FoldCase(name));
    }
    cursor.ExpectWord("AS");
    return names;
}

std::string BodyOf(const Tokens& statement, const std::vector<std::string>& parameters) {
    Tokens body;
    for (std::size_t at = 0; at < statement.size(); ++at) {
        const std::string_view name = VariableAt(statement, at);
        if (name.empty()) {
            body.push_back(statement[at]);
            continue;
        }
        const auto known = std::find(parameters.begin(), parameters.end(), text::FoldCase(name));
        if (known == parameters.end()) data::RefuseSql("@" + std::string(name));
        const std::string number = std::to_string(known - parameters.begin() + 1);
        body.push_back({SqlTokenKind::Parameter, "?" + number, number, false});
        ++at;
    }
    return Joined(body);
}

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

std::string EngineDefinition(const Tokens& statement) { return DefinitionWriter(statement).Write(); }

ProcedureDefinition ProcedureDefinition::Parse(const Tokens& statement) {
    data::SqlCursor cursor(statement);
    ProcedureDefinition definition;
    cursor.ExpectWord("CREATE");
    if (cursor.AcceptWord("OR")) {
        cursor.ExpectWord("ALTER");
        definition.replaces = true;
    }
    if (!cursor.AcceptWord("PROCEDURE")) cursor.ExpectWord("PROC");
    do {
        if (cursor.Peek().kind != SqlTokenKind::Name) cursor.Refuse();
        definition.name = cursor.Take().value;  // the last one of "dbo.Name"
    } while (cursor.AcceptSymbol("."));
    const std::vector<std::string> parameters = TakeParameters(cursor, statement);
    Tokens rest = Part(statement, cursor.Position(), statement.size() - 1);
    if (rest.front().IsWord("BEGIN") && rest.size() > 2) {
        const bool closed = rest[rest.size() - 2].IsSymbol(";");
        const std::size_t end = rest.size() - (closed ? 3 : 2);
        if (!rest[end].IsWord("END")) data::RefuseSql("BEGIN");
        rest = Part(rest, 1, end);
    }
    for (const Tokens& each : SplitBatch(rest)) {
        if (!each.front().IsWord("SET")) definition.bodies.push_back(BodyOf(each, parameters));
    }
    if (definition.bodies.empty()) data::RefuseSql("AS");
    return definition;
}

Tokens WithSystemValues(const Tokens& statement, const ServedFolder& folder, const CurrentDatabase& database) {
    return Replacement(statement, folder, database).Write();
}

}  // namespace vlm::host::tds
