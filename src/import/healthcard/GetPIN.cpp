#include "healthcard/GetPIN.h"

#include "frame/FormDialog.h"
#include "frame/ModGeneral.h"

namespace vlm {

namespace {

// The address of the system's site is a setting of the deployment.
constexpr const char* kSiteSetting = "SistemaTSSito";
constexpr const char* kSiteUnknown = "del Sistema TS";

std::string Explanation(const Library& library) {
    return std::string(
               "Specificare il codice PIN: si ricorda che il codice PIN è composto da 10 caratteri numerici; i primi 4 "
               "vengono consegnati dall'ASL in apposita busta; gli altri 6 devono essere stampati dall'area riservata "
               "del  sito ") +
           GetSetting(library, kSiteSetting, kSiteUnknown) + " alla voce \"Profilo utente\".";
}

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

frmInpsPIN::frmInpsPIN(const Library& library)
    : FormDialog(library, "frmInpsPIN", "Cambia Password", KeyPreview::None) {
    lblSpiegazione.SetCaption(Explanation(library));
    txtConferma.password = true;
    AddRow("", {{{&lblAttenzione}}});
    AddRow("", {{{&lblSpiegazione}}});
    AddRow("PIN", {{{&txtConferma}}});
    SetButtons({&cmdConferma, &cmdAnnulla}, &cmdConferma, &cmdAnnulla);
    cmdConferma.OnChange = [this] { CloseWith(Confirmed); };
    cmdAnnulla.OnChange = [this] { CloseWith(Cancelled); };
}

void frmInpsPIN::CloseWith(Result result) {
    result_ = result;
    if (result == Confirmed) pin_ = txtConferma.Text();
    Close();
}

}  // namespace

std::string GetPIN(Library& library, std::int32_t specialist, bool forceNew) {
    if (forceNew) library.Pins().Remove(specialist);
    std::string pin = library.Pins().Get(specialist);
    if (!pin.empty()) return pin;
    frmInpsPIN dialog(library);
    library.Toolkit().ShowModal(dialog);
    if (dialog.DialogResult() != frmInpsPIN::Confirmed || dialog.PIN().empty()) return {};
    library.Pins().Set(specialist, dialog.PIN());
    return dialog.PIN();
}

}  // namespace vlm
