#pragma once

#include <string>

#include "creation/ArchiveRecords.h"
#include "dialogs/PickList.h"
#include "frame/FormDialog.h"

namespace vlm {

/// Asks since when and why a patient is revoked.
class frmRevoca : public FormDialog {
public:
    /// `patient` and `birthDate` make the line that tells whom it is about.
    frmRevoca(const Library& library, const std::string& patient, const std::string& birthDate);

    // What was confirmed, to be read after the dialog has closed.
    bool Cancel = false;
    Revocation Data;

    void Opening() override;
    void FrameClose() override { CloseWith(true); }

private:
    void ApplyFlag();
    void CloseWith(bool cancel);

    ui::Label lblPaziente{*this, "lblPaziente"};
    ui::CheckBox chkRevocato{*this, "chkRevocato", "Revocato"};
    ui::DateField dtDataRevoca{*this, "dtDataRevoca"};
    ui::PickList cboTipoRevocaPaziente{*this, "cboTipoRevocaPaziente"};
    ui::TextField txtNoteRevoca{*this, "txtNoteRevoca"};
    ui::Button cmdConferma{*this, "cmdConferma", "Conferma"};
    ui::Button cmdAnnulla{*this, "cmdAnnulla", "Annulla"};
};

}  // namespace vlm
