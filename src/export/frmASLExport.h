#pragma once

#include <cstdint>
#include <string>

#include "dialogs/PickList.h"
#include "export/ASLExport.h"
#include "frame/FormDialog.h"

namespace vlm {

/// The service export dialog: what to export, from which period, branch and specialist, to which folder. It stays open
/// after a run. A Puglia clinic exports monthly only.
class frmASLExport : public FormDialog {
public:
    explicit frmASLExport(ASLExport& component);

    void Opening() override;
    void Closed() override;
    void HelpRequested() override;

private:
    void Wire();
    void LayOut();
    void ProposePeriod();
    void ApplyRegion();
    void ShowFieldsOfType();
    void LoadSpecialists();
    void Browse();
    bool Validate();
    void Run();
    void ViewFile();

    bool IsMonthly() const { return optTipoExport.Position() != 1; }
    std::int32_t TipoExport() const { return IsMonthly() ? ttM : ttS; }
    std::int32_t Periodo() const;
    std::int16_t Anno() const;
    std::string ChosenCodiceRegionale() const;
    std::string CodiceRegionaleOfBranch() const;

    ASLExport* aslExportObject_;

    ui::Frame fraTipoExport{*this, "fraTipoExport", " Tipo esportazione "};
    ui::OptionGroup optTipoExport{*this, "optTipoExport", {"Mensile", "Trimestrale"}};
    ui::PickList cboMese{*this, "cboMese", "Periodo"};
    ui::FixedList cboTrimestre{*this, "cboTrimestre", "Periodo"};
    ui::NumberField numAnno{*this, "numAnno", "Anno", 2000, 3000};
    ui::NumberField numAnnoTrimestre{*this, "numAnnoTrimestre", "Anno", 2000, 3000};
    ui::PickList cboBranca{*this, "cboBranca", "Branca"};
    ui::PickList cboSpecialista{*this, "cboSpecialista", "Medico"};
    ui::MultiList lstTipoOperazione{*this, "lstTipoOperazione", "Tipo operazione"};
    ui::TextField txtPath{*this, "txtPath", "Destinazione:"};
    ui::Button cmdLink{*this, "cmdLink", "..."};
    ui::CheckBox chkVisualizza{*this, "chkVisualizza", "Visualizza &dopo elaborazione"};
    ui::CheckBox chkSimulazione{*this, "chkSimulazione", "&Simulazione"};
    ui::CheckBox chkIncludiElaborate{*this, "chkIncludiElaborate", "Includi prestazioni &elaborate nel periodo"};
    ui::CheckBox chkIncludiPrecedenti{*this, "chkIncludiPrecedenti", "&Includi prestazioni da periodi precedenti"};
    ui::Button cmdConferma{*this, "cmdConferma", "&Avvia"};
    ui::Button cmdVisualizza{*this, "cmdVisualizza", "&Visualizza ..."};
    ui::Button cmdAnnulla{*this, "cmdAnnulla", "Chiudi"};
};

}  // namespace vlm
