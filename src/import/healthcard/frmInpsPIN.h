#pragma once

#include <string>

#include "frame/FormDialog.h"

namespace vlm {

/// Asks for the PIN of the specialist who asks for the health-card lists.
class frmInpsPIN : public FormDialog {
public:
    enum Result { Confirmed = 6, Cancelled = 7 };

    explicit frmInpsPIN(const Library& library);

    int DialogResult() const noexcept { return result_; }
    /// What was confirmed; as it was typed, no form is asked of it.
    const std::string& PIN() const noexcept { return pin_; }

    void FrameClose() override { CloseWith(Cancelled); }

private:
    void CloseWith(Result result);

    int result_ = Cancelled;
    std::string pin_;

    ui::Label lblAttenzione{*this, "lblAttenzione", "ATTENZIONE !"};
    ui::Label lblSpiegazione{*this, "lblSpiegazione"};
    ui::TextField txtConferma{*this, "txtConferma"};
    ui::Button cmdConferma{*this, "cmdConferma", "Conferma"};
    ui::Button cmdAnnulla{*this, "cmdAnnulla", "Annulla"};
};

}  // namespace vlm
