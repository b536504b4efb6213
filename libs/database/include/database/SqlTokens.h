#pragma once

#include <cstddef>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace vlm::data {

enum class SqlTokenKind { Name, Text, Number, Parameter, Symbol, End };

struct SqlToken {
    SqlTokenKind kind = SqlTokenKind::End;
    std::string source;     // as it stands in the statement
    std::string value;      // a name without its brackets, a literal's content, a parameter's digits
    bool quoted = false;    // a name in brackets or quotes, which is never a keyword
    std::size_t start = 0;  // where it stands, in bytes

    bool IsWord(std::string_view word) const;
    bool IsAnyWord(std::initializer_list<std::string_view> words) const;
    bool IsSymbol(std::string_view symbol) const { return kind == SqlTokenKind::Symbol && source == symbol; }
};

/// The tokens of a statement, closed by one of kind End. Comments are dropped. Throws Error for a literal or a
/// bracketed name that does not end.
std::vector<SqlToken> Tokenize(std::string_view sql);

/// The statement's text as a literal: quotes doubled.
std::string SqlTextLiteral(std::string_view value);
/// A name that the engine takes as it is.
std::string SqlQuotedName(std::string_view name);

/// A place in the tokens of one statement.
class SqlCursor {
public:
    explicit SqlCursor(std::vector<SqlToken> tokens) : tokens_(std::move(tokens)) {}

    const SqlToken& Peek(std::size_t ahead = 0) const;
    const SqlToken& Take();
    bool IsWord(std::string_view word) const { return Peek().IsWord(word); }
    bool IsSymbol(std::string_view symbol) const { return Peek().IsSymbol(symbol); }
    bool AcceptWord(std::string_view word);
    bool AcceptSymbol(std::string_view symbol);
    void ExpectWord(std::string_view word);
    void ExpectSymbol(std::string_view symbol);
    bool AtEnd() const { return Peek().kind == SqlTokenKind::End; }

    std::size_t Position() const { return position_; }
    void Seek(std::size_t position) { position_ = position; }
    /// Moves to the next token for which `stop` holds, past whole parentheses; a closing one and the end always stop.
    template <typename Predicate>
    void SkipTo(Predicate stop) {
        for (int depth = 0; !AtEnd(); Take()) {
            if (IsSymbol("(")) {
                ++depth;
            } else if (IsSymbol(")")) {
                if (depth-- == 0) return;
            } else if (depth == 0 && (IsSymbol(";") || stop())) {
                return;
            }
        }
    }

    /// Throws Error naming the current token.
    [[noreturn]] void Refuse() const;

private:
    std::vector<SqlToken> tokens_;
    std::size_t position_ = 0;
};

/// "Istruzione SQL non riconosciuta: CONVERT"
[[noreturn]] void RefuseSql(std::string_view what);

}  // namespace vlm::data
