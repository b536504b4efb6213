#pragma once

#include <functional>
#include <memory>

#include "AnomalyReport.h"
#include "dialogs/Dialog.h"

namespace vlm::host {

/// The anomalies of a run, a row for each.
class frmAnomalie : public ui::Dialog {
public:
    /// `open` hands the report's file to the machine's own program.
    frmAnomalie(std::shared_ptr<const AnomalyReport> report, std::function<void()> open);

private:
    ui::Label lblTotale{*this, "lblTotale"};
    ui::Grid grdAnomalie{*this, "grdAnomalie"};
    ui::Button cmdApri{*this, "cmdApri", "&Apri il file"};
    ui::Button cmdChiudi{*this, "cmdChiudi", "Chiudi"};
};

}  // namespace vlm::host
