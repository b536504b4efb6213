#pragma once

#include <dataobjects.h>
#include <string>

#include "automation/Bstr.h"
#include "automation/Ref.h"
#include "values/Error.h"

namespace vlm::test::dataobjects {

/// Why a member fails, as its caller is told.
struct Failure {
    HRESULT result;
    std::string text;
    std::string source = "Oggetti dati di prova";
};

/// One of the data objects' own errors: adErr...
inline Failure Numbered(ErrorValueEnum number, const char* text) {
    return {static_cast<HRESULT>(0x800A0000U | static_cast<unsigned>(number)), text};
}

/// The description of an interface, from the type library beside the program.
com::Ref<ITypeInfo> DescriptionOf(const GUID& interfaceId);
/// Leaves the error object for the caller.
HRESULT Tell(const Failure& failure, const GUID& interfaceId) noexcept;

/// The place that an index names among `count` elements.
inline int PlaceOf(const VARIANT& index, int count) {
    if (index.vt != VT_I4 || index.lVal < 0 || index.lVal >= count) {
        throw Numbered(adErrItemNotFound, "Nell'insieme non c'è un elemento con quel numero.");
    }
    return index.lVal;
}

template <typename Kind, typename Content>
HRESULT Give(Kind* place, Content content) noexcept {
    if (place == nullptr) return E_POINTER;
    *place = static_cast<Kind>(content);
    return S_OK;
}
inline HRESULT Give(BSTR* place, const std::string& text) {
    return Give(place, place == nullptr ? nullptr : com::Bstr(text).Detach());
}

/// An object with the table of a dual interface, which its ancestors share. By name it is called as its description
/// says. Members that it does not override refuse.
template <typename Interface, typename... Ancestors>
class Dual : public Interface, public ISupportErrorInfo {
public:
    Dual() = default;
    Dual(const Dual&) = delete;
    Dual& operator=(const Dual&) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
        if (object == nullptr) return E_POINTER;
        *object = nullptr;
        if (iid == __uuidof(ISupportErrorInfo)) {
            *object = static_cast<ISupportErrorInfo*>(this);
        } else if (iid == __uuidof(IUnknown) || iid == __uuidof(IDispatch) || iid == __uuidof(Interface) ||
                   (... || (iid == __uuidof(Ancestors)))) {
            *object = static_cast<Interface*>(this);
        } else {
            return E_NOINTERFACE;
        }
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
    ULONG STDMETHODCALLTYPE Release() override {
        const ULONG left = --references_;
        if (left == 0) delete this;
        return left;
    }

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override { return Give(count, 1); }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID, ITypeInfo** info) override {
        return index != 0 ? DISP_E_BADINDEX : Give(info, Description().Share());
    }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) override {
        return Description()->GetIDsOfNames(names, count, ids);
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* arguments, VARIANT* result,
                                     EXCEPINFO* exception, UINT* wrong) override {
        return Description()->Invoke(static_cast<Interface*>(this), id, flags, arguments, result, exception, wrong);
    }
    HRESULT STDMETHODCALLTYPE InterfaceSupportsErrorInfo(REFIID iid) override {
        return iid == __uuidof(Interface) ? S_OK : S_FALSE;
    }

protected:
    virtual ~Dual() = default;
    /// What the provider says when it fails.
    virtual void Note(const Failure&) {}

    template <typename Body>
    HRESULT Done(Body body) noexcept {
        try {
            body();
            return S_OK;
        } catch (const Failure& failure) {
            return Tell(failure, __uuidof(Interface));
        } catch (const vlm::Error& error) {
            constexpr auto kErrorsInCommand = static_cast<HRESULT>(0x80040E14);
            const Failure failure{kErrorsInCommand, error.what(), error.Source()};
            Note(failure);
            return Tell(failure, __uuidof(Interface));
        } catch (...) {
            return E_OUTOFMEMORY;
        }
    }

private:
    static const com::Ref<ITypeInfo>& Description() {
        static const com::Ref<ITypeInfo> kDescription = DescriptionOf(__uuidof(Interface));
        return kDescription;
    }

    ULONG references_ = 0;
};

}  // namespace vlm::test::dataobjects
