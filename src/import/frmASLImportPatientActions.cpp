#include "ImportConfirmation.h"
#include "PrintedTable.h"
#include "files/LineWriter.h"
#include "frame/Messages.h"
#include "frame/ModGeneral.h"
#include "frmASLImportPatient.h"
#include "frmRevoca.h"
#include "values/Error.h"

/// What the import dialog does with the rows that it shows: selecting, confirming, revoking, printing.
namespace vlm {

void frmASLImportPatient::SetSelected(int row, bool selected) {
    if (IsRevocation()) {
        revocable_->Select(row, selected);
    } else {
        elements_->Select(elements_->ElementAt(row), selected);
    }
    RefreshGrid();
}

void frmASLImportPatient::CheckBoxClicked(int row) {
    const bool selected =
        IsRevocation() ? revocable_->IsSelected(row) : elements_->IsSelected(elements_->ElementAt(row));
    SetSelected(row, !selected);
}

void frmASLImportPatient::ToggleSelection() {
    const int row = ShownGrid().CurrentRow();
    if (row >= 0) CheckBoxClicked(row);
}

void frmASLImportPatient::SelectAll() {
    if (ShownGrid().Model() == nullptr) return;
    if (IsRevocation()) {
        revocable_->SelectAll();
    } else {
        elements_->SelectAll();
    }
    RefreshGrid();
}

void frmASLImportPatient::RefreshGrid() {
    ShownGrid().Refresh();
    ShowSelected();
}

void frmASLImportPatient::Confirm() {
    ElementGridModel* const elements = ShownElements();
    if (ShownGrid().Model() == nullptr || elements == nullptr || !MayConfirmHidden()) return;
    const auto kind = IsPatientList() ? ImportConfirmation::Kind::Patients : ImportConfirmation::Kind::Exemptions;
    ImportConfirmation confirmation(*aslImportObject_, kind, [this](int percent) { return WorkDone(percent); });
    {
        const Work work(*this, "Importazione pazienti in corso...");
        confirmation.Run(*elements);
    }
    ApplyFilter();
    RefreshGrid();
    Lib().Toolkit().Show({confirmation.Summary(), messages::kHostTitle, ui::Icon::Information, ui::Buttons::Ok});
}

/// Rows that a filter hides are confirmed with the others: the user is asked first.
bool frmASLImportPatient::MayConfirmHidden() {
    const std::size_t hidden = elements_->CountSelected() - elements_->CountShownSelected();
    if (hidden == 0) return true;
    const std::string text = "Sono selezionati anche " + std::to_string(hidden) + " pazienti non visualizzati." +
                             messages::kLineEnd + "Si vuole procedere?";
    return Lib().Toolkit().Show({text, messages::kAttention, ui::Icon::Question, ui::Buttons::YesNo}) ==
           ui::Answer::Yes;
}

void frmASLImportPatient::Revoke() {
    const auto tell = [this](const char* text) {
        Lib().Toolkit().Show({text, messages::kHostTitle, ui::Icon::Information, ui::Buttons::Ok});
    };
    const int row = grdList2.CurrentRow();
    if (row < 0) return tell("Selezionare un paziente!");
    if (revocable_->IsRevoked(row)) return tell("Il paziente selezionato risulta già revocato");
    frmRevoca dialog(Lib(), revocable_->NameAt(row), revocable_->BirthDateAt(row));
    Lib().Toolkit().ShowModal(dialog);
    const std::int32_t patient = revocable_->PatientAt(row);
    if (dialog.Cancel || patient < 1) return;
    try {
        WriteRevocation(patient, dialog);
    } catch (const std::exception& error) {
        return ShowProcessingError(error.what());
    }
    if (!dialog.Revocato) return;
    revocable_->SetRevoked(row);
    grdList2.Refresh();
}

/// The patient stays locked while the record lives. A ticked flag without a date stores no date.
void frmASLImportPatient::WriteRevocation(std::int32_t patient, const frmRevoca& data) {
    const std::unique_ptr<HostRecord> record =
        Prepared(Lib().Components().NewPatientRecord(), Lib(), aslImportObject_->Security());
    record->Load(patient, true);
    if (!data.Revocato) return;
    if (record->Id() == 0) throw Error("Il paziente n. " + std::to_string(patient) + " non è più in archivio.");
    record->SetField("Revocato", std::int64_t{1});
    record->SetField("DataRevoca", data.DataRevoca.Serial() == 0 ? data::Value() : data::Value(data.DataRevoca));
    record->SetField("IDTipoRevocaPaziente", std::int64_t{data.IDTipoRevocaPaziente});
    record->SetField("NoteRevoca", data.NoteRevoca);
    if (!record->Save()) throw Error("Il paziente n. " + std::to_string(patient) + " non è stato salvato.");
}

void frmASLImportPatient::Print() {
    const ui::Grid& grid = ShownGrid();
    if (grid.Model() == nullptr || Lib().Toolkit().Print(grid, Title())) return;
    ShowTextFile("Stampa importazione.txt", PrintedTable(*grid.Model()));
}

void frmASLImportPatient::ShowTextFile(const std::string& name, const std::vector<std::string>& lines) {
    const std::string path = PathCombine(Lib().Utility().WorkFolder(), name);
    files::LineWriter file;
    file.Open(path);
    for (const std::string& line : lines) file.WriteLine(line);
    file.Deliver();
    file.Keep();
    Lib().Programs().Start("Notepad.exe " + path);
}

}  // namespace vlm
