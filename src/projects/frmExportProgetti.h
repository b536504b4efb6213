#pragma once

#include "dialogs/PickList.h"
#include "frame/FormDialog.h"
#include "projects/ExportProgetti.h"

namespace vlm {

/// The project export dialog: of which centre, authorisation dates, state and quarters, to which folder. It stays open
/// after a run.
class frmExportProgetti : public FormDialog {
public:
    explicit frmExportProgetti(ExportProgetti& component);

    void Opening() override;
    void Closed() override;

private:
    void LayOut();
    void Wire();
    void Browse();
    /// Tells the first field that is not right and moves the focus there.
    bool Validate();
    void Run();

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
    ui::TextField txtPath{*this, "txtPath", "Destinazione:"};
    ui::Button cmdLink{*this, "cmdLink", "..."};
    ui::CheckBox chkVisualizza{*this, "chkVisualizza", "Visualizza &dopo elaborazione"};
    ui::Button cmdConferma{*this, "cmdConferma", "&Avvia"};
    ui::Button cmdVisualizza{*this, "cmdVisualizza", "&Visualizza ..."};  // does nothing: the file has no viewer
    ui::Button cmdAnnulla{*this, "cmdAnnulla", "Chiudi"};
};

}  // namespace vlm
