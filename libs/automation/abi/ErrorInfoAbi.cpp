#include <atomic>
#include <cstring>
#include <new>

#include "abi/Interfaces.h"

namespace {

constexpr GUID kUnknownId{0x00000000, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
constexpr GUID kErrorInfoId{0x1CF2B120, 0x547D, 0x101B, {0x8E, 0x65, 0x08, 0x00, 0x2B, 0x2B, 0xD1, 0x19}};
constexpr GUID kCreateErrorInfoId{0x22F03340, 0x547D, 0x101B, {0x8E, 0x65, 0x08, 0x00, 0x2B, 0x2B, 0xD1, 0x19}};

bool Same(REFGUID left, REFGUID right) { return std::memcmp(&left, &right, sizeof(GUID)) == 0; }

HRESULT Replace(BSTR& kept, LPOLESTR text) {
    const BSTR copy = SysAllocString(text);
    if (text != nullptr && copy == nullptr) return E_OUTOFMEMORY;
    SysFreeString(kept);
    kept = copy;
    return S_OK;
}

HRESULT HandOut(BSTR kept, BSTR* out) {
    if (out == nullptr) return E_POINTER;
    *out = kept == nullptr ? nullptr : SysAllocStringLen(kept, SysStringLen(kept));
    return kept != nullptr && *out == nullptr ? E_OUTOFMEMORY : S_OK;
}

class ErrorObject final : public IErrorInfo, public ICreateErrorInfo {
public:
    HRESULT QueryInterface(REFIID iid, void** object) override {
        if (object == nullptr) return E_POINTER;
        *object = nullptr;
        if (Same(iid, kUnknownId) || Same(iid, kErrorInfoId)) *object = static_cast<IErrorInfo*>(this);
        if (Same(iid, kCreateErrorInfoId)) *object = static_cast<ICreateErrorInfo*>(this);
        if (*object == nullptr) return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    ULONG AddRef() override { return ++references_; }
    ULONG Release() override {
        const ULONG left = --references_;
        if (left == 0) delete this;
        return left;
    }

    HRESULT SetGUID(REFGUID guid) override {
        guid_ = guid;
        return S_OK;
    }
    HRESULT SetSource(LPOLESTR source) override { return Replace(source_, source); }
    HRESULT SetDescription(LPOLESTR description) override { return Replace(description_, description); }
    HRESULT SetHelpFile(LPOLESTR helpFile) override { return Replace(helpFile_, helpFile); }
    HRESULT SetHelpContext(DWORD helpContext) override {
        helpContext_ = helpContext;
        return S_OK;
    }

    HRESULT GetGUID(GUID* guid) override {
        if (guid == nullptr) return E_POINTER;
        *guid = guid_;
        return S_OK;
    }
    HRESULT GetSource(BSTR* source) override { return HandOut(source_, source); }
    HRESULT GetDescription(BSTR* description) override { return HandOut(description_, description); }
    HRESULT GetHelpFile(BSTR* helpFile) override { return HandOut(helpFile_, helpFile); }
    HRESULT GetHelpContext(DWORD* helpContext) override {
        if (helpContext == nullptr) return E_POINTER;
        *helpContext = helpContext_;
        return S_OK;
    }

private:
    ~ErrorObject() {
        SysFreeString(source_);
        SysFreeString(description_);
        SysFreeString(helpFile_);
    }

    std::atomic<ULONG> references_{1};
    GUID guid_{};
    BSTR source_ = nullptr;
    BSTR description_ = nullptr;
    BSTR helpFile_ = nullptr;
    DWORD helpContext_ = 0;
};

/// One error object for each thread, as automation has it.
class ThreadError {
public:
    ThreadError() = default;
    ThreadError(const ThreadError&) = delete;
    ThreadError& operator=(const ThreadError&) = delete;
    ~ThreadError() { Set(nullptr); }
    void Set(IErrorInfo* info) {
        if (info != nullptr) info->AddRef();
        IErrorInfo* old = Take();
        info_ = info;
        if (old != nullptr) old->Release();
    }
    IErrorInfo* Take() {
        IErrorInfo* info = info_;
        info_ = nullptr;
        return info;
    }

private:
    IErrorInfo* info_ = nullptr;
};

thread_local ThreadError threadError;

}  // namespace

HRESULT CreateErrorInfo(ICreateErrorInfo** info) {
    if (info == nullptr) return E_POINTER;
    *info = new (std::nothrow) ErrorObject;
    return *info == nullptr ? E_OUTOFMEMORY : S_OK;
}

HRESULT SetErrorInfo(ULONG, IErrorInfo* info) {
    threadError.Set(info);
    return S_OK;
}

HRESULT GetErrorInfo(ULONG, IErrorInfo** info) {
    if (info == nullptr) return E_POINTER;
    *info = threadError.Take();
    return *info == nullptr ? S_FALSE : S_OK;
}
