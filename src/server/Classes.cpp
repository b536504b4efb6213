#include "Classes.h"

#include <algorithm>
#include <array>

#include "ASLImportPatientFacade.h"
#include "ASLPanoramicoLineFacade.h"
#include "Facade.h"
#include "export/ASLExport.h"
#include "prescriptions/ASLPanoramico.h"
#include "projects/ExportProgetti.h"
#include "puglia/ASLExportPuglia.h"
#include "sicilia/ASLExportSicilia.h"

namespace vlm::server {

namespace {

/// The regions of this library, one line each.
constexpr RegionDescription kRegions[] = {
    kSicilia,
    kPuglia,
};

class ASLExportFacade final : public Facade<_ASLExport> {
public:
    ASLExportFacade() : Facade(kASLExportClass) {}

    HRESULT STDMETHODCALLTYPE ShowDialog() override {
        return Do([&] { component_.ShowDialog(); });
    }
    HRESULT STDMETHODCALLTYPE get_Connection(IDispatch** result) override { return GiveConnection(result, component_); }
    HRESULT STDMETHODCALLTYPE putref_Connection(IDispatch* value) override { return TakeConnection(value, component_); }
    HRESULT STDMETHODCALLTYPE ViewAsDecoded(BSTR FileName, TipoTracciatoConsts TipoTracciato,
                                            VARIANT_BOOL* result) override {
        return GiveTruth(result, [&] { return component_.ViewAsDecoded(com::ToUtf8(FileName), TipoTracciato); });
    }
    HRESULT STDMETHODCALLTYPE get_CHMObject(IDispatch** result) override { return GiveHelp(result, component_); }
    HRESULT STDMETHODCALLTYPE putref_CHMObject(IDispatch* value) override { return TakeHelp(value, component_); }

private:
    ASLExport component_{Lib(), kRegions};
};

class ASLPanoramicoFacade final : public Facade<_ASLPanoramico> {
public:
    ASLPanoramicoFacade() : Facade(kASLPanoramicoClass) {}

    HRESULT STDMETHODCALLTYPE get_CHMObject(IDispatch** result) override { return GiveHelp(result, component_); }
    HRESULT STDMETHODCALLTYPE putref_CHMObject(IDispatch* value) override { return TakeHelp(value, component_); }
    HRESULT STDMETHODCALLTYPE ShowDialog() override {
        return Do([&] { component_.ShowDialog(); });
    }
    HRESULT STDMETHODCALLTYPE ViewAsDecoded(BSTR FileName, TipoTracciatoConsts TipoTracciato,
                                            VARIANT_BOOL* result) override {
        return GiveTruth(result, [&] { return component_.ViewAsDecoded(com::ToUtf8(FileName), TipoTracciato); });
    }
    HRESULT STDMETHODCALLTYPE get_Connection(IDispatch** result) override { return GiveConnection(result, component_); }
    HRESULT STDMETHODCALLTYPE putref_Connection(IDispatch* value) override { return TakeConnection(value, component_); }

private:
    ASLPanoramico component_{Lib()};
};

class ExportProgettiFacade final : public Facade<_ExportProgetti> {
public:
    ExportProgettiFacade() : Facade(kExportProgettiClass) {}

    HRESULT STDMETHODCALLTYPE get_Connection(IDispatch** result) override { return GiveConnection(result, component_); }
    HRESULT STDMETHODCALLTYPE putref_Connection(IDispatch* value) override { return TakeConnection(value, component_); }
    HRESULT STDMETHODCALLTYPE get_CHMObject(IDispatch** result) override { return GiveHelp(result, component_); }
    HRESULT STDMETHODCALLTYPE putref_CHMObject(IDispatch* value) override { return TakeHelp(value, component_); }
    HRESULT STDMETHODCALLTYPE ShowDialog() override {
        return Do([&] { component_.ShowDialog(); });
    }

private:
    ExportProgetti component_{Lib()};
};

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
