#include "frmASLExport.h"

#include "frame/Messages.h"
#include "frame/ModGeneral.h"
#include "frame/ModSysTables.h"
#include "frmSelectFile.h"
#include "values/Utf8.h"

namespace vlm {

namespace {

constexpr std::int32_t kHelpContext = 5920;

std::string BranchCondition(std::int32_t idBranca) {
    return idBranca > 0 ? " WHERE IDBrancaPerStudio = " + std::to_string(idBranca) : std::string{};
}

void Enable(std::initializer_list<ui::Control*> controls, bool enabled) {
    for (ui::Control* control : controls) control->SetEnabled(enabled);
}

}  // namespace

frmASLExport::frmASLExport(ASLExport& component)
    : FormDialog(component.Lib(), "frmASLExport", "Esportazione ASL", KeyPreview::Frame), aslExportObject_(&component) {
    LayOut();
    Wire();
}

void frmASLExport::LayOut() {
    AddRow("", {{{&optTipoExport}}}, &fraTipoExport);
    AddRow("Periodo", {{{&cboMese, &cboTrimestre}}, {{&numAnno, &numAnnoTrimestre}}});
    AddRow("Branca", {{{&cboBranca}}});
    AddRow("Medico", {{{&cboSpecialista}}});
    AddRow("Tipo operazione", {{{&lstTipoOperazione}}});
    AddRow("Destinazione:", {{{&txtPath}}, {{&cmdLink}}});
    AddRow("", {{{&chkVisualizza}}});
    AddRow("", {{{&chkSimulazione}}});
    AddRow("", {{{&chkIncludiElaborate}}});
    AddRow("", {{{&chkIncludiPrecedenti}}});
    SetButtons({&cmdConferma, &cmdVisualizza, &cmdAnnulla}, &cmdConferma, &cmdAnnulla);
}

void frmASLExport::Wire() {
    optTipoExport.OnChange = [this] { ShowFieldsOfType(); };
    cboBranca.OnChange = [this] { Guarded([this] { LoadSpecialists(); }); };
    cmdLink.OnChange = [this] { Guarded([this] { Browse(); }); };
    BrowseWith(txtPath, cmdLink.OnChange);
    cmdConferma.OnChange = [this] {
        Guarded([this] {
            if (Validate()) Run();
        });
    };
    cmdVisualizza.OnChange = [this] { Guarded([this] { ViewFile(); }); };
    cmdAnnulla.OnChange = [this] { Close(); };
}

void frmASLExport::Opening() {
    // The destination comes first: whatever fails later, closing keeps it. Every step that asks the database stands
    // for itself, so that one that fails leaves the others their work.
    Guarded([this] { txtPath.SetText(GetSetting(Lib(), settings::kASLPath)); });
    cboTrimestre.SetItems({"primo trimestre", "secondo trimestre", "terzo trimestre", "quarto trimestre"});
    lstTipoOperazione.SetItems({"Inserimento", "Variazione", "Cancellazione"});
    optTipoExport.SetPosition(0);
    Guarded([this] { FillPickList(Lib(), cboBranca, PickListKind::Branches); });
    Guarded([this] { FillPickList(Lib(), cboMese, PickListKind::Months); });
    ProposePeriod();
    Guarded([this] { ApplyRegion(); });
}

void frmASLExport::ProposePeriod() {
    const Date::Civil today = Lib().Clock().Today().ToCivil();
    const int month = today.month == 1 ? 12 : today.month - 1;
    cboMese.SelectKey(month);
    numAnno.SetValue(today.month == 1 ? today.year - 1 : today.year);
    const int quarter = QuarterOfMonth(static_cast<std::int16_t>(today.month));
    cboTrimestre.SetPosition(quarter == 1 ? 3 : quarter - 2);
    numAnnoTrimestre.SetValue(quarter == 1 ? today.year - 1 : today.year);
}

void frmASLExport::ApplyRegion() {
    const RegionDescription& region = aslExportObject_->Region();
    if (!region.monthly) optTipoExport.SetPosition(1);
    Enable({&optTipoExport, &fraTipoExport}, region.monthly && region.quarterly);
    Enable({&cboMese, &numAnno}, region.monthly);
    Enable({&cboTrimestre, &numAnnoTrimestre}, region.quarterly);
    Enable({&chkIncludiPrecedenti}, region.earlierPeriods);
    Enable({&lstTipoOperazione}, region.operationTypes);
    if (region.needsBranch && cboBranca.RowCount() > 0) cboBranca.SelectIndex(0);
}

void frmASLExport::ShowFieldsOfType() {
    const bool monthly = IsMonthly();
    for (ui::Control* control :
         std::initializer_list<ui::Control*>{&cboMese, &numAnno, &chkIncludiElaborate, &chkIncludiPrecedenti}) {
        control->SetVisible(monthly);
    }
    cboTrimestre.SetVisible(!monthly);
    numAnnoTrimestre.SetVisible(!monthly);
}

void frmASLExport::LoadSpecialists() {
    cboSpecialista.extraColumns = {{"CodiceRegionale", "Codice regionale", 1400}};
    cboSpecialista.keyColumn = "Specialista.IDSpecialista";
    FillSpecialistsOfBranch(Lib(), cboSpecialista, ", Specialista.CodiceRegionale",
                            BranchCondition(cboBranca.SelectedKey()));
}

void frmASLExport::Browse() {
    const auto folder = Lib().Toolkit().ChooseFolder(std::string(text::Trim(txtPath.Text())));
    if (folder && !folder->empty()) txtPath.SetText(*folder);
}

bool frmASLExport::Validate() {
    bool valid = true;
    if (cboBranca.SelectedKey() == 0 && aslExportObject_->Region().needsBranch) {
        messages::ShowFieldMissing(Lib().Toolkit(), "Branca");
        cboBranca.SetFocus();
        valid = false;
    }
    if (text::Trim(txtPath.Text()).empty()) {
        messages::ShowFieldMissing(Lib().Toolkit(), "Destinazione");
        txtPath.SetFocus();
        valid = false;
    } else if (!IsDirectory(txtPath.Text())) {
        messages::ShowPathNotValid(Lib().Toolkit(), "Destinazione");
        txtPath.SetFocus();
        valid = false;
    }
    return valid;
}

std::int32_t frmASLExport::Periodo() const { return IsMonthly() ? cboMese.SelectedKey() : cboTrimestre.Position() + 1; }

std::int16_t frmASLExport::Anno() const {
    return static_cast<std::int16_t>(IsMonthly() ? numAnno.Value() : numAnnoTrimestre.Value());
}

std::string frmASLExport::ChosenCodiceRegionale() const {
    return cboSpecialista.SelectedKey() >= 1 ? cboSpecialista.SelectedColumn("CodiceRegionale")
                                             : CodiceRegionaleOfBranch();
}

std::string frmASLExport::CodiceRegionaleOfBranch() const {
    const data::ConnectionPtr& connection = Lib().Connection();
    if (!connection || !connection->IsOpen()) return {};
    const data::RecordsetPtr rows = connection->Open(std::string("SELECT Specialista.CodiceRegionale") +
                                                     kSpecialistsOfBranch + BranchCondition(cboBranca.SelectedKey()));
    return rows->AtEnd() ? std::string{} : std::string(rows->TextOf(rows->Ordinal("CodiceRegionale")));
}

void frmASLExport::Run() {
    ASLExport& component = *aslExportObject_;
    component.Filter.idSpecialista = cboSpecialista.SelectedKey();
    component.Filter.idBranca = cboBranca.SelectedKey();
    component.CodiceRegionale = ChosenCodiceRegionale();
    component.Filter.periodo = Periodo();
    component.Filter.anno = Anno();
    component.Filter.includiPrecedenti = chkIncludiPrecedenti.Checked();
    component.Filter.includiElaborate = chkIncludiElaborate.Checked();
    component.Visualizza = chkVisualizza.Checked();
    component.Filter.tipiOperazione = 0;
    for (const int position : lstTipoOperazione.Selected()) component.Filter.tipiOperazione |= 1 << position;
    component.Export(txtPath.Text(), TipoExport(), chkSimulazione.Checked());
}

void frmASLExport::ViewFile() {
    ASLExport& component = *aslExportObject_;
    component.CodiceRegionale = ChosenCodiceRegionale();
    frmSelectFile selection(Lib());
    const std::string folder(text::Trim(txtPath.Text()));
    if (!folder.empty()) {
        const std::string numeroASL = GetNumeroASL(Lib(), Lib().RequireConnection());
        selection.Folder = folder;
        selection.FileName =
            PathCombine(folder, component.GetFileName(TipoExport(), numeroASL, Periodo(), Anno(), false));
    }
    Lib().Toolkit().ShowModal(selection);
    if (!selection.Cancel()) component.ViewAsDecoded(selection.FileName, TipoExport());
}

void frmASLExport::HelpRequested() {
    const std::shared_ptr<HelpObject> help = aslExportObject_ != nullptr ? aslExportObject_->CHMObject() : nullptr;
    if (!help) return;
    try {
        help->SetWindow(WindowHandle());
        help->ShowContext(kHelpContext);
    } catch (const std::exception&) {  // help that cannot be shown is no error of the export
    }
}

void frmASLExport::Closed() {
    aslExportObject_ = nullptr;
    Guarded([this] { SaveSetting(Lib(), settings::kASLPath, txtPath.Text()); });
}

}  // namespace vlm
