#include "dataobjects/Connection.h"

#include "automation/Variant.h"
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
        PlaceOf(index, last ? 1 : 0);
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
        if (index.vt != VT_BSTR || lstrcmpiW(index.bstrVal, L"Initial Catalog") != 0) {
            throw Numbered(adErrItemNotFound, "La connessione non ha una proprietà con quel nome.");
        }
        Give(property, com::Ref(new PropertyObject(catalog_)).Detach());
    });
}

HRESULT Connection::get_Properties(::Properties** properties) {
    return Done([&] { Give(properties, com::Ref(new PropertyList(native_->InitialCatalog())).Detach()); });
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
            opened = native_->Open(sql);
        } else {
            changed = static_cast<LONG>(native_->Execute(sql));
        }
        if (affected != nullptr && affected->vt != VT_ERROR) *affected = com::Variant(std::int32_t{changed}).Detach();
        const bool wantsRows = options == adOptionUnspecified || (options & adExecuteNoRecords) == 0;
        if (wantsRows) *rows = com::Ref(new Recordset(com::Ref(this), std::move(opened))).Detach();
    });
}

HRESULT Connection::BeginTrans(LONG* level) {
    return Done([&] {
        native_->BeginTransaction();
        Give(level, 1);
    });
}

HRESULT Connection::CommitTrans() {
    return Done([&] { native_->CommitTransaction(); });
}

HRESULT Connection::RollbackTrans() {
    return Done([&] { native_->RollbackTransaction(); });
}

com::Ref<_Connection> NewConnection(data::ConnectionPtr native) {
    return com::Ref<_Connection>(new Connection(std::move(native)));
}

}  // namespace vlm::test::dataobjects
