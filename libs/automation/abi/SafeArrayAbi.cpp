#include <cstdlib>
#include <cstring>

#include "abi/Interfaces.h"

namespace {

/// Where the array's element type stands: hidden before the array, in the last four of these bytes.
constexpr std::size_t kTypeHead = 16;
constexpr USHORT kHasType = 0x0080;
constexpr UINT kMostDimensions = 16;

ULONG SizeOf(VARTYPE type) {
    switch (type) {
        case VT_I1:
        case VT_UI1:
            return 1;
        case VT_I2:
        case VT_UI2:
        case VT_BOOL:
            return 2;
        case VT_I4:
        case VT_UI4:
        case VT_INT:
        case VT_UINT:
        case VT_R4:
        case VT_ERROR:
            return 4;
        case VT_I8:
        case VT_UI8:
        case VT_R8:
        case VT_CY:
        case VT_DATE:
        case VT_BSTR:
        case VT_DISPATCH:
        case VT_UNKNOWN:
            return 8;
        case VT_DECIMAL:
            return sizeof(DECIMAL);
        case VT_VARIANT:
            return sizeof(VARIANT);
        default:
            return 0;
    }
}

std::size_t CountOf(const SAFEARRAY& array) {
    std::size_t count = 1;
    for (USHORT i = 0; i < array.cDims; ++i) count *= array.rgsabound[i].cElements;
    return count;
}

VARTYPE TypeOf(const SAFEARRAY& array) {
    std::uint32_t type = 0;
    std::memcpy(&type, reinterpret_cast<const BYTE*>(&array) - sizeof type, sizeof type);
    return static_cast<VARTYPE>(type);
}

/// `source` null clears the elements, else copies them.
HRESULT EachElement(SAFEARRAY& array, const SAFEARRAY* source) {
    const VARTYPE type = TypeOf(array);
    const std::size_t count = CountOf(array);
    VARIANT element;
    HRESULT result = S_OK;
    for (std::size_t i = 0; i < count && SUCCEEDED(result); ++i) {
        BYTE* place = static_cast<BYTE*>(array.pvData) + i * array.cbElements;
        const BYTE* from = source == nullptr ? place : static_cast<const BYTE*>(source->pvData) + i * array.cbElements;
        VariantInit(&element);
        if (type == VT_VARIANT) {
            std::memcpy(static_cast<void*>(&element), from, sizeof element);
        } else {
            element.vt = type;
            std::memcpy(&element.llVal, from, array.cbElements);
        }
        if (source == nullptr) {
            VariantClear(&element);
            continue;
        }
        VARIANT copy;
        VariantInit(&copy);
        result = VariantCopy(&copy, &element);
        if (type == VT_VARIANT) {
            std::memcpy(place, &copy, sizeof copy);
        } else {
            std::memcpy(place, &copy.llVal, array.cbElements);
        }
    }
    return result;
}

bool NeedsCare(VARTYPE type) {
    return type == VT_VARIANT || type == VT_BSTR || type == VT_DISPATCH || type == VT_UNKNOWN;
}

SAFEARRAYBOUND* BoundOf(SAFEARRAY* array, UINT dimension) {
    if (array == nullptr || dimension == 0 || dimension > array->cDims) return nullptr;
    return &array->rgsabound[array->cDims - dimension];
}

}  // namespace

SAFEARRAY* SafeArrayCreate(VARTYPE type, UINT dimensions, SAFEARRAYBOUND* bounds) {
    const ULONG size = SizeOf(type);
    if (size == 0 || dimensions == 0 || dimensions > kMostDimensions || bounds == nullptr) return nullptr;
    auto* block =
        static_cast<BYTE*>(std::calloc(1, kTypeHead + sizeof(SAFEARRAY) + (dimensions - 1) * sizeof(SAFEARRAYBOUND)));
    if (block == nullptr) return nullptr;
    const std::uint32_t hidden = type;
    std::memcpy(block + kTypeHead - sizeof hidden, &hidden, sizeof hidden);
    auto* array = reinterpret_cast<SAFEARRAY*>(block + kTypeHead);
    array->cDims = static_cast<USHORT>(dimensions);
    array->fFeatures = kHasType;
    array->cbElements = size;
    for (UINT i = 0; i < dimensions; ++i) array->rgsabound[i] = bounds[dimensions - 1 - i];
    const std::size_t count = CountOf(*array);
    array->pvData = std::calloc(count == 0 ? 1 : count, size);
    if (array->pvData != nullptr) return array;
    std::free(block);
    return nullptr;
}

HRESULT SafeArrayDestroy(SAFEARRAY* array) {
    if (array == nullptr) return S_OK;
    if (NeedsCare(TypeOf(*array))) EachElement(*array, nullptr);
    std::free(array->pvData);
    std::free(reinterpret_cast<BYTE*>(array) - kTypeHead);
    return S_OK;
}

HRESULT SafeArrayCopy(SAFEARRAY* array, SAFEARRAY** copy) {
    *copy = nullptr;
    if (array == nullptr) return S_OK;
    SAFEARRAYBOUND bounds[kMostDimensions];
    for (UINT i = 0; i < array->cDims; ++i) bounds[i] = array->rgsabound[array->cDims - 1 - i];
    SAFEARRAY* made = SafeArrayCreate(TypeOf(*array), array->cDims, bounds);
    if (made == nullptr) return E_OUTOFMEMORY;
    HRESULT result = S_OK;
    if (NeedsCare(TypeOf(*array))) {
        result = EachElement(*made, array);
    } else {
        std::memcpy(made->pvData, array->pvData, CountOf(*array) * array->cbElements);
    }
    if (FAILED(result)) {
        SafeArrayDestroy(made);
        return result;
    }
    *copy = made;
    return S_OK;
}

UINT SafeArrayGetDim(SAFEARRAY* array) { return array == nullptr ? 0 : array->cDims; }

HRESULT SafeArrayGetLBound(SAFEARRAY* array, UINT dimension, LONG* bound) {
    const SAFEARRAYBOUND* found = BoundOf(array, dimension);
    if (found == nullptr) return DISP_E_BADINDEX;
    *bound = found->lLbound;
    return S_OK;
}

HRESULT SafeArrayGetUBound(SAFEARRAY* array, UINT dimension, LONG* bound) {
    const SAFEARRAYBOUND* found = BoundOf(array, dimension);
    if (found == nullptr) return DISP_E_BADINDEX;
    *bound = found->lLbound + static_cast<LONG>(found->cElements) - 1;
    return S_OK;
}

HRESULT SafeArrayGetVartype(SAFEARRAY* array, VARTYPE* type) {
    if (array == nullptr) return E_INVALIDARG;
    *type = TypeOf(*array);
    return S_OK;
}
