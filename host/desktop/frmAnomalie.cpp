#include "frmAnomalie.h"

#include "values/Number.h"

namespace vlm::host {

frmAnomalie::frmAnomalie(std::shared_ptr<const AnomalyReport> report, std::function<void()> open)
    : Dialog("frmAnomalie", "Anomalie riscontrate") {
    AddRow("", {{{&lblTotale}}});
    AddRow("", {{{&grdAnomalie}}});
    SetButtons({&cmdApri, &cmdChiudi}, nullptr, &cmdChiudi);
    const int count = report->RowCount();
    lblTotale.SetCaption(count == 1 ? "1 anomalia" : text::FormatInteger(count, true) + " anomalie");
    grdAnomalie.SetModel(std::move(report));
    cmdApri.OnChange = std::move(open);
    cmdChiudi.OnChange = [this] { Close(); };
}

}  // namespace vlm::host
