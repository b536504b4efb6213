#include "server/ASLImportPatientFacade.h"

namespace vlm::server {

HRESULT ASLImportPatientFacade::Refuse(const char* member) noexcept {
    return Do([&] {
        throw Error("ASLImportPatient." + std::string(member) + " non è disponibile in questa versione.", E_NOTIMPL);
    });
}

}  // namespace vlm::server
