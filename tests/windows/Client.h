#pragma once

#include <array>
#include <gtest/gtest.h>
#include <string>

#include "MemberTables.h"
#include "automation/LateBound.h"
#include "server/VlmASLServicesLib.h"
#include "support/ForeignObject.h"

namespace vlm::test {

/// A class as a client knows it.
struct KnownClass {
    const char* name;
    GUID classId;
    GUID interfaceId;
    std::span<const com::Member> members;
};

inline const std::array<KnownClass, 5>& KnownClasses() {
    using namespace server;
    static const std::array<KnownClass, 5> kClasses = {{
        {"ASLExport", kASLExportClass, _ASLExport::kId, MembersOf<_ASLExport>()},
        {"ASLPanoramico", kASLPanoramicoClass, _ASLPanoramico::kId, MembersOf<_ASLPanoramico>()},
        {"ASLPanoramicoLine", kASLPanoramicoLineClass, _ASLPanoramicoLine::kId, MembersOf<_ASLPanoramicoLine>()},
        {"ExportProgetti", kExportProgettiClass, _ExportProgetti::kId, MembersOf<_ExportProgetti>()},
        {"ASLImportPatient", kASLImportPatientClass, _ASLImportPatient::kId, MembersOf<_ASLImportPatient>()},
    }};
    return kClasses;
}

/// What CreateObject does: the class by its programmatic name, then the object.
inline HRESULT CreateByName(const char* className, const GUID& iid, void** object) {
    CLSID classId{};
    const com::WideText name = com::ToWide(std::string(server::kLibraryName) + "." + className);
    const HRESULT found = CLSIDFromProgID(name.c_str(), &classId);
    return FAILED(found) ? found : CoCreateInstance(classId, nullptr, CLSCTX_INPROC_SERVER, iid, object);
}

template <typename Interface = IDispatch>
com::Ref<Interface> Created(const char* className) {
    com::Ref<Interface> object;
    EXPECT_EQ(CreateByName(className, com::kIdOf<Interface>, object.ReceiveAny()), S_OK) << className;
    return object;
}

/// The registered type library; nothing when none is registered.
com::Ref<ITypeLib> RegisteredTypeLibrary();

}  // namespace vlm::test
