#include "Statements.h"

#include <algorithm>

#include "values/Error.h"

namespace vlm::host::tds {

namespace {

using data::SqlToken;
using data::SqlTokenKind;

/// How many statements may hold one another, so that no batch can exhaust the stack.
constexpr int kDeepest = 30;

void CheckDepth(int depth) {
    if (depth > kDeepest) throw Error("Istruzione SQL troppo annidata.");
}

bool BeginsTransaction(const SqlToken& after) { return after.IsAnyWord({"TRAN", "TRANSACTION"}); }

class Splitter {
public:
    explicit Splitter(const Tokens& batch) : batch_(batch) {}

    std::vector<Tokens> Split() {
        std::vector<Tokens> statements;
        for (std::size_t at = 0; !IsEnd(at);) {
            if (batch_[at].IsSymbol(";")) {
                ++at;
                continue;
            }
            const std::size_t end = EndOf(at);
            statements.push_back(Part(batch_, at, end));
            at = end;
        }
        return statements;
    }

private:
    const SqlToken& At(std::size_t at) const { return batch_[std::min(at, batch_.size() - 1)]; }
    bool IsEnd(std::size_t at) const { return At(at).kind == SqlTokenKind::End; }

    std::size_t EndOf(std::size_t start, int depth = 0) const {
        CheckDepth(depth);
        if (IsEnd(start)) return start;
        const SqlToken& first = At(start);
        if (first.IsWord("IF")) return EndOfIf(start, depth + 1);
        if (first.IsWord("BEGIN") && !BeginsTransaction(At(start + 1))) return EndOfBlock(start);
        if (first.IsWord("CREATE") && TakesTheRest(start)) return batch_.size() - 1;
        return EndOfPlain(start);
    }

    bool TakesTheRest(std::size_t start) const {
        std::size_t at = start + 1;
        if (At(at).IsWord("OR")) at += 2;
        return At(at).IsAnyWord({"VIEW", "PROCEDURE", "PROC"});
    }

    std::size_t EndOfIf(std::size_t start, int depth) const {
        std::size_t end = EndOf(EndOfPlain(start), depth);
        if (At(end).IsSymbol(";") && At(end + 1).IsWord("ELSE")) ++end;
        return At(end).IsWord("ELSE") ? EndOf(end + 1, depth) : end;
    }

    std::size_t EndOfBlock(std::size_t start) const {
        int depth = 0;
        for (std::size_t at = start; !IsEnd(at); ++at) {
            const bool opens = At(at).IsWord("BEGIN") && !BeginsTransaction(At(at + 1));
            if (opens || At(at).IsWord("CASE")) CheckDepth(++depth);
            if (At(at).IsWord("END") && --depth == 0) return at + 1;
        }
        data::RefuseSql("BEGIN");
    }

    /// The first token after `start` that begins another statement or parts this one from it.
    std::size_t EndOfPlain(std::size_t start) const {
        int depth = 0, cases = 0;
        bool hasSource = !At(start).IsWord("INSERT");
        std::size_t at = start + 1;
        for (; !IsEnd(at); ++at) {
            const SqlToken& token = At(at);
            if (token.IsSymbol("(")) ++depth;
            if (token.IsSymbol(")")) --depth;
            if (depth > 0) continue;
            if (token.IsSymbol(";")) break;
            if (token.IsWord("CASE")) ++cases;
            if (token.IsWord("END")) --cases;
            if (token.IsWord("ELSE") && cases == 0) break;
            if (token.IsWord("VALUES")) hasSource = true;
            if (!BeginsStatement(token) || Continues(start, at)) continue;
            if (hasSource) break;
            hasSource = true;
        }
        return at;
    }

    /// Words that begin a statement and stand inside others too.
    bool Continues(std::size_t start, std::size_t at) const {
        const SqlToken& before = At(at - 1);
        if (At(at).IsWord("SELECT")) return before.IsAnyWord({"UNION", "ALL", "EXCEPT", "INTERSECT"});
        if (At(at).IsWord("SET")) return At(start).IsAnyWord({"UPDATE", "ALTER"});
        if (At(at).IsWord("ROLLBACK")) return before.IsWord("WITH");
        if (At(at).IsWord("IF")) return At(start).IsWord("DROP");
        return false;
    }

    const Tokens& batch_;
};

}  // namespace

bool BeginsStatement(const SqlToken& token) {
    return token.IsAnyWord({"SELECT",  "INSERT",   "UPDATE", "DELETE", "SET",    "USE",      "BEGIN",
                            "COMMIT",  "ROLLBACK", "IF",     "CREATE", "DROP",   "ALTER",    "EXEC",
                            "EXECUTE", "DECLARE",  "PRINT",  "WHILE",  "RETURN", "TRUNCATE", "SAVE"});
}

std::vector<Tokens> SplitBatch(const Tokens& batch) { return Splitter(batch).Split(); }

Tokens Part(const Tokens& tokens, std::size_t first, std::size_t last) {
    const auto begin = tokens.begin();
    Tokens part(begin + static_cast<std::ptrdiff_t>(first), begin + static_cast<std::ptrdiff_t>(last));
    part.emplace_back();
    return part;
}

std::string Joined(const Tokens& tokens) {
    std::string text;
    for (const SqlToken& token : tokens) {
        if (!text.empty() && token.kind != SqlTokenKind::End) text += ' ';
        text += token.source;
    }
    return text;
}

std::string_view VariableAt(const Tokens& tokens, std::size_t at) {
    const bool variable =
        at + 1 < tokens.size() && tokens[at].IsSymbol("@") && tokens[at + 1].kind == SqlTokenKind::Name;
    return variable ? std::string_view(tokens[at + 1].value) : std::string_view();
}

}  // namespace vlm::host::tds
