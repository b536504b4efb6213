#pragma once

#include <dataobjects.h>
#include <new>
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
    std::int32_t native = 0;  // the provider's own number
};

/// One of the data objects' own errors: adErr...
inline Failure Numbered(ErrorValueEnum number, const char* text) {
    return {static_cast<HRESULT>(0x800A0000U | static_cast<unsigned>(number)), text};
}

/// The description of an interface, from the type library beside the program.
com::Ref<ITypeInfo> DescriptionOf(const GUID& interfaceId);
/// Leaves the error object for the caller.
HRESULT Tell(const Failure& failure, const GUID& interfaceId) noexcept;

inline bool IsGiven(const VARIANT& argument) { return argument.vt != VT_ERROR && argument.vt != VT_EMPTY; }

/// The place that an index names among `count` elements, by number or by name.
template <typename NameOf>
int PlaceOf(VARIANT index, int count, NameOf nameOf) {
    VARIANT key;
    VariantInit(&key);
    int place = -1;
    if (SUCCEEDED(VariantCopyInd(&key, &index))) {
        if (key.vt == VT_BSTR) {
            for (int i = 0; i < count && place < 0; ++i) {
                if (lstrcmpiW(key.bstrVal, com::ToWide(nameOf(i)).c_str()) == 0) place = i;
            }
        } else if (SUCCEEDED(VariantChangeType(&key, &key, 0, VT_I4)) && key.lVal < count) {
            place = key.lVal;
        }
    }
    VariantClear(&key);
    if (place < 0) throw Numbered(adErrItemNotFound, "Nell'insieme non c'è un elemento con quel nome o numero.");
    return place;
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
/// says.
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
            const Failure failure{kErrorsInCommand, error.what(), error.Source(), error.Number()};
            Note(failure);
            return Tell(failure, __uuidof(Interface));
        } catch (...) {
            return E_OUTOFMEMORY;
        }
    }
    HRESULT Refuse() noexcept {
        return Done([] { throw Numbered(adErrFeatureNotAvailable, "Questi oggetti dati non lo sanno fare."); });
    }

private:
    static const com::Ref<ITypeInfo>& Description() {
        static const com::Ref<ITypeInfo> kDescription = DescriptionOf(__uuidof(Interface));
        return kDescription;
    }

    ULONG references_ = 0;
};

/// Members of a table that only refuse; of a property, both ways.
#define VLM_REFUSED(member, ...) \
    HRESULT STDMETHODCALLTYPE member(__VA_ARGS__) override { return Refuse(); }
#define VLM_REFUSED_PROPERTY(property, type) \
    VLM_REFUSED(get_##property, type*)       \
    VLM_REFUSED(put_##property, type)

}  // namespace vlm::test::dataobjects
