#include "frmASLImportPatient.h"

#include "ImportConfirmation.h"
#include "files/LineWriter.h"
#include "files/Paths.h"
#include "frame/Messages.h"
#include "frame/ModGeneral.h"
#include "frame/ModSysTables.h"
#include "frmRevoca.h"
#include "healthcard/GetPIN.h"
#include "readers/AslFormats.h"
#include "readers/ImportTemplate.h"

namespace vlm {

namespace {

std::string Counted(std::size_t count, const char* what) { return "( " + std::to_string(count) + " " + what + " )"; }

}  // namespace

frmASLImportPatient::frmASLImportPatient(ASLImportPatient& component)
    : FormDialog(component.Lib(), "frmASLImportPatient", "Importazione pazienti", KeyPreview::None),
      aslImportObject_(&component) {
    LayOut();
    Wire();
}

void frmASLImportPatient::LayOut() {
    txtPath.path = true;
    AddRow("Fonte dati", {{{&cboImportazione}}});
    AddRow("Tipo importazione", {{{&cboTipoImportazione}}});
    AddRow("Formato origine", {{{&cboASL}}}, &fraFile);
    AddRow("Percorso di origine", {{{&txtPath}}, {{&cmdLink}}}, &fraFile);
    AddRow("Specialista", {{{&cboSpecialista}}}, &fraSistemaTS);
    AddRow("Filtro", {{{&cboFiltro}}, {{&lblConteggio}}});
    AddRow("", {{{&lblLettura}}, {{&prgLettura}}});
    AddRow("", {{{&grdList, &grdList1, &grdList2}}});
    AddRow("", {{{&lblSelezionati}}});
    SetButtons({&cmdElabora, &cmdConferma, &cmdSeleziona, &cmdSelezionaTutti, &cmdStampa, &cmdAnnulla}, &cmdElabora,
               &cmdAnnulla);
    lblLettura.SetVisible(false);
    prgLettura.SetVisible(false);
}

void frmASLImportPatient::Wire() {
    cboImportazione.OnChange = [this] {
        Guarded([this] {
            FillSourceFormats();
            ApplyVisibility();
        });
    };
    cboTipoImportazione.OnChange = [this] { Guarded([this] { ApplyVisibility(); }); };
    cboFiltro.OnChange = [this] { Guarded([this] { ApplyFilter(); }); };
    cmdLink.OnChange = [this] { Guarded([this] { Browse(); }); };
    BrowseWith(txtPath, cmdLink.OnChange);
    for (ui::Grid* grid : {&grdList, &grdList1, &grdList2}) {
        grid->OnCheck = [this](int row, int) { CheckBoxClicked(row); };
    }
    cmdElabora.OnChange = [this] { Guarded([this] { Process(); }); };
    cmdSeleziona.OnChange = [this] { Guarded([this] { ToggleSelection(); }); };
    cmdSelezionaTutti.OnChange = [this] { Guarded([this] { SelectAll(); }); };
    cmdStampa.OnChange = [this] { Guarded([this] { Print(); }); };
    cmdConferma.OnChange = [this] {
        Guarded([this] {
            if (IsRevocation()) {
                Revoke();
            } else {
                Confirm();
            }
        });
    };
    cmdAnnulla.OnChange = [this] { Close(); };
}

void frmASLImportPatient::Opening() {
    aslImportObject_->DialogReadingFile = [this](std::int32_t percent) {
        try {
            prgLettura.SetValue(percent);
        } catch (const std::exception&) {  // a bar that cannot be painted is no reason to stop a read
        }
    };
    Guarded([this] { FillPickList(Lib(), cboSpecialista, PickListKind::Specialists); });
    cboImportazione.SetItems({"Anagrafica pazienti", "Esenti per reddito"});
    cboTipoImportazione.SetItems({"File di testo", "Sistema TS"});
    cboFiltro.SetItems({"tutti i pazienti nella fonte", "presenti nella fonte e non presenti in Aldra",
                        "presenti in Aldra e non presenti nella fonte"});
    cboFiltro.SetPosition(0);
    cboTipoImportazione.SetPosition(0);
    cboImportazione.SetPosition(0);
    lblConteggio.SetCaption("");
}

void frmASLImportPatient::Closed() {
    if (aslImportObject_ != nullptr) aslImportObject_->DialogReadingFile = nullptr;
    aslImportObject_ = nullptr;
}

void frmASLImportPatient::FillSourceFormats() {
    std::vector<std::string> entries;
    if (IsPatientList()) {
        for (const asl::Authority& authority : asl::Authorities()) entries.emplace_back(authority.name);
    }
    const TemplateFolder templates(Lib().InstallFolder().Path());
    for (std::string& name :
         templates.Names(IsPatientList() ? TemplateFolder::kPatientLists : TemplateFolder::kExemptionLists)) {
        entries.push_back(std::move(name));
    }
    cboASL.SetItems(std::move(entries));
}

ui::Grid& frmASLImportPatient::ShownGrid() {
    if (!IsPatientList()) return grdList1;
    return IsRevocation() ? grdList2 : grdList;
}

ElementGridModel* frmASLImportPatient::ShownModel() {
    if (ShownGrid().Model() == nullptr) return nullptr;
    return IsRevocation() ? revocable_.get() : elements_.get();
}

void frmASLImportPatient::ApplyVisibility() {
    fraFile.SetVisible(!IsHealthCard());
    fraSistemaTS.SetVisible(IsHealthCard());
    const ui::Grid& shown = ShownGrid();
    for (ui::Grid* grid : {&grdList, &grdList1, &grdList2}) grid->SetVisible(grid == &shown);
    cboFiltro.SetEnabled(IsPatientList());
    cmdConferma.SetCaption(IsRevocation() ? "&Revoca" : "&Importa");
    ShowSelected();
}

/// Nothing has been read for a grid that shows nothing: then there is nothing to count.
void frmASLImportPatient::ApplyFilter() {
    if (IsPatientList() && grdList.Model() != nullptr) {
        const int current = grdList.CurrentRow();
        const std::uint32_t element = current >= 0 ? elements_->ElementAt(current) : ElementGridModel::kNone;
        elements_->ShowOnlyNew(cboFiltro.Position() == 1);
        grdList.Refresh();
        grdList.SetCurrentRow(elements_->RowOf(element));  // the same patient, or none
        const int shown = IsRevocation() ? grdList2.RowCount() : grdList.RowCount();
        lblConteggio.SetCaption(Counted(static_cast<std::size_t>(shown), "pazienti"));
    }
    ApplyVisibility();
}

void frmASLImportPatient::ShowSelected() {
    const ElementGridModel* const shown = ShownModel();
    const std::size_t count = shown != nullptr ? shown->CountShownSelected() : 0;
    lblSelezionati.SetCaption("Selezionati " + std::to_string(count) + " pazienti.");
}

void frmASLImportPatient::Browse() {
    const auto chosen = Lib().Toolkit().ChooseFile(
        {"All files (*.*)|*.*|ASL files|*.csv;*.xls", 1, "csv", {}, FileNameOf(files::ToLibrary(txtPath.Text()))});
    if (chosen) txtPath.SetText(*chosen);
}

void frmASLImportPatient::Process() {
    if (!IsHealthCard() && cboASL.Position() < 0) {
        Lib().Toolkit().Show(
            {"Selezionare l'ASL di riferimento.", "Attenzione!!", ui::Icon::Exclamation, ui::Buttons::Ok});
        cboASL.SetFocus();
        return;
    }
    try {
        const Work work(*this, "Lettura sorgente in corso...");
        ElementListPtr elements = ReadSource();
        if (!elements) return;
        lblLettura.SetCaption("Popolamento griglia in corso...");
        Repaint();
        FillGrids(std::move(elements));
    } catch (const std::exception& error) {
        EmptyGrids();
        return ShowProcessingError(error.what());
    }
    OfferFindings();
}

void frmASLImportPatient::ShowProcessingError(const std::string& description) {
    Lib().Toolkit().Show({std::string("Si sono verificati degli errori durante l'elaborazione:") + messages::kLineEnd +
                              messages::kLineEnd + description,
                          "Errore!!", ui::Icon::Critical, ui::Buttons::Ok});
}

ElementListPtr frmASLImportPatient::ReadSource() {
    if (IsPatientList() && Lib().Connection()) aslImportObject_->RememberArchive();
    return IsHealthCard() ? ReadHealthCard() : ReadFile();
}

ElementListPtr frmASLImportPatient::ReadFile() {
    const TemplateFolder templates(Lib().InstallFolder().Path());
    const std::string entry = cboASL.SelectedText();
    const std::string& path = txtPath.Text();
    EmptyGrids();
    if (!IsPatientList()) {
        return aslImportObject_->ReadWithTemplate(path, templates.PathOf(entry, TemplateFolder::kExemptionLists));
    }
    return aslImportObject_->ReadSourceForAsl(path, cboASL.Position(),
                                              templates.PathOf(entry, TemplateFolder::kPatientLists));
}

ElementListPtr frmASLImportPatient::ReadHealthCard() {
    const std::int32_t specialist = cboSpecialista.SelectedKey();
    Lib().Toolkit().SetPointer(ui::Pointer::Normal);
    const std::string pin = GetPIN(aslImportObject_->Lib(), specialist, false);
    Lib().Toolkit().SetPointer(ui::Pointer::Hourglass);
    if (pin.empty()) return nullptr;  // what is shown stays
    EmptyGrids();
    return IsPatientList() ? aslImportObject_->GetElementListSistemaTS(specialist, pin)
                           : aslImportObject_->GetElementListEsentiRedditoSistemaTS(specialist, pin);
}

void frmASLImportPatient::FillGrids(ElementListPtr elements) {
    if (IsPatientList()) {
        const PatientRevocation archive(Lib(), aslImportObject_->Security());
        revocable_ = std::make_shared<RevocableGridModel>(archive.RevocablePatients(*elements));
    }
    elements_ = IsPatientList() ? PatientGrid(std::move(elements)) : ExemptionGrid(std::move(elements));
    lblConteggio.SetCaption(Counted(elements_->ElementCount(), "elementi"));
    (IsPatientList() ? grdList : grdList1).SetModel(elements_);
    if (IsPatientList()) grdList2.SetModel(revocable_);
    ApplyFilter();
}

void frmASLImportPatient::EmptyGrids() {
    for (ui::Grid* grid : {&grdList, &grdList1, &grdList2}) grid->SetModel(nullptr);
    elements_.reset();
    revocable_.reset();
    lblConteggio.SetCaption("");
    ShowSelected();
}

void frmASLImportPatient::OfferFindings() {
    const Findings& findings = aslImportObject_->LastFindings();
    if (findings.Empty() || !elements_ || IsHealthCard() || IsClosing()) return;
    if (messages::AskToShowFindings(Lib().Toolkit())) ShowTextFile("Anomalie importazione.txt", findings.Report());
}

void frmASLImportPatient::ShowWork(const std::string& caption) {
    lblLettura.SetCaption(caption);
    prgLettura.SetValue(0);
    lblLettura.SetVisible(true);
    prgLettura.SetVisible(true);
    Repaint();
}

void frmASLImportPatient::HideWork() {
    lblLettura.SetVisible(false);
    prgLettura.SetVisible(false);
}

bool frmASLImportPatient::WorkDone(int percent) {
    prgLettura.SetValue(percent);
    Repaint();  // many rows make one percent, and each of them is a chance to close
    return !IsClosing();
}

// What the dialog does with the rows that it shows: selecting, confirming, revoking, printing.

void frmASLImportPatient::CheckBoxClicked(int row) {
    ElementGridModel* const shown = ShownModel();
    if (shown == nullptr) return;
    const std::uint32_t element = shown->ElementAt(row);
    shown->Select(element, !shown->IsSelected(element));
    RefreshGrid();
}

void frmASLImportPatient::ToggleSelection() {
    const int row = ShownGrid().CurrentRow();
    if (row >= 0) CheckBoxClicked(row);
}

void frmASLImportPatient::SelectAll() {
    ElementGridModel* const shown = ShownModel();
    if (shown == nullptr) return;
    shown->SelectAll();
    RefreshGrid();
}

void frmASLImportPatient::RefreshGrid() {
    ShownGrid().Refresh();
    ShowSelected();
}

void frmASLImportPatient::Confirm() {
    ElementGridModel* const elements = ShownModel();
    if (elements == nullptr || !MayConfirmHidden(*elements)) return;
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
bool frmASLImportPatient::MayConfirmHidden(const ElementGridModel& elements) {
    const std::size_t hidden = elements.CountSelected() - elements.CountShownSelected();
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
        PatientRevocation(Lib(), aslImportObject_->Security()).Revoke(patient, dialog.Data);
    } catch (const std::exception& error) {
        return ShowProcessingError(error.what());
    }
    if (!dialog.Data.Revocato) return;
    revocable_->SetRevoked(row);
    grdList2.Refresh();
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
