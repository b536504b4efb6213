#include "frmASLExport.h"

#include "frame/ModGeneral.h"
#include "frame/ModSysTables.h"
#include "frmSelectFile.h"

namespace vlm {

namespace {

constexpr std::int32_t kHelpContext = 5920;

void Enable(std::initializer_list<ui::Control*> controls, bool enabled) {
    for (ui::Control* control : controls) control->SetEnabled(enabled);
}

void Show(std::initializer_list<ui::Control*> controls, bool visible) {
    for (ui::Control* control : controls) control->SetVisible(visible);
}

}  // namespace

frmASLExport::frmASLExport(ASLExport& component)
    : ExportDialog(component.Lib(), "frmASLExport", "Esportazione ASL", settings::kASLPath),
      aslExportObject_(&component) {
    AddRow("", {{{&optTipoExport}}}, &fraTipoExport);
    AddRow("Periodo", {{{&cboMese, &cboTrimestre}}, {{&numAnno, &numAnnoTrimestre}}});
    AddRow("Branca", {{{&cboBranca}}});
    AddRow("Medico", {{{&cboSpecialista}}});
    AddRow("Tipo operazione", {{{&lstTipoOperazione}}});
    AddDestinationRows();
    AddRow("", {{{&chkSimulazione}}});
    AddRow("", {{{&chkIncludiElaborate}}});
    AddRow("", {{{&chkIncludiPrecedenti}}});
    optTipoExport.OnChange = [this] { ShowFieldsOfType(); };
    cboBranca.OnChange = [this] {
        Guarded([this] { FillSpecialistsWithCode(Lib(), cboSpecialista, cboBranca.SelectedKey()); });
    };
    buttons.cmdVisualizza.OnChange = [this] { Guarded([this] { ViewFile(); }); };
}

void frmASLExport::Fill() {
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
    Show({&cboMese, &numAnno, &chkIncludiElaborate, &chkIncludiPrecedenti}, IsMonthly());
    Show({&cboTrimestre, &numAnnoTrimestre}, !IsMonthly());
}

bool frmASLExport::Validate() {
    const bool branch = cboBranca.SelectedKey() != 0 || !aslExportObject_->Region().needsBranch;
    const bool valid = Require(branch, "Branca", cboBranca);
    return RequireDestination(Path()) && valid;
}

std::int32_t frmASLExport::Periodo() const { return IsMonthly() ? cboMese.SelectedKey() : cboTrimestre.Position() + 1; }

std::int16_t frmASLExport::Anno() const {
    return static_cast<std::int16_t>(IsMonthly() ? numAnno.Value() : numAnnoTrimestre.Value());
}

std::string frmASLExport::ChosenCodiceRegionale() const {
    return cboSpecialista.SelectedKey() >= 1 ? cboSpecialista.SelectedColumn("CodiceRegionale")
                                             : GetCodiceRegionale(Lib(), cboBranca.SelectedKey());
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
    component.Visualizza = destination.chkVisualizza.Checked();
    component.Filter.tipiOperazione = 0;
    for (const int position : lstTipoOperazione.Selected()) component.Filter.tipiOperazione |= 1 << position;
    component.Export(Path(), TipoExport(), chkSimulazione.Checked());
}

void frmASLExport::ViewFile() {
    ASLExport& component = *aslExportObject_;
    component.CodiceRegionale = ChosenCodiceRegionale();
    frmSelectFile selection(Lib());
    const std::string folder = TrimmedPath();
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
    ExportDialog::Closed();
}

}  // namespace vlm
