#include "LoadedLibrary.h"

#include "automation/ErrorReport.h"

namespace vlm::host {

LoadedLibrary::LoadedLibrary(const Library::Services& services) {
    if (VlmSetServices(&services) != S_OK) throw Error("La libreria dei componenti è già in uso.");
}

com::LateBound LoadedLibrary::Create(const GUID& classId) const {
    com::Ref<IClassFactory> factory;
    HRESULT result = DllGetClassObject(classId, com::kIdOf<IClassFactory>, factory.ReceiveAny());
    com::Ref<IDispatch> component;
    if (SUCCEEDED(result)) {
        result = factory->CreateInstance(nullptr, com::kIdOf<IDispatch>, component.ReceiveAny());
    }
    if (FAILED(result)) throw com::TakeError(result, "La creazione del componente");
    return com::LateBound(std::move(component));
}

std::optional<GUID> ClassOf(const std::string& component) {
    if (component == "ASLExport") return server::kASLExportClass;
    if (component == "ASLPanoramico") return server::kASLPanoramicoClass;
    if (component == "ExportProgetti") return server::kExportProgettiClass;
    if (component == "ASLImportPatient") return server::kASLImportPatientClass;
    return std::nullopt;
}

}  // namespace vlm::host
