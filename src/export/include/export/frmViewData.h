#pragma once

#include <cstdint>

#include "dialogs/Grid.h"
#include "export/IRegionASLExport.h"
#include "files/LineReader.h"
#include "frame/FormDialog.h"

namespace vlm {

/// Shows an export file in a grid, a row for each line, decoded by the file's region.
class frmViewData : public FormDialog {
public:
    explicit frmViewData(const Library& library);

    /// Shows the viewer and returns when it closes. `file` stands on its first line; its owner closes it.
    void ViewAsDecoded(IRegionASLExport& decoder, std::int32_t records, files::LineReader& file);

    void Opening() override;
    void Closed() override;

private:
    IRegionASLExport* decoder_ = nullptr;
    std::int32_t records_ = 0;
    files::LineReader* file_ = nullptr;

    ui::Grid grdList{*this, "grdList"};
    ui::Frame fraSeparator{*this, "fraSeparator"};
    ui::Button cmdAnnulla{*this, "cmdAnnulla", "Chiudi"};
};

}  // namespace vlm
