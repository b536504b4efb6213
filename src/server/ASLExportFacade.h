#pragma once

#include "Facade.h"
#include "Regions.h"
#include "export/ASLExport.h"

namespace vlm::server {

class ASLExportFacade final : public Facade<_ASLExport> {
public:
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
    ASLExport component_{Lib(), [&library = Lib()](std::int32_t region) { return MakeRegion(library, region); }};
};

}  // namespace vlm::server
