#include "Classes.h"

#include <algorithm>
#include <array>

#include "ASLExportFacade.h"
#include "ASLImportPatientFacade.h"
#include "ASLPanoramicoFacade.h"
#include "ASLPanoramicoLineFacade.h"
#include "ExportProgettiFacade.h"

namespace vlm::server {

namespace {

template <typename Class>
com::Ref<IUnknown> Create() {
    return com::Ref<IUnknown>::Adopt(com::Make<Class>().Detach()->AsUnknown());
}

}  // namespace

std::span<const ClassEntry> Classes() noexcept {
    static constexpr std::array kClasses = {
        ClassEntry{kASLExportClass, "ASLExport", &Create<ASLExportFacade>},
        ClassEntry{kASLPanoramicoClass, "ASLPanoramico", &Create<ASLPanoramicoFacade>},
        ClassEntry{kASLPanoramicoLineClass, "ASLPanoramicoLine", &Create<ASLPanoramicoLineFacade>},
        ClassEntry{kExportProgettiClass, "ExportProgetti", &Create<ExportProgettiFacade>},
        ClassEntry{kASLImportPatientClass, "ASLImportPatient", &Create<ASLImportPatientFacade>},
    };
    return kClasses;
}

const ClassEntry* FindClass(const GUID& classId) noexcept {
    const std::span<const ClassEntry> classes = Classes();
    const auto found = std::find_if(classes.begin(), classes.end(),
                                    [&](const ClassEntry& entry) { return com::Same(entry.id, classId); });
    return found == classes.end() ? nullptr : &*found;
}

}  // namespace vlm::server
