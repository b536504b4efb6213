#include "server/ASLImportPatientFacade.h"

namespace vlm::server {

void* ASLImportPatientFacade::Find(const IID& iid) noexcept {
    if (com::Same(iid, com::kIdOf<IProvideClassInfo>)) return static_cast<IProvideClassInfo*>(this);
    return Facade::Find(iid);
}

HRESULT ASLImportPatientFacade::GetGUID(DWORD kind, GUID* guid) {
    if (guid == nullptr) return E_POINTER;
    *guid = com::kNoId;
    if (kind != GUIDKIND_DEFAULT_SOURCE_DISP_IID) return E_INVALIDARG;
    *guid = k__ASLImportPatientId;
    return S_OK;
}

HRESULT ASLImportPatientFacade::Refuse(const char* member) noexcept {
    return Do([&] {
        throw Error("ASLImportPatient." + std::string(member) + " non è disponibile in questa versione.", E_NOTIMPL);
    });
}

}  // namespace vlm::server
