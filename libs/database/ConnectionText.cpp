#include "database/ConnectionText.h"

#include "values/Error.h"
#include "values/Utf8.h"

namespace vlm::data {

namespace {

/// Takes the value that stands before the next ";" off `rest`.
std::string TakeValue(std::string_view& rest) {
    rest = text::TrimLeft(rest);
    const char quote = rest.empty() ? '\0' : rest.front();
    if (quote != '"' && quote != '\'') {
        const std::size_t end = std::min(rest.find(';'), rest.size());
        std::string value(text::TrimRight(rest.substr(0, end)));
        rest.remove_prefix(end);
        return value;
    }
    std::string value;
    for (std::size_t position = 1; position < rest.size(); ++position) {
        if (rest[position] == quote) {
            if (position + 1 >= rest.size() || rest[position + 1] != quote) {
                rest = text::TrimLeft(rest.substr(position + 1));
                if (!rest.empty() && rest.front() != ';') break;
                return value;
            }
            ++position;
        }
        value += rest[position];
    }
    throw Error("Il testo di connessione ha un valore tra virgolette non chiuso.");
}

}  // namespace

ConnectionText::ConnectionText(std::string_view text) {
    std::string_view rest = text;
    while (!(rest = text::Trim(rest)).empty()) {
        if (rest.front() == ';') {
            rest.remove_prefix(1);
            continue;
        }
        const std::size_t equals = rest.find('=');
        const std::size_t end = rest.find(';');
        if (equals == std::string_view::npos || equals > end) {
            throw Error("Il testo di connessione non è valido vicino a '" + std::string(rest.substr(0, end)) + "'.");
        }
        const std::string key = text::FoldCase(text::Trim(rest.substr(0, equals)));
        rest.remove_prefix(equals + 1);
        values_[key] = TakeValue(rest);
    }
}

std::string ConnectionText::ValueOf(std::string_view key) const {
    const auto found = values_.find(text::FoldCase(key));
    return found == values_.end() ? std::string() : found->second;
}

}  // namespace vlm::data
