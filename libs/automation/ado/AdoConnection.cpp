#include "ado/AdoConnection.h"

#include "AdoRecordset.h"
#include "ado/AdoTypes.h"
#include "values/Error.h"

namespace vlm::data::ado {

bool AdoConnection::IsOpen() const {
    return (static_cast<std::int32_t>(NumberOf(connection_.Get("State").Value())) & kStateOpen) != 0;
}

std::string AdoConnection::InitialCatalog() const {
    const com::LateBound properties = connection_.ObjectOf("Properties");
    const com::LateBound property(properties.Item(com::Variant("Initial Catalog")).Object());
    if (!property) throw Error("La connessione non dice il nome del database.");
    return property.Get("Value").Text();
}

RecordsetPtr AdoConnection::Open(std::string_view sql) {
    com::LateBound rows = AdoRecordset::FirstOpen(com::LateBound(
        Ask("Execute", {com::Variant(sql), com::Variant::Missing(), com::Variant(kCommandText)}).Object()));
    if (!rows) throw Error("L'istruzione SQL non dà righe: " + std::string(sql.substr(0, 80)));
    return std::make_unique<AdoRecordset>(std::move(rows));
}

std::int64_t AdoConnection::Execute(std::string_view sql) {
    com::Variant changed(std::int32_t{0});
    com::Variant place;
    place.Get().vt = VT_BYREF | VT_VARIANT;
    place.Get().pvarVal = &changed.Get();
    Ask("Execute", {com::Variant(sql), place, com::Variant(kCommandText | kExecuteNoRecords)});
    const double count = NumberOf(changed.Value());
    return count > 0 ? static_cast<std::int64_t>(count) : 0;  // an engine that does not count gives -1
}

UpdatableRecordsetPtr AdoConnection::OpenForUpdate(std::string_view sql) {
    com::LateBound rows = NewMachineRecordset();
    rows.Call("Open", {com::Variant(sql), com::Variant(connection_.Object().Get()), com::Variant(kOpenKeyset),
                       com::Variant(kLockOptimistic), com::Variant(kCommandText)});
    return std::make_unique<AdoUpdatableRecordset>(std::move(rows));
}

com::Variant AdoConnection::Ask(std::string_view member, std::vector<com::Variant> arguments) const {
    try {
        return connection_.Call(member, std::move(arguments));
    } catch (const com::UntoldError& error) {
        ThrowProviderError(error);
    }
}

void AdoConnection::ThrowProviderError(const Error& error) const {
    std::string description, source;
    std::int32_t number = error.Number();
    try {
        const com::LateBound errors = connection_.ObjectOf("Errors");
        if (NumberOf(errors.Get("Count").Value()) < 1) throw error;
        const com::LateBound first(errors.Item(com::Variant(std::int32_t{0})).Object());
        description = first.Get("Description").Text();
        number = static_cast<std::int32_t>(NumberOf(first.Get("Number").Value()));
        source = first.Get("Source").Text();
    } catch (const Error&) {  // its code is all there is
    }
    if (description.empty()) throw error;
    throw Error(description, number, source);
}

ConnectionPtr ConnectionOf(IUnknown* object) {
    if (const auto native = com::Query<INativeConnection>(object)) return native->Native();
    if (!com::Query<IUnknown>(object, kConnectionId)) return nullptr;
    com::Ref<IDispatch> late = com::Query<IDispatch>(object);
    return late ? std::make_shared<AdoConnection>(std::move(late)) : nullptr;
}

}  // namespace vlm::data::ado
