#include "automation/Enumerator.h"
#include "automation/ErrorReport.h"
#include "automation/LateBound.h"
#include "automation/Object.h"
#include "services/HealthCard.h"
#include "values/Utf8.h"

/// The health-card system's client as automation objects, as other programs meet it.
namespace vlm::host {

namespace {

using com::Variant;

template <typename Body>
HRESULT Guarded(Body&& body) {
    return com::Guarded("SistemaTS", com::kNoId, std::forward<Body>(body));
}

/// An object that is nothing but properties, to be read and set.
class PropertiesObject final : public com::Object<IDispatch> {
public:
    using Properties = std::vector<std::pair<std::string, Variant>>;
    explicit PropertiesObject(Properties properties) : properties_(std::move(properties)) {}

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
        if (count != nullptr) *count = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID, DISPID* ids) override {
        const std::string name = com::ToUtf8(com::WideView(names[0]));
        for (std::size_t i = 0; i < properties_.size(); ++i) {
            if (!text::EqualNoCase(properties_[i].first, name)) continue;
            ids[0] = static_cast<DISPID>(i + 1);
            return S_OK;
        }
        return DISP_E_UNKNOWNNAME;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                                     EXCEPINFO*, UINT*) override {
        if (id < 1 || static_cast<std::size_t>(id) > properties_.size()) return DISP_E_MEMBERNOTFOUND;
        Variant& value = properties_[static_cast<std::size_t>(id - 1)].second;
        if ((flags & DISPATCH_PROPERTYGET) != 0) return VariantCopy(result, &value.Get());
        if (parameters->cArgs != 1) return DISP_E_BADPARAMCOUNT;
        value = Variant(parameters->rgvarg[0]);
        return S_OK;
    }

private:
    Properties properties_;
};

Variant ObjectOf(PropertiesObject::Properties properties) {
    return Variant(com::Make<PropertiesObject>(std::move(properties)).Get());
}

/// A collection: its length is its value, too.
class ListObject final : public com::DispatchObject<IDispatch> {
public:
    explicit ListObject(std::vector<Variant> list) : list_(std::move(list)) {}

private:
    HRESULT STDMETHODCALLTYPE Length(std::int32_t* length) {
        *length = static_cast<std::int32_t>(list_.size());
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE NewEnum(IUnknown** enumerator) {
        return Guarded([&] { *enumerator = com::Make<com::VariantEnumerator>(list_).Detach(); });
    }
    std::span<const com::Member> Members() const noexcept override {
        static constexpr std::array kMembers = {
            com::Get<&ListObject::Length>("Length", DISPID_VALUE, VT_I4),
            com::Get<&ListObject::NewEnum>("_NewEnum", DISPID_NEWENUM, VT_UNKNOWN),
        };
        return kMembers;
    }

    std::vector<Variant> list_;
};

template <typename Element>
Variant ListOf(const std::vector<Element>& elements, Variant (*object)(const Element&)) {
    std::vector<Variant> list;
    for (const Element& element : elements) list.push_back(object(element));
    return Variant(com::Make<ListObject>(std::move(list)).Get());
}

Variant FailureObject(const HealthCardClient::Failure& failure) {
    return ObjectOf({{"Code", Variant(failure.code)}, {"Description", Variant(failure.description)}});
}

Variant ExemptionObject(const HealthCardClient::Exemption& exemption) {
    return ObjectOf(
        {{"Code", Variant(exemption.code)}, {"Start", Variant(exemption.start)}, {"End", Variant(exemption.end)}});
}

Variant PersonObject(const HealthCardClient::Person& person) {
    return ObjectOf({{"FiscalCode", Variant(person.fiscalCode)},
                     {"Surname", Variant(person.surname)},
                     {"FirstName", Variant(person.firstName)},
                     {"ChoiceDate", Variant(person.choice)},
                     {"ExpiryDate", Variant(person.expiry)},
                     {"SuspensionDate", Variant(person.suspension)},
                     {"Exemptions", ListOf(person.exemptions, ExemptionObject)}});
}

IDispatch* ResponseObject(const HealthCardClient::Response& response) {
    return ObjectOf({{"Error", Variant(response.error)},
                     {"Errors", ListOf(response.errors, FailureObject)},
                     {"Persons", ListOf(response.persons, PersonObject)}})
        .Object()
        .Detach();
}

HealthCardClient::Credentials CredentialsOf(IDispatch* request) {
    const com::LateBound given = com::LateBound(com::Ref<IDispatch>(request)).ObjectOf("Credentials");
    const auto text = [&](std::string_view name) { return given.Get(name).Text(); };
    return {text("UserId"), text("Password"), text("PIN"), text("ASLCode"), text("RegionCode")};
}

class ClientObject final : public com::DispatchObject<IDispatch> {
public:
    explicit ClientObject(std::unique_ptr<HealthCardClient> client) : client_(std::move(client)) {}

private:
    HRESULT STDMETHODCALLTYPE PutTool(BSTR path) {
        return Guarded([&] { client_->SetToolPath(com::ToUtf8(path)); });
    }
    HRESULT STDMETHODCALLTYPE PutCertificate(BSTR path) {
        return Guarded([&] { client_->SetCertificatePath(com::ToUtf8(path)); });
    }
    HRESULT STDMETHODCALLTYPE Patients(IDispatch* request, IDispatch** response) {
        return Guarded([&] { *response = ResponseObject(client_->RequestPatients(CredentialsOf(request))); });
    }
    HRESULT STDMETHODCALLTYPE Exemptions(IDispatch* request, IDispatch** response) {
        return Guarded([&] { *response = ResponseObject(client_->RequestExemptions(CredentialsOf(request))); });
    }
    std::span<const com::Member> Members() const noexcept override {
        using Self = ClientObject;
        static constexpr std::array kMembers = {
            com::Put<&Self::PutTool>("ToolPath", 1, VT_BSTR),
            com::Put<&Self::PutCertificate>("CertificatePath", 2, VT_BSTR),
            com::Method<&Self::Patients>("RequestPatients", 3, VT_DISPATCH, {{"Request", VT_DISPATCH}}),
            com::Method<&Self::Exemptions>("RequestExemptions", 4, VT_DISPATCH, {{"Request", VT_DISPATCH}}),
        };
        return kMembers;
    }

