#pragma once

#include <cstdint>
#include <string>

#include "dialogs/PickList.h"
#include "export/ASLExport.h"
#include "frame/ExportDialog.h"

namespace vlm {

/// The service export dialog: what to export, from which period, branch and specialist, to which folder. What of it the
/// clinic's region has no use for is disabled.
class frmASLExport : public ExportDialog {
public:
    explicit frmASLExport(ASLExport& component);

    void Closed() override;
    void HelpRequested() override;

private:
    void Fill() override;
    bool Validate() override;
    void Run() override;
    void ProposePeriod();
    void ApplyRegion();
    void ShowFieldsOfType();
    void ViewFile();

    bool IsMonthly() const { return optTipoExport.Position() != 1; }
    std::int32_t TipoExport() const { return IsMonthly() ? ttM : ttS; }
    std::int32_t Periodo() const;
    std::int16_t Anno() const;
    std::string ChosenCodiceRegionale() const;

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
    Destination destination{*this};
    ui::CheckBox chkSimulazione{*this, "chkSimulazione", "&Simulazione"};
    ui::CheckBox chkIncludiElaborate{*this, "chkIncludiElaborate", "Includi prestazioni &elaborate nel periodo"};
    ui::CheckBox chkIncludiPrecedenti{*this, "chkIncludiPrecedenti", "&Includi prestazioni da periodi precedenti"};
    RunButtons buttons{*this};
};

}  // namespace vlm
