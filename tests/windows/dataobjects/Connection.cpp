#include "dataobjects/Connection.h"

#include "dataobjects/DataObjects.h"
#include "dataobjects/Recordset.h"

namespace vlm::test::dataobjects {

namespace {

/// Whether a statement gives rows, or a procedure does: everything that does not change something.
bool GivesRows(const std::string& sql) {
    const std::size_t start = sql.find_first_not_of(" \t\r\n");
    if (start == std::string::npos) return false;
    const std::string word = sql.substr(start, sql.find_first_of(" \t\r\n", start) - start);
    for (const char* changing : {"INSERT", "UPDATE", "DELETE", "CREATE", "ALTER", "DROP", "PRAGMA", "BEGIN"}) {
        if (lstrcmpiA(word.c_str(), changing) == 0) return false;
    }
    return true;
}

}  // namespace

HRESULT ErrorList::get_Item(VARIANT index, ::Error** error) {
    return Done([&] {
        PlaceOf(index, last ? 1 : 0, [](int) { return ""; });
        Give(error, com::Ref(new ErrorObject(*last)).Detach());
    });
}

HRESULT PropertyObject::get_Value(VARIANT* value) {
    if (value == nullptr) return E_POINTER;
    value->vt = VT_BSTR;
    return Give(&value->bstrVal, value_);
}

HRESULT PropertyList::get_Item(VARIANT index, ::Property** property) {
    return Done([&] {
        PlaceOf(index, 1, [](int) { return PropertyObject::kName; });
        Give(property, com::Ref(new PropertyObject(catalog_)).Detach());
    });
}

const data::ConnectionPtr& Connection::Native() const {
    if (!native_) throw Numbered(adErrObjectClosed, "La connessione è chiusa.");
    return native_;
}

HRESULT Connection::QueryInterface(REFIID iid, void** object) {
    if (object == nullptr || iid != kOwnId) return Dual::QueryInterface(iid, object);
    AddRef();
    *object = this;
    return S_OK;
}

HRESULT Connection::get_Properties(::Properties** properties) {
    return Done(
        [&] { Give(properties, com::Ref(new PropertyList(native_ ? native_->InitialCatalog() : "")).Detach()); });
}

HRESULT Connection::get_DefaultDatabase(BSTR* name) {
    return Done([&] { Give(name, Native()->InitialCatalog()); });
}

HRESULT Connection::Execute(BSTR command, VARIANT* affected, LONG options, _Recordset** rows) {
    if (rows == nullptr) return E_POINTER;
    *rows = nullptr;
    return Done([&] {
        const std::string sql = com::ToUtf8(command);
        errors_->last.reset();
        LONG changed = -1;  // of what gives rows
        data::RecordsetPtr opened;
        if (GivesRows(sql)) {
            opened = Native()->Open(sql);
        } else {
            changed = static_cast<LONG>(Native()->Execute(sql));
        }
        TellChanged(affected, changed);
        const bool wantsRows = options == adOptionUnspecified || (options & adExecuteNoRecords) == 0;
        if (wantsRows) *rows = com::Ref(new Recordset(com::Ref(this), std::move(opened))).Detach();
    });
}

HRESULT Connection::BeginTrans(LONG* level) {
    return Done([&] {
        Native()->BeginTransaction();
        Give(level, 1);
    });
}

HRESULT Connection::CommitTrans() {
    return Done([&] { Native()->CommitTransaction(); });
}

HRESULT Connection::RollbackTrans() {
    return Done([&] { Native()->RollbackTransaction(); });
}

HRESULT Connection::Close() {
    return Done([&] {
        Native();
        native_.reset();
    });
}

com::Ref<_Connection> NewConnection(data::ConnectionPtr native) {
    return com::Ref<_Connection>(new Connection(std::move(native)));
}

}  // namespace vlm::test::dataobjects
