#include "frmRevoca.h"

#include "frame/ModSysTables.h"

namespace vlm {

frmRevoca::frmRevoca(const Library& library, const std::string& patient, const std::string& birthDate)
    : FormDialog(library, "frmRevoca", "Dati preliminari", KeyPreview::CommonRule) {
    lblPaziente.SetCaption(patient + " (" + birthDate + ")");
    txtNoteRevoca.multiLine = true;
    AddRow("", {{{&lblPaziente}}});
    AddRow("", {{{&chkRevocato}}});
    AddRow("Data", {{{&dtDataRevoca}}});
    AddRow("Tipo  revoca", {{{&cboTipoRevocaPaziente}}});
    AddRow("Note", {{{&txtNoteRevoca}}});
    SetButtons({&cmdConferma, &cmdAnnulla}, &cmdConferma, &cmdAnnulla);
    chkRevocato.OnChange = [this] { ApplyFlag(); };
    cmdConferma.OnChange = [this] { CloseWith(false); };
    cmdAnnulla.OnChange = [this] { CloseWith(true); };
}

void frmRevoca::Opening() {
    Cancel = false;
    Guarded([this] { FillPickList(Lib(), cboTipoRevocaPaziente, PickListKind::RevocationTypes); });
    ApplyFlag();
}

void frmRevoca::ApplyFlag() {
    const bool revoked = chkRevocato.Checked();
    for (ui::Control* control :
         {static_cast<ui::Control*>(&dtDataRevoca), static_cast<ui::Control*>(&cboTipoRevocaPaziente),
          static_cast<ui::Control*>(&txtNoteRevoca)}) {
        control->SetEnabled(revoked);
    }
    if (revoked) return;
    dtDataRevoca.SetValue(std::nullopt);
    cboTipoRevocaPaziente.SelectIndex(-1);
    txtNoteRevoca.SetText("");
}

void frmRevoca::CloseWith(bool cancel) {
    Cancel = cancel;
    if (!cancel) {
        Data = {chkRevocato.Checked(), dtDataRevoca.Value().value_or(Date()), cboTipoRevocaPaziente.SelectedKey(),
                txtNoteRevoca.Text()};
    }
    Close();
}

}  // namespace vlm
