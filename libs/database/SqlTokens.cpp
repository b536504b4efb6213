#include "database/SqlTokens.h"

#include <algorithm>
#include <array>

#include "values/Error.h"

namespace vlm::data {

namespace {

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

bool IsNameStart(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || c == '#' ||
           static_cast<unsigned char>(c) >= 0x80;
}

bool IsNamePart(char c) { return IsNameStart(c) || IsDigit(c) || c == '$' || c == '@'; }

bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n' || c == '\f'; }

char Upper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

class Scanner {
public:
    explicit Scanner(std::string_view sql) : sql_(sql) {}

    std::vector<SqlToken> Scan() {
        while (SkipBlanks()) ScanToken();
        tokens_.push_back({});
        return std::move(tokens_);
    }

private:
    char At(std::size_t ahead = 0) const { return position_ + ahead < sql_.size() ? sql_[position_ + ahead] : '\0'; }

    /// False at the end of the statement.
    bool SkipBlanks() {
        while (position_ < sql_.size()) {
            if (IsBlank(At())) {
                ++position_;
            } else if (At() == '-' && At(1) == '-') {
                position_ = std::min(sql_.find('\n', position_), sql_.size());
            } else if (At() == '/' && At(1) == '*') {
                const std::size_t end = sql_.find("*/", position_ + 2);
                if (end == std::string_view::npos) throw Error("L'istruzione SQL ha un commento non chiuso.");
                position_ = end + 2;
            } else {
                return true;
            }
        }
        return false;
    }

    void ScanToken() {
        const char c = At();
        if (c == '\'') {
            ScanEnclosed(SqlTokenKind::Text, '\'', 1);
        } else if ((c == 'N' || c == 'n') && At(1) == '\'') {  // a literal in wide characters
            ++position_;
            ScanEnclosed(SqlTokenKind::Text, '\'', 1);
        } else if (c == '[') {
            ScanEnclosed(SqlTokenKind::Name, ']', 1);
        } else if (c == '"') {
            ScanEnclosed(SqlTokenKind::Name, '"', 1);
        } else if (IsNameStart(c)) {
            ScanName();
        } else if (IsDigit(c) || (c == '.' && IsDigit(At(1)))) {
            ScanNumber();
        } else if (c == '?') {
            ScanParameter();
        } else {
            ScanSymbol();
        }
    }

    void Add(SqlTokenKind kind, std::size_t start, std::string value, bool quoted = false) {
        tokens_.push_back({kind, std::string(sql_.substr(start, position_ - start)), std::move(value), quoted, start});
    }

    void ScanEnclosed(SqlTokenKind kind, char close, std::size_t opening) {
        const std::size_t start = position_;
        std::string value;
        for (position_ += opening;; ++position_) {
            if (position_ >= sql_.size()) {
                throw Error("L'istruzione SQL ha un testo non chiuso: " + std::string(sql_.substr(start, 40)));
            }
            if (At() == close && At(1) != close) break;
            if (At() == close) ++position_;
            value += At();
        }
        ++position_;
        Add(kind, start, std::move(value), kind == SqlTokenKind::Name);
    }

    void ScanName() {
        const std::size_t start = position_;
        while (IsNamePart(At())) ++position_;
        Add(SqlTokenKind::Name, start, std::string(sql_.substr(start, position_ - start)));
    }

    void ScanNumber() {
        const std::size_t start = position_;
        while (IsDigit(At())) ++position_;
        if (At() == '.' && At(1) != '.') {
            ++position_;
            while (IsDigit(At())) ++position_;
        }
        const bool signedExponent = (At(1) == '+' || At(1) == '-') && IsDigit(At(2));
        if ((At() == 'e' || At() == 'E') && (IsDigit(At(1)) || signedExponent)) {
            position_ += 2;
            while (IsDigit(At())) ++position_;
        }
        Add(SqlTokenKind::Number, start, std::string(sql_.substr(start, position_ - start)));
    }

    void ScanParameter() {
        const std::size_t start = position_++;
        while (IsDigit(At())) ++position_;
        Add(SqlTokenKind::Parameter, start, std::string(sql_.substr(start + 1, position_ - start - 1)));
    }

    void ScanSymbol() {
        static constexpr std::array<std::string_view, 7> kPairs = {"<>", "<=", ">=", "!=", "||", "<<", ">>"};
        const std::size_t start = position_;
        const bool pair = std::find(kPairs.begin(), kPairs.end(), sql_.substr(start, 2)) != kPairs.end();
        position_ += pair ? 2 : 1;
        Add(SqlTokenKind::Symbol, start, {});
    }

    std::string_view sql_;
    std::size_t position_ = 0;
    std::vector<SqlToken> tokens_;
};

std::string Enclosed(std::string_view value, char quote) {
    std::string enclosed(1, quote);
    for (const char c : value) {
        enclosed += c;
        if (c == quote) enclosed += c;
    }
    return enclosed + quote;
}

}  // namespace

bool SqlToken::IsWord(std::string_view word) const {
    return kind == SqlTokenKind::Name && !quoted &&
           std::equal(value.begin(), value.end(), word.begin(), word.end(),
                      [](char left, char right) { return Upper(left) == Upper(right); });
}

bool SqlToken::IsAnyWord(std::initializer_list<std::string_view> words) const {
    return std::any_of(words.begin(), words.end(), [this](std::string_view word) { return IsWord(word); });
}

std::vector<SqlToken> Tokenize(std::string_view sql) { return Scanner(sql).Scan(); }

std::string SqlTextLiteral(std::string_view value) { return Enclosed(value, '\''); }

std::string SqlQuotedName(std::string_view name) { return Enclosed(name, '"'); }

const SqlToken& SqlCursor::Peek(std::size_t ahead) const {
    return tokens_[std::min(position_ + ahead, tokens_.size() - 1)];
}

const SqlToken& SqlCursor::Take() {
    const SqlToken& token = Peek();
    if (position_ + 1 < tokens_.size()) ++position_;
    return token;
}

bool SqlCursor::AcceptWord(std::string_view word) {
    if (!IsWord(word)) return false;
    Take();
    return true;
}

bool SqlCursor::AcceptSymbol(std::string_view symbol) {
    if (!IsSymbol(symbol)) return false;
    Take();
    return true;
}

void SqlCursor::ExpectWord(std::string_view word) {
    if (!AcceptWord(word)) Refuse();
}

void SqlCursor::ExpectSymbol(std::string_view symbol) {
    if (!AcceptSymbol(symbol)) Refuse();
}

void SqlCursor::Refuse() const {
    if (AtEnd()) throw Error("Istruzione SQL incompleta.");
    RefuseSql(Peek().source);
}

void RefuseSql(std::string_view what) { throw Error("Istruzione SQL non riconosciuta: " + std::string(what)); }

}  // namespace vlm::data
