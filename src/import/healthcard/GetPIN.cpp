#include "healthcard/GetPIN.h"

#include "frmInpsPIN.h"

namespace vlm {

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