    std::unique_ptr<HealthCardClient> client_;
};

class ServicesObject final : public com::DispatchObject<IDispatch> {
public:
    explicit ServicesObject(std::function<std::unique_ptr<HealthCardClient>()> make) : make_(std::move(make)) {}

private:
    HRESULT STDMETHODCALLTYPE Client(IDispatch** client) {
        return Guarded([&] { *client = com::Make<ClientObject>(make_()).Detach(); });
    }
    HRESULT STDMETHODCALLTYPE Request(IDispatch** request) {
        return Guarded([&] {
            const Variant credentials =
                ObjectOf({{"UserId", {}}, {"Password", {}}, {"PIN", {}}, {"ASLCode", {}}, {"RegionCode", {}}});
            *request = ObjectOf({{"Credentials", credentials}}).Object().Detach();
        });
    }
    std::span<const com::Member> Members() const noexcept override {
        static constexpr std::array kMembers = {
            com::Get<&ServicesObject::Client>("HealthCardClient", 1, VT_DISPATCH),
            com::Get<&ServicesObject::Request>("HealthCardRequest", 2, VT_DISPATCH),
        };
        return kMembers;
    }

    std::function<std::unique_ptr<HealthCardClient>()> make_;
};

}  // namespace

com::Ref<IDispatch> MakeHealthCardServices(std::function<std::unique_ptr<HealthCardClient>()> make) {
    return com::Make<ServicesObject>(std::move(make));
}

}  // namespace vlm::host
