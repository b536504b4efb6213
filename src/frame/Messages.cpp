#include "frame/Messages.h"

namespace vlm::messages {

namespace {

constexpr const char* kTechnical = "Il messaggio tecnico dell'errore è: ";
constexpr const char* kCannotGoOn = "Impossibile proseguire! Il campo '";

void ShowCritical(ui::Toolkit& toolkit, const std::string& text, const char* caption) {
    toolkit.Show({text, caption, ui::Icon::Critical, ui::Buttons::Ok});
}

void ShowFailure(ui::Toolkit& toolkit, const char* what, const std::string& description) {
    ShowCritical(toolkit, std::string(what) + kLineEnd + kTechnical + description, kHostTitle);
}

bool AskToShowDetail(ui::Toolkit& toolkit, const char* during) {
    const std::string text = std::string("Sono state riscontrate alcune anomalie durante la ") + during + " del file." +
                             kLineEnd + "Si vuole procedere con la visualizzazione del dettaglio delle anomalie?";
    return toolkit.Show({text, kAttention, ui::Icon::Question, ui::Buttons::YesNo}) == ui::Answer::Yes;
}

}  // namespace

void ShowGenerationError(ui::Toolkit& toolkit, const std::string& description) {
    ShowFailure(toolkit, "Si è verificato un errore durante la generazione del file.", description);
}

void ShowReadingError(ui::Toolkit& toolkit, const std::string& description) {
    ShowFailure(toolkit, "Si è verificato un errore durante la lettura del file.", description);
}

void ShowError(ui::Toolkit& toolkit, const std::string& description) {
    ShowFailure(toolkit, "Si è verificato un errore.", description);
}

void ShowNoData(ui::Toolkit& toolkit) {
    toolkit.Show({"Nessun dato da elaborare.", kAttention, ui::Icon::Information, ui::Buttons::Ok});
}

void ShowConcluded(ui::Toolkit& toolkit) {
    toolkit.Show({"Elaborazione conclusa.", kHostTitle, ui::Icon::Information, ui::Buttons::Ok});
}

void ShowFieldMissing(ui::Toolkit& toolkit, const std::string& field) {
    ShowCritical(toolkit, kCannotGoOn + field + "' non può contenere un valore nullo.", kAttention);
}

void ShowPathNotValid(ui::Toolkit& toolkit, const std::string& field) {
    ShowCritical(toolkit, kCannotGoOn + field + "' contiene un percorso non valido.", kAttention);
}

bool AskToShowAnomalies(ui::Toolkit& toolkit) { return AskToShowDetail(toolkit, "generazione"); }

bool AskToShowFindings(ui::Toolkit& toolkit) { return AskToShowDetail(toolkit, "lettura"); }

}  // namespace vlm::messages
