#include "frmASLImportPatient.h"

#include <array>

#include "ImportGrids.h"
#include "TemplateFolder.h"
#include "files/Paths.h"
#include "frame/Messages.h"
#include "frame/ModGeneral.h"
#include "frame/ModSysTables.h"
#include "healthcard/GetPIN.h"

namespace vlm {

namespace {

/// The authorities of the list in their order: the position is what a reader is chosen by.
constexpr std::array<const char*, 30> kAuthorities = {
    "ABRUZZO",
    "BASILICATA",
    "BOLZANO",
    "CALABRIA",
    "CAMPANIA",
    "EMILIA ROMAGNA",
    "FRIULI VENEZIA GIULIA",
    "LAZIO",
    "LIGURIA",
    "LOMBARDIA",
    "MARCHE",
    "MOLISE",
    "PIEMONTE",
    "PUGLIA",
    "SARDEGNA",
    "SICILIA",
    "TOSCANA",
    "TRENTINO ALTO ADIGE",
    "TRENTO",
    "UMBRIA",
    "VALLE D'AOSTA",
    "VENETO",
    "Catania",
    "Caltanissetta",
    "Savona",
    "Palermo",
    "Ragusa",
    "Sassari",
    "Enna",
    "Napoli",
};

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
    if (IsPatientList()) entries.assign(kAuthorities.begin(), kAuthorities.end());
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
    std::size_t count = 0;
    if (ShownGrid().Model() != nullptr) {
        count = IsRevocation() ? revocable_->CountSelected() : elements_->CountShownSelected();
    }
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

ElementListPtr frmASLImportPatient::ReadSource() { return IsHealthCard() ? ReadHealthCard() : ReadFile(); }

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
    ElementList& list = *elements;
    if (IsPatientList()) revocable_ = std::make_shared<RevocableGridModel>(Lib().RequireConnection(), list);
    elements_ =
        std::make_shared<ElementGridModel>(IsPatientList() ? kPatientColumns : kExemptionColumns, std::move(elements));
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

}  // namespace vlm
