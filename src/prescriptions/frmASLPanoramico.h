#pragma once

#include "dialogs/PickList.h"
#include "frame/FormDialog.h"
#include "prescriptions/ASLPanoramico.h"

namespace vlm {

/// The prescription export dialog: whose prescriptions, from which days, to which file. It stays open after a run.
class frmASLPanoramico : public FormDialog {
public:
    explicit frmASLPanoramico(ASLPanoramico& component);

    void Opening() override;
    void Closed() override;

private:
    void LayOut();
    void Wire();
    void LoadSpecialists();
    void Browse();
    /// Tells the first field that is not right and moves the focus there.
    bool Validate();
    void Run();

    ASLPanoramico* aslPanoramicoObject_;

    ui::PickList cboBranca{*this, "cboBranca", "Branca"};
    ui::PickList cboSpecialista{*this, "cboSpecialista", "Medico"};
    ui::DateField dtFromDate{*this, "dtFromDate", "Da data"};
    ui::DateField dtToDate{*this, "dtToDate", "A data"};
    ui::TextField txtPath{*this, "txtPath", "Destinazione:"};
    ui::Button cmdLink{*this, "cmdLink", "..."};
    ui::CheckBox chkVisualizza{*this, "chkVisualizza", "Visualizza &dopo elaborazione"};  // has no effect yet
    ui::Button cmdConferma{*this, "cmdConferma", "&Avvia"};
    ui::Button cmdVisualizza{*this, "cmdVisualizza", "&Visualizza ..."};  // does nothing: the file has no viewer
    ui::Button cmdAnnulla{*this, "cmdAnnulla", "Chiudi"};
};

}  // namespace vlm
