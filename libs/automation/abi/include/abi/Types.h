#pragma once

#include <cstddef>
#include <cstdint>

/// Automation's types where the system has none: the names, sizes and layouts of 64-bit Windows.

using BYTE = std::uint8_t;
using CHAR = char;
using SHORT = std::int16_t;
using USHORT = std::uint16_t;
using WORD = std::uint16_t;
using INT = std::int32_t;
using UINT = std::uint32_t;
using LONG = std::int32_t;
using ULONG = std::uint32_t;
using DWORD = std::uint32_t;
using BOOL = std::int32_t;
using LONGLONG = std::int64_t;
using ULONGLONG = std::uint64_t;
using FLOAT = float;
using DOUBLE = double;
using PVOID = void*;

using HRESULT = std::int32_t;
using SCODE = std::int32_t;
using DISPID = std::int32_t;
using LCID = std::uint32_t;
using VARTYPE = std::uint16_t;
using VARIANT_BOOL = std::int16_t;
using DATE = double;
using OLECHAR = char16_t;
using LPOLESTR = OLECHAR*;
/// The first of its characters; the number of bytes stands in the four bytes before, a zero character at the end.
using BSTR = OLECHAR*;

#define OLESTR(text) u##text
#define STDMETHODCALLTYPE
#define STDAPICALLTYPE

inline constexpr BOOL TRUE = 1;
inline constexpr BOOL FALSE = 0;
inline constexpr VARIANT_BOOL VARIANT_TRUE = -1;
inline constexpr VARIANT_BOOL VARIANT_FALSE = 0;

struct GUID {
    ULONG Data1;
    USHORT Data2;
    USHORT Data3;
    BYTE Data4[8];
};
using IID = GUID;
using CLSID = GUID;
using REFGUID = const GUID&;
using REFIID = const IID&;
using REFCLSID = const CLSID&;

constexpr HRESULT MakeFailure(std::uint32_t code) { return static_cast<HRESULT>(code); }
constexpr bool SUCCEEDED(HRESULT result) { return result >= 0; }
constexpr bool FAILED(HRESULT result) { return result < 0; }

inline constexpr HRESULT S_OK = 0;
inline constexpr HRESULT S_FALSE = 1;
inline constexpr HRESULT E_NOTIMPL = MakeFailure(0x80004001);
inline constexpr HRESULT E_NOINTERFACE = MakeFailure(0x80004002);
inline constexpr HRESULT E_POINTER = MakeFailure(0x80004003);
inline constexpr HRESULT E_FAIL = MakeFailure(0x80004005);
inline constexpr HRESULT E_UNEXPECTED = MakeFailure(0x8000FFFF);
inline constexpr HRESULT E_OUTOFMEMORY = MakeFailure(0x8007000E);
inline constexpr HRESULT E_INVALIDARG = MakeFailure(0x80070057);
inline constexpr HRESULT CLASS_E_NOAGGREGATION = MakeFailure(0x80040110);
inline constexpr HRESULT CLASS_E_CLASSNOTAVAILABLE = MakeFailure(0x80040111);
inline constexpr HRESULT CONNECT_E_NOCONNECTION = MakeFailure(0x80040200);
inline constexpr HRESULT CONNECT_E_CANNOTCONNECT = MakeFailure(0x80040202);
inline constexpr HRESULT DISP_E_UNKNOWNINTERFACE = MakeFailure(0x80020001);
inline constexpr HRESULT DISP_E_MEMBERNOTFOUND = MakeFailure(0x80020003);
inline constexpr HRESULT DISP_E_PARAMNOTFOUND = MakeFailure(0x80020004);
inline constexpr HRESULT DISP_E_TYPEMISMATCH = MakeFailure(0x80020005);
inline constexpr HRESULT DISP_E_UNKNOWNNAME = MakeFailure(0x80020006);
inline constexpr HRESULT DISP_E_BADVARTYPE = MakeFailure(0x80020008);
inline constexpr HRESULT DISP_E_EXCEPTION = MakeFailure(0x80020009);
inline constexpr HRESULT DISP_E_OVERFLOW = MakeFailure(0x8002000A);
inline constexpr HRESULT DISP_E_BADINDEX = MakeFailure(0x8002000B);
inline constexpr HRESULT DISP_E_BADPARAMCOUNT = MakeFailure(0x8002000E);
inline constexpr HRESULT DISP_E_PARAMNOTOPTIONAL = MakeFailure(0x8002000F);

inline constexpr DISPID DISPID_VALUE = 0;
inline constexpr DISPID DISPID_UNKNOWN = -1;
inline constexpr DISPID DISPID_PROPERTYPUT = -3;
inline constexpr DISPID DISPID_NEWENUM = -4;
inline constexpr DISPID DISPID_COLLECT = -8;

