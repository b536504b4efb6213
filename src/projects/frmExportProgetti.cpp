#include "frmExportProgetti.h"

#include "frame/Messages.h"
#include "frame/ModGeneral.h"
#include "frame/ModSysTables.h"
#include "values/Number.h"
#include "values/Utf8.h"

namespace vlm {

namespace {

/// "Progetti aperti e chiusi"
constexpr int kEveryState = 2;

std::int16_t QuarterOf(const ui::FixedList& list) { return static_cast<std::int16_t>(list.Position() + 1); }

}  // namespace

frmExportProgetti::frmExportProgetti(ExportProgetti& component)
    : FormDialog(component.Lib(), "frmExportProgetti", "Esportazione progetti", KeyPreview::Frame),
      exportProgettiObject_(&component) {
    LayOut();
    Wire();
}

void frmExportProgetti::LayOut() {
    AddRow("Centro", {{{&cboStudio}}});
    AddRow("Da data autorizz.", {{{&dtFromDate}}});
    AddRow("A data autorizz.", {{{&dtToDate}}});
    AddRow("Stato progetto", {{{&cboStatoProgetto}}});
    AddRow("Da data fine", {{{&dtFromDataFine}}});
    AddRow("A data fine", {{{&dtToDataFine}}});
    AddRow("Periodo", {{{&numAnno}}});
    AddRow("Da trimestre", {{{&cboDaTrimestre}}});
    AddRow("A trimestre", {{{&cboATrimestre}}});
    AddRow("Destinazione:", {{{&txtPath}}, {{&cmdLink}}});
    AddRow("", {{{&chkVisualizza}}});
    SetButtons({&cmdConferma, &cmdVisualizza, &cmdAnnulla}, &cmdConferma, &cmdAnnulla);
}

void frmExportProgetti::Wire() {
    cmdLink.OnChange = [this] { Guarded([this] { Browse(); }); };
    BrowseWith(txtPath, cmdLink.OnChange);
    cmdConferma.OnChange = [this] {
        Guarded([this] {
            if (Validate()) Run();
        });
    };
    cmdAnnulla.OnChange = [this] { Close(); };
}

void frmExportProgetti::Opening() {
    // The destination comes first: whatever fails later, closing keeps it.
    Guarded([this] { txtPath.SetText(GetSetting(Lib(), settings::kASLExportPrestazioni)); });
    cboStatoProgetto.SetItems({"Solo progetti aperti", "Solo progetti chiusi", "Progetti aperti e chiusi"});
    cboStatoProgetto.SetPosition(kEveryState);
    cboDaTrimestre.SetItems({"1", "2", "3", "4"});
    cboATrimestre.SetItems({"1", "2", "3", "4"});
    Guarded([this] { FillPickList(Lib(), cboStudio, PickListKind::Centres); });
}

void frmExportProgetti::Browse() {
    const auto folder = Lib().Toolkit().ChooseFolder(std::string(text::Trim(txtPath.Text())));
    if (folder && !folder->empty()) txtPath.SetText(*folder);
}

bool frmExportProgetti::Validate() {
    const auto missing = [this](const char* field, ui::Control& control) {
        messages::ShowFieldMissing(Lib().Toolkit(), field);
        control.SetFocus();
        return false;
    };
    const std::string_view folder = text::Trim(txtPath.Text());
    if (folder.empty()) return missing("Destinazione", txtPath);
    if (!IsDirectory(folder)) {
        messages::ShowPathNotValid(Lib().Toolkit(), "Destinazione");
        txtPath.SetFocus();
        return false;
    }
    if (numAnno.Value() == 0) return missing("Anno", numAnno);
    if (cboDaTrimestre.Position() < 0) return missing("Da trimestre", cboDaTrimestre);
    if (cboATrimestre.Position() < 0) return missing("A trimestre", cboATrimestre);
    return true;
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
    component.VisualizzaDopo = chkVisualizza.Checked();
    component.ExportFile(txtPath.Text());
    messages::ShowConcluded(Lib().Toolkit());
}

void frmExportProgetti::Closed() {
    exportProgettiObject_ = nullptr;
    Guarded([this] { SaveSetting(Lib(), settings::kASLExportPrestazioni, txtPath.Text()); });
}

}  // namespace vlm
