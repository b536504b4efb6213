#pragma once

#include <string>

#include "dialogs/Toolkit.h"

/// Message boxes that more than one dialog or run shows.
namespace vlm::messages {

inline constexpr const char* kLineEnd = "\r\n";
inline constexpr const char* kHostTitle = "Aldra";
inline constexpr const char* kAttention = "Attenzione!";

/// A run that ended on an error; `description` is the error's own text.
void ShowGenerationError(ui::Toolkit& toolkit, const std::string& description);
/// A source that could not be read.
void ShowReadingError(ui::Toolkit& toolkit, const std::string& description);
/// An error outside a run (a list that cannot be filled, a setting that cannot be kept).
void ShowError(ui::Toolkit& toolkit, const std::string& description);
void ShowNoData(ui::Toolkit& toolkit);
/// "Elaborazione conclusa.", however the run ended.
void ShowConcluded(ui::Toolkit& toolkit);
/// "Impossibile proseguire! Il campo '...' non può contenere un valore nullo."
void ShowFieldMissing(ui::Toolkit& toolkit, const std::string& field);
void ShowPathNotValid(ui::Toolkit& toolkit, const std::string& field);
/// True when the user wants to see the anomaly report.
bool AskToShowAnomalies(ui::Toolkit& toolkit);
/// The same for what a read could not take from its source.
bool AskToShowFindings(ui::Toolkit& toolkit);

}  // namespace vlm::messages
