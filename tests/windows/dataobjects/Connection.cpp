#include "dataobjects/Connection.h"

#include "automation/Variant.h"
#include "dataobjects/DataObjects.h"
#include "dataobjects/Recordset.h"

namespace vlm::test::dataobjects {

HRESULT Connection::get_Properties(::Properties** properties) {
    return Done([&] { Give(properties, com::Ref(new PropertyList(native_->InitialCatalog())).Detach()); });
}

HRESULT Connection::Execute(BSTR command, VARIANT* affected, LONG options, _Recordset** rows) {
    if (rows == nullptr) return E_POINTER;
    *rows = nullptr;
    return Done([&] {
        const std::string sql = com::ToUtf8(command);
        errors_->last.reset();
        if ((options & adExecuteNoRecords) != 0 && options != adOptionUnspecified) {
            *affected = com::Variant(native_->Execute(sql)).Detach();
        } else {
            *rows = com::Ref(new Recordset(com::Ref(this), native_->Open(sql))).Detach();
        }
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
