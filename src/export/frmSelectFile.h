#pragma once

#include <string>

#include "frame/FormDialog.h"

namespace vlm {

/// Lets the user pick an export file to look at, and tells whether it is there, when it was last changed and how large
/// it is.
class frmSelectFile : public FormDialog {
public:
    explicit frmSelectFile(const Library& library);

    /// Start folder of the browse dialog.
    std::string Folder;
    /// Before showing: what the path field starts with. Afterwards: the path as confirmed.
    std::string FileName;
    bool Cancel() const noexcept { return cancel_; }

    void Opening() override;
    void FrameClose() override;
    void Closed() override;

private:
    void Browse();
    void Refresh();
    void CloseWith(bool cancel);

    bool cancel_ = false;

    ui::TextField txtPath{*this, "txtPath", "File da visualizzare"};
    ui::Button cmdLink{*this, "cmdLink", "..."};
    ui::Label lblNonTrovato{*this, "lblNonTrovato", "(NON TROVATO)"};
    ui::Label lblData{*this, "lblData", "Data ultima modifica:"};
    ui::Label lblDataValore{*this, "lblDataValore"};
    ui::Label lblDimensione{*this, "lblDimensione", "Dimensione:"};
    ui::Label lblDimensioneValore{*this, "lblDimensioneValore"};
    ui::Button cmdConferma{*this, "cmdConferma", "&Conferma"};
    ui::Button cmdAnnulla{*this, "cmdAnnulla", "Annulla"};
};

}  // namespace vlm
