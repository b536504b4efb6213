#include "frmExportProgetti.h"

#include "frame/ModGeneral.h"
#include "frame/ModSysTables.h"
#include "values/Number.h"

namespace vlm {

namespace {

/// "Progetti aperti e chiusi"
constexpr int kEveryState = 2;

std::int16_t QuarterOf(const ui::FixedList& list) { return static_cast<std::int16_t>(list.Position() + 1); }

}  // namespace

frmExportProgetti::frmExportProgetti(ExportProgetti& component)
    : ExportDialog(component.Lib(), "frmExportProgetti", "Esportazione progetti", settings::kASLExportPrestazioni),
      exportProgettiObject_(&component) {
    AddRow("Centro", {{{&cboStudio}}});
    AddRow("Da data autorizz.", {{{&dtFromDate}}});
    AddRow("A data autorizz.", {{{&dtToDate}}});
    AddRow("Stato progetto", {{{&cboStatoProgetto}}});
    AddRow("Da data fine", {{{&dtFromDataFine}}});
    AddRow("A data fine", {{{&dtToDataFine}}});
    AddRow("Periodo", {{{&numAnno}}});
    AddRow("Da trimestre", {{{&cboDaTrimestre}}});
    AddRow("A trimestre", {{{&cboATrimestre}}});
    AddDestinationRows();
}

void frmExportProgetti::Fill() {
    cboStatoProgetto.SetItems({"Solo progetti aperti", "Solo progetti chiusi", "Progetti aperti e chiusi"});
    cboStatoProgetto.SetPosition(kEveryState);
    cboDaTrimestre.SetItems({"1", "2", "3", "4"});
    cboATrimestre.SetItems({"1", "2", "3", "4"});
    Guarded([this] { FillPickList(Lib(), cboStudio, PickListKind::Centres); });
}

bool frmExportProgetti::Validate() {
    return RequireDestination(TrimmedPath()) && Require(numAnno.Value() != 0, "Anno", numAnno) &&
           Require(cboDaTrimestre.Position() >= 0, "Da trimestre", cboDaTrimestre) &&
           Require(cboATrimestre.Position() >= 0, "A trimestre", cboATrimestre);
}

void frmExportProgetti::Run() {
    ExportProgetti& component = *exportProgettiObject_;
    component.IDStudio = cboStudio.SelectedKey();
    // An empty date leaves the bound of an earlier run.
    if (dtFromDate.Value()) component.DataAutorizzazioneDa = *dtFromDate.Value();
    if (dtToDate.Value()) component.DataAutorizzazioneA = *dtToDate.Value();
    component.StatoProgetto = cboStatoProgetto.Position() < 0 ? kEveryState : cboStatoProgetto.Position();
    component.Anno = text::ToInt16(numAnno.Value(), "Anno");
    component.DaTrimestre = QuarterOf(cboDaTrimestre);
    component.ATrimestre = QuarterOf(cboATrimestre);
    component.VisualizzaDopo = destination.chkVisualizza.Checked();
    component.ExportFile(Path());
    messages::ShowConcluded(Lib().Toolkit());
}

void frmExportProgetti::Closed() {
    exportProgettiObject_ = nullptr;
    ExportDialog::Closed();
}

}  // namespace vlm
