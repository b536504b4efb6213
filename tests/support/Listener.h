#pragma once

#include <functional>
#include <gtest/gtest.h>
#include <vector>

#include "automation/Object.h"
#include "server/VlmASLServicesLib.h"

namespace vlm::test {

/// A listener that hears percents, and may leave while it hears.
class Listener final : public com::Object<IDispatch> {
public:
    explicit Listener(int& alive) : alive_(alive) { ++alive_; }
    std::vector<std::int32_t> heard;
    std::function<void()> onHeard;
    HRESULT answer = S_OK;

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
        return DISP_E_UNKNOWNNAME;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* given, VARIANT*, EXCEPINFO*,
                                     UINT*) override {
        EXPECT_EQ(id, server::kReadingFileId);
        EXPECT_EQ(flags, DISPATCH_METHOD);
        EXPECT_EQ(given->cArgs, 1u);
        EXPECT_EQ(given->rgvarg[0].vt, VT_I4);
        heard.push_back(given->rgvarg[0].lVal);
        if (onHeard) onHeard();
        return answer;
    }

private:
    ~Listener() override { --alive_; }
    void* Find(const IID& iid) noexcept override {
        return com::Same(iid, server::k__ASLImportPatientId) ? static_cast<IDispatch*>(this) : Object::Find(iid);
    }
    int& alive_;
};

}  // namespace vlm::test
