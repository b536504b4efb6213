#pragma once

#include "Facade.h"
#include "projects/ExportProgetti.h"

namespace vlm::server {

class ExportProgettiFacade final : public Facade<_ExportProgetti> {
public:
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

}  // namespace vlm::server