inline constexpr WORD DISPATCH_METHOD = 1;
inline constexpr WORD DISPATCH_PROPERTYGET = 2;
inline constexpr WORD DISPATCH_PROPERTYPUT = 4;
inline constexpr WORD DISPATCH_PROPERTYPUTREF = 8;

enum VARENUM : VARTYPE {
    VT_EMPTY = 0,
    VT_NULL = 1,
    VT_I2 = 2,
    VT_I4 = 3,
    VT_R4 = 4,
    VT_R8 = 5,
    VT_CY = 6,
    VT_DATE = 7,
    VT_BSTR = 8,
    VT_DISPATCH = 9,
    VT_ERROR = 10,
    VT_BOOL = 11,
    VT_VARIANT = 12,
    VT_UNKNOWN = 13,
    VT_DECIMAL = 14,
    VT_I1 = 16,
    VT_UI1 = 17,
    VT_UI2 = 18,
    VT_UI4 = 19,
    VT_I8 = 20,
    VT_UI8 = 21,
    VT_INT = 22,
    VT_UINT = 23,
    VT_ARRAY = 0x2000,
    VT_BYREF = 0x4000,
};

struct IUnknown;
struct IDispatch;
struct SAFEARRAY;

/// Ten-thousandths.
union CY {
    __extension__ struct {
        ULONG Lo;
        LONG Hi;
    };
    LONGLONG int64;
};

/// A 96-bit magnitude divided by ten to the power of `scale` (0 to 28); `sign` is 0 or 0x80.
struct DECIMAL {
    USHORT wReserved;
    BYTE scale;
    BYTE sign;
    ULONG Hi32;
    ULONGLONG Lo64;
};

struct VARIANT {
    union {
        __extension__ struct {
            VARTYPE vt;
            WORD wReserved1;
            WORD wReserved2;
            WORD wReserved3;
            union {
                LONGLONG llVal;
                LONG lVal;
                BYTE bVal;
                SHORT iVal;
                FLOAT fltVal;
                DOUBLE dblVal;
                VARIANT_BOOL boolVal;
                SCODE scode;
                CY cyVal;
                DATE date;
                BSTR bstrVal;
                IUnknown* punkVal;
                IDispatch* pdispVal;
                SAFEARRAY* parray;
                BYTE* pbVal;
                SHORT* piVal;
                LONG* plVal;
                LONGLONG* pllVal;
                FLOAT* pfltVal;
                DOUBLE* pdblVal;
                VARIANT_BOOL* pboolVal;
                SCODE* pscode;
                CY* pcyVal;
                DATE* pdate;
                BSTR* pbstrVal;
                IUnknown** ppunkVal;
                IDispatch** ppdispVal;
                SAFEARRAY** pparray;
                VARIANT* pvarVal;
                PVOID byref;
                CHAR cVal;
                USHORT uiVal;
                ULONG ulVal;
                ULONGLONG ullVal;
                INT intVal;
                UINT uintVal;
                DECIMAL* pdecVal;
                struct {
                    PVOID pvRecord;
                    PVOID pRecInfo;
                } record;
            };
        };
        DECIMAL decVal;
    };
};
using VARIANTARG = VARIANT;

static_assert(sizeof(GUID) == 16 && sizeof(CY) == 8 && sizeof(DECIMAL) == 16);
static_assert(sizeof(VARIANT) == 24 && offsetof(VARIANT, vt) == 0 && offsetof(VARIANT, llVal) == 8);

/// Arguments stand last to first, the named ones (an identifier each) at the beginning.
struct DISPPARAMS {
    VARIANTARG* rgvarg;
    DISPID* rgdispidNamedArgs;
    UINT cArgs;
    UINT cNamedArgs;
};

struct EXCEPINFO {
    WORD wCode;
    WORD wReserved;
    BSTR bstrSource;
    BSTR bstrDescription;
    BSTR bstrHelpFile;
    DWORD dwHelpContext;
    PVOID pvReserved;
    HRESULT(STDAPICALLTYPE* pfnDeferredFillIn)(EXCEPINFO*);
    SCODE scode;
};

struct SAFEARRAYBOUND {
    ULONG cElements;
    LONG lLbound;
};

/// Elements of the first dimension follow each other; `rgsabound` has the last dimension first, and as many entries as
/// there are dimensions.
struct SAFEARRAY {
    USHORT cDims;
    USHORT fFeatures;
    ULONG cbElements;
    ULONG cLocks;
    PVOID pvData;
    SAFEARRAYBOUND rgsabound[1];
};

static_assert(offsetof(SAFEARRAY, pvData) == 16 && offsetof(SAFEARRAY, rgsabound) == 24);
