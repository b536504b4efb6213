#include "console/ScriptStep.h"

#include <algorithm>
#include <charconv>
#include <string_view>

namespace vlm::ui {

namespace {

constexpr std::string_view kBlock = "in:", kBlockEnd = "end:", kKey = "key:", kAnswer = "answer:", kHelp = "help:";

bool IsName(std::string_view text) {
    return !text.empty() && std::all_of(text.begin(), text.end(), [](char character) {
        return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
               (character >= '0' && character <= '9') || character == '_';
    });
}

int ParseRow(const std::string& word, std::string_view digits) {
    int row = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), row);
    if (error != std::errc() || end != digits.data() + digits.size() || row < 1) {
        throw ScriptError(word, "dopo \"!\" può stare solo il numero di una riga, contato da 1");
    }
    return row;
}

/// NAME=VALUE, NAME!, NAME!ROW, NAME?
ScriptStep ParseControlStep(const std::string& word) {
    const std::string_view text = word;
    const std::size_t sign = text.find_first_of("=!?");
    if (sign == std::string_view::npos || !IsName(text.substr(0, sign))) {
        throw ScriptError(word, "non è un passo conosciuto");
    }
    const std::string_view rest = text.substr(sign + 1);
    ScriptStep step;
    step.name = text.substr(0, sign);
    if (text[sign] == '=') {
        step.kind = ScriptStep::Kind::Set;
        step.value = rest;
    } else if (text[sign] == '?') {
        if (!rest.empty()) throw ScriptError(word, "dopo \"?\" non può stare altro");
        step.kind = ScriptStep::Kind::State;
    } else if (rest.empty()) {
        step.kind = ScriptStep::Kind::Click;
    } else {
        step.kind = ScriptStep::Kind::Row;
        step.row = ParseRow(word, rest);
    }
    return step;
}

ScriptStep ParseKeyStep(const std::string& word) {
    const std::string_view text = std::string_view(word).substr(kKey.size());
    const std::size_t sign = text.find('=');
    if (sign == std::string_view::npos || (sign > 0 && !IsName(text.substr(0, sign)))) {
        throw ScriptError(word, "un tasto si scrive key:CONTROLLO=TASTO oppure key:=TASTO");
    }
    const std::optional<KeyEvent> key = ParseKeyName(text.substr(sign + 1));
    if (!key) throw ScriptError(word, "\"" + std::string(text.substr(sign + 1)) + "\" non è un tasto conosciuto");
    ScriptStep step;
    step.kind = ScriptStep::Kind::Press;
    step.name = text.substr(0, sign);
    step.key = *key;
    return step;
}

ScriptStep ParseSimpleStep(const std::string& word) {
    if (word.starts_with(kKey)) return ParseKeyStep(word);
    if (word.starts_with(kAnswer)) {
        ScriptStep step;
        step.kind = ScriptStep::Kind::Answer;
        step.value = word.substr(kAnswer.size());
        if (step.value.empty()) throw ScriptError(word, "manca la risposta");
        return step;
    }
    if (word == kHelp) return ScriptStep();
    return ParseControlStep(word);
}

class StepReader {
public:
    explicit StepReader(const std::vector<std::string>& words) : words_(words) {}

    /// `block` is the `in:` word that the steps stand in, null for the main steps.
    std::vector<ScriptStep> Read(const std::string* block) {
        std::vector<ScriptStep> steps;
        while (next_ < words_.size()) {
            const std::string& word = words_[next_++];
            if (word == kBlockEnd) {
                if (block == nullptr) throw ScriptError(word, "prima non c'è nessun \"in:\"");
                return steps;
            }
            steps.push_back(word.starts_with(kBlock) ? ReadBlock(word) : ParseSimpleStep(word));
            steps.back().text = word;
        }
        if (block != nullptr) throw ScriptError(*block, "manca il suo \"end:\"");
        return steps;
    }

private:
    ScriptStep ReadBlock(const std::string& word) {
        ScriptStep step;
        step.kind = ScriptStep::Kind::Block;
        step.name = word.substr(kBlock.size());
        if (!IsName(step.name)) throw ScriptError(word, "dopo \"in:\" serve il nome di una finestra");
        step.inside = Read(&word);
        return step;
    }

    const std::vector<std::string>& words_;
    std::size_t next_ = 0;
};

}  // namespace

std::vector<ScriptStep> ParseSteps(const std::vector<std::string>& words) { return StepReader(words).Read(nullptr); }

std::string Wording(const ScriptStep& step) {
    if (step.kind != ScriptStep::Kind::Block) return step.text;
    const std::string inside = Wording(step.inside);
    return step.text + (inside.empty() ? "" : " ") + inside + " " + std::string(kBlockEnd);
}

std::string Wording(const std::vector<ScriptStep>& steps) {
    std::string wording;
    for (const ScriptStep& step : steps) {
        if (!wording.empty()) wording += ' ';
        wording += Wording(step);
    }
    return wording;
}

}  // namespace vlm::ui
