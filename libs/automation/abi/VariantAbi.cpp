#include <cstring>

#include "abi/Interfaces.h"

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
