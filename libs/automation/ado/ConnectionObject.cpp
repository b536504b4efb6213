#include "ado/ConnectionObject.h"

#include "AdoObject.h"
#include "ado/AdoTypes.h"
#include "ado/RecordsetObject.h"
#include "values/Error.h"
#include "values/Utf8.h"

namespace vlm::data::ado {

namespace {

constexpr std::string_view kInitialCatalog = "Initial Catalog";

template <typename Body>
HRESULT Guarded(Body&& body) {
    return com::Guarded(kErrorSource, kConnectionId, std::forward<Body>(body));
}

/// The property of a connection that tells its database; the value as it was asked for.
class CatalogProperty final : public com::DispatchObject<IDispatch> {
public:
    explicit CatalogProperty(std::string catalog) : catalog_(std::move(catalog)) {}

private:
    HRESULT STDMETHODCALLTYPE Name(BSTR* name) {
        return Guarded([&] { *name = com::Bstr(kInitialCatalog).Detach(); });
    }
    HRESULT STDMETHODCALLTYPE Value(VARIANT* value) {
        return Guarded([&] { *value = com::Variant(catalog_).Detach(); });
    }
    std::span<const com::Member> Members() const noexcept override {
        static constexpr std::array kMembers = {
            com::Get<&CatalogProperty::Value>("Value", DISPID_VALUE, VT_VARIANT),
            com::Get<&CatalogProperty::Name>("Name", 1, VT_BSTR),
        };
        return kMembers;
    }

    std::string catalog_;
};

IDispatch* PropertyOf(const Connection& connection, const VARIANT& name) {
    if (!text::EqualNoCase(TextOf(com::ToValue(name)), kInitialCatalog)) {
        throw Error("La connessione non ha la proprietà " + TextOf(com::ToValue(name)) + ".", kItemNotFound);
    }
    return com::Make<CatalogProperty>(connection.InitialCatalog()).Detach();
}

class PropertiesObject final : public com::DispatchObject<IDispatch> {
public:
    explicit PropertiesObject(ConnectionPtr connection) : connection_(std::move(connection)) {}

private:
    HRESULT STDMETHODCALLTYPE Item(const VARIANT& name, IDispatch** property) {
        return Guarded([&] { *property = PropertyOf(*connection_, name); });
    }
    std::span<const com::Member> Members() const noexcept override {
        static constexpr std::array kMembers = {
            com::Get<&PropertiesObject::Item>("Item", DISPID_VALUE, VT_DISPATCH, {{"Index"}}),
        };
        return kMembers;
    }

    ConnectionPtr connection_;
};

}  // namespace

std::span<const com::Member> ConnectionObject::Members() const noexcept {
    using Self = ConnectionObject;
    static constexpr std::array kMembers = {
        com::Get<&Self::State>("State", 1, VT_I4),
        com::Get<&Self::Properties>("Properties", 2, VT_DISPATCH, {{"Index", VT_VARIANT, true}}),
        com::Method<&Self::Execute>("Execute", 3, VT_DISPATCH,
                                    {{"CommandText", VT_BSTR},
                                     {"RecordsAffected", VT_VARIANT, true},
                                     {"Options", VT_I4, true, kFieldUnspecified}}),
        com::Method<&Self::BeginTrans>("BeginTrans", 4, VT_I4),
        com::Method<&Self::CommitTrans>("CommitTrans", 5),
        com::Method<&Self::RollbackTrans>("RollbackTrans", 6),
    };
    return kMembers;
}

void* ConnectionObject::Find(const IID& iid) noexcept {
    if (com::Same(iid, kConnectionId)) return static_cast<IDispatch*>(this);
    return DispatchObject::Find(iid);
}

HRESULT ConnectionObject::State(std::int32_t* state) {
    return Guarded([&] { *state = connection_->IsOpen() ? kStateOpen : 0; });
}

HRESULT ConnectionObject::Properties(const VARIANT& name, IDispatch** properties) {
    return Guarded([&] {
        *properties =
            com::IsMissing(name) ? com::Make<PropertiesObject>(connection_).Detach() : PropertyOf(*connection_, name);
    });
}

HRESULT ConnectionObject::Execute(BSTR sql, const VARIANT& changed, std::int32_t options, IDispatch** rows) {
    return Guarded([&] {
        const std::string statement = com::ToUtf8(sql);
        if (options == kFieldUnspecified || (options & kExecuteNoRecords) == 0) {
            *rows = MakeRecordsetObject(connection_->Open(statement), connection_).Detach();
            return;
        }
        const auto count = static_cast<std::int32_t>(connection_->Execute(statement));
        if (changed.vt == (VT_BYREF | VT_VARIANT)) *changed.pvarVal = com::Variant(count).Detach();
    });
}

HRESULT ConnectionObject::BeginTrans(std::int32_t* level) {
    return Guarded([&] {
        connection_->BeginTransaction();
        *level = 1;
    });
}

HRESULT ConnectionObject::CommitTrans() {
    return Guarded([&] { connection_->CommitTransaction(); });
}

HRESULT ConnectionObject::RollbackTrans() {
    return Guarded([&] { connection_->RollbackTransaction(); });
}

}  // namespace vlm::data::ado
