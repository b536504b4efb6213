#include "frame/ExportDialog.h"

#include "frame/ModGeneral.h"
#include "values/Utf8.h"

namespace vlm {

ExportDialog::Destination::Destination(ExportDialog& dialog)
    : txtPath(dialog, "txtPath", "Destinazione:"),
      cmdLink(dialog, "cmdLink", "..."),
      chkVisualizza(dialog, "chkVisualizza", "Visualizza &dopo elaborazione") {
    dialog.destination_ = this;
    cmdLink.OnChange = [this, &dialog] {
        dialog.Guarded([this, &dialog] {
            if (const auto chosen = dialog.Choose()) txtPath.SetText(*chosen);
        });
    };
    dialog.BrowseWith(txtPath, cmdLink.OnChange);
}

ExportDialog::RunButtons::RunButtons(ExportDialog& dialog)
    : cmdConferma(dialog, "cmdConferma", "&Avvia"),
      cmdVisualizza(dialog, "cmdVisualizza", "&Visualizza ..."),
      cmdAnnulla(dialog, "cmdAnnulla", "Chiudi") {
    dialog.SetButtons({&cmdConferma, &cmdVisualizza, &cmdAnnulla}, &cmdConferma, &cmdAnnulla);
    cmdConferma.OnChange = [&dialog] {
        dialog.Guarded([&dialog] {
            if (dialog.Validate()) dialog.Run();
        });
    };
    cmdAnnulla.OnChange = [&dialog] { dialog.Close(); };
}

void ExportDialog::Opening() {
    Guarded([this] { destination_->txtPath.SetText(GetSetting(Lib(), setting_)); });
    Fill();
}

void ExportDialog::Closed() {
    Guarded([this] { SaveSetting(Lib(), setting_, Path()); });
}

std::string ExportDialog::TrimmedPath() const { return std::string(text::Trim(Path())); }

void ExportDialog::AddDestinationRows() {
    AddRow("Destinazione:", {{{&destination_->txtPath}}, {{&destination_->cmdLink}}});
    AddRow("", {{{&destination_->chkVisualizza}}});
}

std::optional<std::string> ExportDialog::Choose() {
    auto folder = Lib().Toolkit().ChooseFolder(TrimmedPath());
    if (folder && folder->empty()) folder.reset();
    return folder;
}

bool ExportDialog::Require(bool filled, const char* field, ui::Control& control) const {
    if (filled) return true;
    messages::ShowFieldMissing(Lib().Toolkit(), field);
    control.SetFocus();
    return false;
}

bool ExportDialog::RequireDestination(std::string_view folder) const {
    if (!Require(!TrimmedPath().empty(), "Destinazione", destination_->txtPath)) return false;
    if (IsDirectory(folder)) return true;
    messages::ShowPathNotValid(Lib().Toolkit(), "Destinazione");
    destination_->txtPath.SetFocus();
    return false;
}

}  // namespace vlm
