#include "odbc/OdbcText.h"

#include <algorithm>

#include "database/SqlTokens.h"
#include "values/Error.h"
#include "values/Utf8.h"

namespace vlm::data::odbc {

namespace {

constexpr std::string_view kSecretKeys[] = {"PWD", "Password"};

/// Takes a value in braces off `rest`, with what stands behind it up to the next ";".
std::string TakeBraced(std::string_view& rest, const std::string& key) {
    std::string value;
    for (std::size_t at = 1; at < rest.size(); ++at) {
        if (rest[at] != '}') {
            value += rest[at];
        } else if (at + 1 < rest.size() && rest[at + 1] == '}') {
            value += rest[at++];
        } else {
            rest = text::TrimLeft(rest.substr(at + 1));
            if (!rest.empty() && rest.front() != ';') break;
            return value;
        }
    }
    throw Error("Il testo di connessione ODBC ha parentesi graffe non chiuse nel valore di " + key + ".");
}

std::string TakeValue(std::string_view& rest, const std::string& key) {
    rest = text::TrimLeft(rest);
    if (!rest.empty() && rest.front() == '{') return TakeBraced(rest, key);
    const std::size_t end = std::min(rest.find(';'), rest.size());
    std::string value(text::TrimRight(rest.substr(0, end)));
    rest.remove_prefix(end);
    return value;
}

/// In braces only where the value could not stand without: not every driver takes them off.
std::string Enclosed(std::string_view value) {
    if (!value.starts_with('{') && value.find(';') == std::string_view::npos && text::Trim(value) == value) {
        return std::string(value);
    }
    std::string enclosed = "{";
    for (const char c : value) enclosed.append(c == '}' ? 2 : 1, c);
    return enclosed + "}";
}

constexpr std::string_view kOwner = "dbo";

/// Whether the tokens from `at` on are `name..name`.
bool LacksSchema(const std::vector<SqlToken>& tokens, std::size_t at) {
    return at + 3 < tokens.size() && tokens[at].kind == SqlTokenKind::Name && tokens[at + 1].IsSymbol(".") &&
           tokens[at + 2].IsSymbol(".") && tokens[at + 3].kind == SqlTokenKind::Name;
}

}  // namespace

OdbcText::OdbcText(std::string_view text) {
    std::string_view rest = text;
    while (!(rest = text::Trim(rest)).empty()) {
        if (rest.front() == ';') {
            rest.remove_prefix(1);
            continue;
        }
        const std::size_t equals = rest.find('=');
        if (equals == std::string_view::npos || equals > rest.find(';')) {
            throw Error("Il testo di connessione ODBC non è valido: si aspetta CHIAVE=VALORE;CHIAVE=VALORE.");
        }
        const std::string key(text::Trim(rest.substr(0, equals)));
        rest.remove_prefix(equals + 1);
        const std::string_view before = rest;
        std::string value = TakeValue(rest, key);
        const std::string_view source = before.substr(0, before.size() - rest.size());
        entries_.push_back({key, std::move(value), std::string(text::Trim(source))});
    }
}

std::string OdbcText::ValueOf(std::string_view key) const {
    for (const Entry& each : entries_) {
        if (text::EqualNoCase(each.key, key)) return each.value;
    }
    return {};
}

void OdbcText::Set(std::string_view key, std::string_view value) {
    Take(key);
    entries_.push_back({std::string(key), std::string(value), Enclosed(value)});
}

std::string OdbcText::Take(std::string_view key) {
    std::string value = ValueOf(key);
    std::erase_if(entries_, [key](const Entry& each) { return text::EqualNoCase(each.key, key); });
    return value;
}

std::string OdbcText::Text() const {
    std::string text;
    for (const Entry& each : entries_) text += (text.empty() ? "" : ";") + each.key + "=" + each.source;
    return text;
}

std::vector<std::string> OdbcText::Secrets() const {
    std::vector<std::string> secrets;
    for (const std::string_view key : kSecretKeys) {
        for (const Entry& each : entries_) {
            if (!text::EqualNoCase(each.key, key) || each.value.empty()) continue;
            secrets.push_back(each.source);  // the longer form first
            if (each.source != each.value) secrets.push_back(each.value);
        }
    }
    return secrets;
}

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
