#pragma once

#include "Facade.h"
#include "prescriptions/ASLPanoramico.h"

namespace vlm::server {

class ASLPanoramicoFacade final : public Facade<_ASLPanoramico> {
public:
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

}  // namespace vlm::server
