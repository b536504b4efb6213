#include <cstdlib>
#include <cstring>

#include "abi/Interfaces.h"

namespace {

/// Eight bytes, so that the characters stay aligned; the length is in the last four.
constexpr std::size_t kHead = 8;
constexpr UINT kLongest = 0x3FFFFFFF;

}  // namespace

BSTR SysAllocStringLen(const OLECHAR* text, UINT length) {
    if (length > kLongest) return nullptr;
    const std::uint32_t bytes = length * static_cast<std::uint32_t>(sizeof(OLECHAR));
    auto* block = static_cast<BYTE*>(std::calloc(1, kHead + bytes + sizeof(OLECHAR)));
    if (block == nullptr) return nullptr;
    std::memcpy(block + kHead - sizeof bytes, &bytes, sizeof bytes);
    if (text != nullptr && bytes != 0) std::memcpy(block + kHead, text, bytes);
    return reinterpret_cast<BSTR>(block + kHead);
}

BSTR SysAllocString(const OLECHAR* text) {
    if (text == nullptr) return nullptr;
    UINT length = 0;
    while (text[length] != 0) ++length;
    return SysAllocStringLen(text, length);
}

void SysFreeString(BSTR text) {
    if (text != nullptr) std::free(reinterpret_cast<BYTE*>(text) - kHead);
}

UINT SysStringByteLen(BSTR text) {
    std::uint32_t bytes = 0;
    if (text != nullptr) std::memcpy(&bytes, reinterpret_cast<BYTE*>(text) - sizeof bytes, sizeof bytes);
    return bytes;
}

UINT SysStringLen(BSTR text) { return SysStringByteLen(text) / static_cast<UINT>(sizeof(OLECHAR)); }

void VariantInit(VARIANT* value) { std::memset(static_cast<void*>(value), 0, sizeof *value); }

HRESULT VariantClear(VARIANT* value) {
    if ((value->vt & VT_BYREF) == 0) {
        if ((value->vt & VT_ARRAY) != 0) {
            if (value->parray != nullptr) SafeArrayDestroy(value->parray);
        } else if (value->vt == VT_BSTR) {
            SysFreeString(value->bstrVal);
        } else if ((value->vt == VT_DISPATCH || value->vt == VT_UNKNOWN) && value->punkVal != nullptr) {
            value->punkVal->Release();
        }
    }
    VariantInit(value);
    return S_OK;
}

HRESULT VariantCopy(VARIANT* target, const VARIANT* source) {
    if (target == source) return S_OK;
    VARIANT copy = *source;
    if ((source->vt & VT_BYREF) == 0) {
        if ((source->vt & VT_ARRAY) != 0) {
            copy.parray = nullptr;
            if (source->parray != nullptr) {
                const HRESULT result = SafeArrayCopy(source->parray, &copy.parray);
                if (FAILED(result)) return result;
            }
        } else if (source->vt == VT_BSTR && source->bstrVal != nullptr) {
            copy.bstrVal = SysAllocStringLen(source->bstrVal, SysStringLen(source->bstrVal));
            if (copy.bstrVal == nullptr) return E_OUTOFMEMORY;
        } else if ((source->vt == VT_DISPATCH || source->vt == VT_UNKNOWN) && source->punkVal != nullptr) {
            source->punkVal->AddRef();
        }
    }
    VariantClear(target);
    *target = copy;
    return S_OK;
}
