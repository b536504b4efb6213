#include "console/ConsoleToolkit.h"

#include "DialogPlayer.h"
#include "values/Utf8.h"

namespace vlm::ui {

namespace {

enum class AnswerWord { Yes, No, Ok, Cancel, Other };

AnswerWord WordOf(const ScriptStep& answer) {
    if (text::EqualNoCase(answer.value, "yes")) return AnswerWord::Yes;
    if (text::EqualNoCase(answer.value, "no")) return AnswerWord::No;
    if (text::EqualNoCase(answer.value, "ok")) return AnswerWord::Ok;
    if (text::EqualNoCase(answer.value, "cancel")) return AnswerWord::Cancel;
    return AnswerWord::Other;
}

class DepthScope {
public:
    explicit DepthScope(int& depth) : depth_(depth) { ++depth_; }
    ~DepthScope() { --depth_; }
    DepthScope(const DepthScope&) = delete;
    DepthScope& operator=(const DepthScope&) = delete;

private:
    int& depth_;
};

}  // namespace

void ConsoleToolkit::ShowModal(Dialog& dialog) {
    script_.ThrowIfFailed();
    const bool nested = depth_ > 0;
    const DepthScope scope(depth_);
    try {
        DialogPlayer(dialog, script_, log_, nested).Play();
    } catch (const ScriptError& error) {
        script_.Fail(error);
        throw;
    }
    script_.ThrowIfFailed();
}

Answer ConsoleToolkit::Show(const Message& message) {
    script_.ThrowIfFailed();
    const Answer answer = AnswerTo(message);
    log_.MessageShown(message, answer);
    return answer;
}

Answer ConsoleToolkit::AnswerTo(const Message& message) {
    const ScriptStep* next = script_.NextAnswer();
    if (message.buttons == Buttons::Ok) {
        if (next != nullptr && WordOf(*next) == AnswerWord::Ok) script_.DropAnswer();
        return Answer::Ok;
    }
    if (next == nullptr) return Answer::No;
    const AnswerWord word = WordOf(*next);
    if (word != AnswerWord::Yes && word != AnswerWord::No) {
        Refuse(*next, "la domanda \"" + message.text + "\" vuole yes oppure no");
    }
    script_.DropAnswer();
    return word == AnswerWord::Yes ? Answer::Yes : Answer::No;
}

std::optional<std::string> ConsoleToolkit::ChooseFile(const FileChoice& choice) {
    const std::optional<std::string> answer = AnswerToChooser();
    log_.FileChosen(choice, answer);
    return answer;
}

std::optional<std::string> ConsoleToolkit::ChooseFolder(const std::string& startFolder) {
    const std::optional<std::string> answer = AnswerToChooser();
    log_.FolderChosen(startFolder, answer);
    return answer;
}

std::optional<std::string> ConsoleToolkit::AnswerToChooser() {
    script_.ThrowIfFailed();
    const ScriptStep* next = script_.NextAnswer();
    if (next == nullptr) return std::nullopt;
    const AnswerWord word = WordOf(*next);
    if (word != AnswerWord::Cancel && word != AnswerWord::Other) {
        Refuse(*next, "la scelta di un file o di una cartella vuole un percorso oppure cancel");
    }
    std::optional<std::string> chosen;
    if (word == AnswerWord::Other) chosen = next->value;
    script_.DropAnswer();
    return chosen;
}

void ConsoleToolkit::Refuse(const ScriptStep& answer, const std::string& reason) {
    const ScriptError error(answer.text, reason);
    script_.Fail(error);
    throw ScriptError(error);
}

}  // namespace vlm::ui
