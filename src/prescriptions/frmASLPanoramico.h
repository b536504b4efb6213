#pragma once

#include "dialogs/PickList.h"
#include "frame/ExportDialog.h"
#include "prescriptions/ASLPanoramico.h"

namespace vlm {

/// The prescription export dialog: whose prescriptions, from which days, to which file.
class frmASLPanoramico : public ExportDialog {
public:
    explicit frmASLPanoramico(ASLPanoramico& component);

    void Closed() override;

private:
    void Fill() override;
    /// Stops at the first field that is not right.
    bool Validate() override;
    void Run() override;
    std::optional<std::string> Choose() override;

    ASLPanoramico* aslPanoramicoObject_;

    ui::PickList cboBranca{*this, "cboBranca", "Branca"};
    ui::PickList cboSpecialista{*this, "cboSpecialista", "Medico"};
    ui::DateField dtFromDate{*this, "dtFromDate", "Da data"};
    ui::DateField dtToDate{*this, "dtToDate", "A data"};
    Destination destination{*this};  // nothing is shown after the run yet
    RunButtons buttons{*this};
};

}  // namespace vlm
