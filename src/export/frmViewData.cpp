#include "export/frmViewData.h"

#include "export/ViewGrid.h"

namespace vlm {

frmViewData::frmViewData(const Library& library)
    : FormDialog(library, "frmViewData", "Esportazione ASL", KeyPreview::None) {
    AddRow("", {{{&grdList}}});
    AddRow("", {{{&fraSeparator}}});
    SetButtons({&cmdAnnulla}, nullptr, &cmdAnnulla);
    cmdAnnulla.OnChange = [this] { Close(); };
}

void frmViewData::ViewAsDecoded(IRegionASLExport& decoder, std::int32_t records, files::LineReader& file) {
    decoder_ = &decoder;
    records_ = records;
    file_ = &file;
    Lib().Toolkit().ShowModal(*this);
}

void frmViewData::Opening() {
    if (decoder_ != nullptr) grdList.SetModel(std::make_shared<ViewedFile>(*decoder_, records_, *file_));
}

/// The rows go with the decoder and the file that they read.
void frmViewData::Closed() {
    grdList.SetModel(nullptr);
    decoder_ = nullptr;
    file_ = nullptr;
}

}  // namespace vlm
