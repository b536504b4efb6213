#include "frmInpsPIN.h"

#include "frame/Settings.h"

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

}  // namespace

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

}  // namespace vlm
