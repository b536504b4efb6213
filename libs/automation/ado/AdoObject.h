#pragma once

#include <algorithm>

#include "ado/AdoInterfaces.h"
#include "ado/AdoTypes.h"
#include "automation/ErrorReport.h"
#include "automation/Object.h"
#include "values/Error.h"

namespace vlm::data::ado {

/// What an error of our data objects names as its source when it has none of its own.
inline constexpr std::string_view kErrorSource = "VlmASLServicesLib";

/// The type of a place or a count in late-bound calls.
inline constexpr VARTYPE kPointerWide = sizeof(void*) == 8 ? VT_I8 : VT_I4;

inline VARIANT_BOOL Truth(bool truth) { return truth ? VARIANT_TRUE : VARIANT_FALSE; }

/// An argument that is not given, by the languages that leave it out and by those that cannot.
inline bool NotGiven(const VARIANT& argument) { return argument.vt == VT_EMPTY || com::IsMissing(argument); }

/// One of our data objects: `Main` is the table that stands behind its identifier and those of the tables that it
/// begins with. No exception leaves a member; a place to put a result may be null, which is an error.
template <typename Main, typename... More>
class AdoObject : public com::DispatchObject<Main, ISupportErrorInfo, More...> {
public:
    HRESULT STDMETHODCALLTYPE InterfaceSupportsErrorInfo(REFIID iid) override { return Answers(iid) ? S_OK : S_FALSE; }

protected:
    void* Find(const IID& iid) noexcept override {
        if (Answers(iid)) return static_cast<Main*>(this);
        return com::DispatchObject<Main, ISupportErrorInfo, More...>::Find(iid);
    }

    template <typename Body>
    static HRESULT Do(Body&& body) noexcept {
        return com::Guarded(kErrorSource, Main::kId, std::forward<Body>(body));
    }
    template <typename Result, typename Body>
    static HRESULT Give(Result* result, Body&& body) noexcept {
        if (result == nullptr) return E_POINTER;
        *result = Result{};  // a failure hands nothing out
        return Do([&] { *result = static_cast<Result>(body()); });
    }
    static HRESULT GiveText(BSTR* result, std::string_view text) noexcept {
        return Give(result, [&] { return com::Bstr(text).Detach(); });
    }
    /// A value of any kind; the caller's place is not cleared.
    template <typename Body>
    static HRESULT GiveValue(VARIANT* result, Body&& body) noexcept {
        return Give(result, [&] { return com::Variant(body()).Detach(); });
    }
    [[noreturn]] static void ThrowUnsupported(std::string_view member) {
        throw Error(std::string(member) + ": queste righe non lo permettono.", kNotSupported);
    }
    /// A member that is not served.
    static HRESULT Refuse(std::string_view member) noexcept {
        return Do([&] { ThrowUnsupported(member); });
    }
    /// A setting of which only one value is served.
    static HRESULT Only(bool served, std::string_view member) noexcept { return served ? S_OK : Refuse(member); }

private:
    static bool Answers(const IID& iid) noexcept {
        if (com::Same(iid, Main::kId) || com::Same(iid, Main::IBase::kId)) return true;
        return std::any_of(std::begin(Main::kEarlier), std::end(Main::kEarlier),
                           [&](const GUID& earlier) { return com::Same(iid, earlier); });
    }
};

}  // namespace vlm::data::ado
