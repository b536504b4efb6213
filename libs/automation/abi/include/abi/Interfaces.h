#pragma once

#include "abi/Types.h"

/// Automation's interfaces, each a table of functions in the order of the declarations. None has a virtual destructor,
/// which would add to the table.

struct IUnknown {
    virtual HRESULT QueryInterface(REFIID iid, void** object) = 0;
    virtual ULONG AddRef() = 0;
    virtual ULONG Release() = 0;

protected:
    ~IUnknown() = default;
};

struct ITypeInfo;

struct IDispatch : IUnknown {
    virtual HRESULT GetTypeInfoCount(UINT* count) = 0;
    virtual HRESULT GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) = 0;
    virtual HRESULT GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count, LCID locale, DISPID* ids) = 0;
    virtual HRESULT Invoke(DISPID id, REFIID reserved, LCID locale, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                           EXCEPINFO* exception, UINT* argument) = 0;

protected:
    ~IDispatch() = default;
};

struct IClassFactory : IUnknown {
    virtual HRESULT CreateInstance(IUnknown* outer, REFIID iid, void** object) = 0;
    virtual HRESULT LockServer(BOOL lock) = 0;

protected:
    ~IClassFactory() = default;
};

struct IErrorInfo : IUnknown {
    virtual HRESULT GetGUID(GUID* guid) = 0;
    virtual HRESULT GetSource(BSTR* source) = 0;
    virtual HRESULT GetDescription(BSTR* description) = 0;
    virtual HRESULT GetHelpFile(BSTR* helpFile) = 0;
    virtual HRESULT GetHelpContext(DWORD* helpContext) = 0;

protected:
    ~IErrorInfo() = default;
};

struct ICreateErrorInfo : IUnknown {
    virtual HRESULT SetGUID(REFGUID guid) = 0;
    virtual HRESULT SetSource(LPOLESTR source) = 0;
    virtual HRESULT SetDescription(LPOLESTR description) = 0;
    virtual HRESULT SetHelpFile(LPOLESTR helpFile) = 0;
    virtual HRESULT SetHelpContext(DWORD helpContext) = 0;

protected:
    ~ICreateErrorInfo() = default;
};

struct ISupportErrorInfo : IUnknown {
    virtual HRESULT InterfaceSupportsErrorInfo(REFIID iid) = 0;

protected:
    ~ISupportErrorInfo() = default;
};

struct IEnumVARIANT : IUnknown {
    virtual HRESULT Next(ULONG count, VARIANT* items, ULONG* fetched) = 0;
    virtual HRESULT Skip(ULONG count) = 0;
    virtual HRESULT Reset() = 0;
    virtual HRESULT Clone(IEnumVARIANT** copy) = 0;

protected:
    ~IEnumVARIANT() = default;
};

struct IConnectionPoint;
struct IConnectionPointContainer;

struct CONNECTDATA {
    IUnknown* pUnk;
    DWORD dwCookie;
};

struct IEnumConnections : IUnknown {
    virtual HRESULT Next(ULONG count, CONNECTDATA* items, ULONG* fetched) = 0;
    virtual HRESULT Skip(ULONG count) = 0;
    virtual HRESULT Reset() = 0;
    virtual HRESULT Clone(IEnumConnections** copy) = 0;

protected:
    ~IEnumConnections() = default;
};

struct IEnumConnectionPoints : IUnknown {
    virtual HRESULT Next(ULONG count, IConnectionPoint** items, ULONG* fetched) = 0;
    virtual HRESULT Skip(ULONG count) = 0;
    virtual HRESULT Reset() = 0;
    virtual HRESULT Clone(IEnumConnectionPoints** copy) = 0;

protected:
    ~IEnumConnectionPoints() = default;
};

struct IConnectionPoint : IUnknown {
    virtual HRESULT GetConnectionInterface(IID* iid) = 0;
    virtual HRESULT GetConnectionPointContainer(IConnectionPointContainer** container) = 0;
    virtual HRESULT Advise(IUnknown* sink, DWORD* cookie) = 0;
    virtual HRESULT Unadvise(DWORD cookie) = 0;
    virtual HRESULT EnumConnections(IEnumConnections** connections) = 0;

protected:
    ~IConnectionPoint() = default;
};

struct IConnectionPointContainer : IUnknown {
    virtual HRESULT EnumConnectionPoints(IEnumConnectionPoints** points) = 0;
    virtual HRESULT FindConnectionPoint(REFIID iid, IConnectionPoint** point) = 0;

protected:
    ~IConnectionPointContainer() = default;
};

struct IProvideClassInfo : IUnknown {
    virtual HRESULT GetClassInfo(ITypeInfo** info) = 0;

protected:
    ~IProvideClassInfo() = default;
};

struct IProvideClassInfo2 : IProvideClassInfo {
    virtual HRESULT GetGUID(DWORD kind, GUID* guid) = 0;

protected:
    ~IProvideClassInfo2() = default;
};

/// The one kind of identifier that IProvideClassInfo2 knows: the class's default event interface.
inline constexpr DWORD GUIDKIND_DEFAULT_SOURCE_DISP_IID = 1;

#define VLM_AUTOMATION_API extern "C" __attribute__((visibility("default")))

/// A null BSTR is an empty text to every function. Null when memory is short.
VLM_AUTOMATION_API BSTR SysAllocString(const OLECHAR* text);
VLM_AUTOMATION_API BSTR SysAllocStringLen(const OLECHAR* text, UINT length);
VLM_AUTOMATION_API void SysFreeString(BSTR text);
VLM_AUTOMATION_API UINT SysStringLen(BSTR text);
VLM_AUTOMATION_API UINT SysStringByteLen(BSTR text);

VLM_AUTOMATION_API void VariantInit(VARIANT* value);
VLM_AUTOMATION_API HRESULT VariantClear(VARIANT* value);
/// Copies texts and arrays, adds a reference to objects. A VT_BYREF value keeps pointing where it points.
VLM_AUTOMATION_API HRESULT VariantCopy(VARIANT* target, const VARIANT* source);

/// `bounds` first dimension first. Elements start as zero.
VLM_AUTOMATION_API SAFEARRAY* SafeArrayCreate(VARTYPE type, UINT dimensions, SAFEARRAYBOUND* bounds);
/// Clears the elements too.
VLM_AUTOMATION_API HRESULT SafeArrayDestroy(SAFEARRAY* array);
VLM_AUTOMATION_API HRESULT SafeArrayCopy(SAFEARRAY* array, SAFEARRAY** copy);
VLM_AUTOMATION_API UINT SafeArrayGetDim(SAFEARRAY* array);
/// Dimensions count from 1.
VLM_AUTOMATION_API HRESULT SafeArrayGetLBound(SAFEARRAY* array, UINT dimension, LONG* bound);
VLM_AUTOMATION_API HRESULT SafeArrayGetUBound(SAFEARRAY* array, UINT dimension, LONG* bound);
VLM_AUTOMATION_API HRESULT SafeArrayGetVartype(SAFEARRAY* array, VARTYPE* type);

VLM_AUTOMATION_API HRESULT CreateErrorInfo(ICreateErrorInfo** info);
/// The error object of this thread; null clears it.
VLM_AUTOMATION_API HRESULT SetErrorInfo(ULONG reserved, IErrorInfo* info);
/// Hands the thread's error object out and clears it; S_FALSE when there is none.
VLM_AUTOMATION_API HRESULT GetErrorInfo(ULONG reserved, IErrorInfo** info);
