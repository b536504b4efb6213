#include "console/ConsoleScript.h"

#include <algorithm>
#include <ostream>

#include "values/Utf8.h"

namespace vlm::ui {

namespace {

bool IsForLater(const ScriptStep& step) {
    return step.kind == ScriptStep::Kind::Answer || step.kind == ScriptStep::Kind::Block;
}

/// What was to be typed into a window that nobody saw is not told: it may be a secret.
std::vector<ScriptStep> WithoutValues(std::vector<ScriptStep> steps) {
    for (ScriptStep& step : steps) {
        if (step.kind == ScriptStep::Kind::Set) step.text = step.name + "=...";
        step.inside = WithoutValues(std::move(step.inside));
    }
    return steps;
}

}  // namespace

ConsoleScript::ConsoleScript(const std::vector<std::string>& words) : main_(ParseSteps(words)) { KeepHead(*main_); }

std::vector<ScriptStep> ConsoleScript::Take(const std::string& dialog, bool nested) {
    const auto block = std::find_if(blocks_.begin(), blocks_.end(),
                                    [&](const ScriptStep& each) { return text::EqualNoCase(each.name, dialog); });
    std::vector<ScriptStep> steps;
    if (block != blocks_.end()) {
        steps = std::move(block->inside);
        blocks_.erase(block);
        KeepHead(steps);
    } else if (main_ && !nested) {
        steps = std::move(*main_);
        main_.reset();
    }
    return steps;
}

void ConsoleScript::Keep(const ScriptStep& step) {
    (step.kind == ScriptStep::Kind::Answer ? answers_ : blocks_).push_back(step);
}

void ConsoleScript::KeepHead(std::vector<ScriptStep>& steps) {
    const auto rest = std::find_if_not(steps.begin(), steps.end(), IsForLater);
    for (auto step = steps.begin(); step != rest; ++step) Keep(*step);
    steps.erase(steps.begin(), rest);
}

void ConsoleScript::LeftOver(const std::string& dialog, std::vector<ScriptStep> steps) {
    if (steps.empty()) return;
    leftOver_.push_back("Passi non eseguiti, perché la finestra " + dialog +
                        " era già chiusa: " + Wording(WithoutValues(std::move(steps))));
}

void ConsoleScript::Fail(const ScriptError& error) {
    if (!failure_) failure_ = error;
}

void ConsoleScript::ThrowIfFailed() const {
    if (failure_) throw ScriptError(*failure_);
}

void ConsoleScript::ReportUnused(std::ostream& out) const {
    if (failure_) return;
    if (main_ && !main_->empty()) {
        out << "Passi non eseguiti, perché non si è aperta nessuna finestra: " << Wording(*main_) << '\n';
    }
    for (const std::string& sentence : leftOver_) out << sentence << '\n';
    for (const ScriptStep& block : blocks_) {
        out << "Passi non usati, perché la finestra " << block.name
            << " non si è aperta: " << Wording(WithoutValues({block})) << '\n';
    }
    for (const ScriptStep& answer : answers_) out << "Risposta non usata: " << answer.text << '\n';
}

}  // namespace vlm::ui
