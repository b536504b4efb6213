#pragma once

#include "dialogs/PickList.h"
#include "frame/ExportDialog.h"
#include "projects/ExportProgetti.h"

namespace vlm {

/// The project export dialog: of which centre, authorisation dates, state and quarters, to which folder.
class frmExportProgetti : public ExportDialog {
public:
    explicit frmExportProgetti(ExportProgetti& component);

    void Closed() override;

private:
    void Fill() override;
    /// Stops at the first field that is not right.
    bool Validate() override;
    void Run() override;

    ExportProgetti* exportProgettiObject_;

    ui::PickList cboStudio{*this, "cboStudio", "Centro"};
    ui::DateField dtFromDate{*this, "dtFromDate", "Da data autorizz."};
    ui::DateField dtToDate{*this, "dtToDate", "A data autorizz."};
    ui::FixedList cboStatoProgetto{*this, "cboStatoProgetto", "Stato progetto"};
    ui::DateField dtFromDataFine{*this, "dtFromDataFine", "Da data fine"};  // not used by the run
    ui::DateField dtToDataFine{*this, "dtToDataFine", "A data fine"};       // not used by the run
    ui::NumberField numAnno{*this, "numAnno", "Periodo", 0, 9999};
    ui::FixedList cboDaTrimestre{*this, "cboDaTrimestre", "Da trimestre"};
    ui::FixedList cboATrimestre{*this, "cboATrimestre", "A trimestre"};
    Destination destination{*this};
    RunButtons buttons{*this};
};

}  // namespace vlm
