#pragma once

#include "dataobjects/Connection.h"

namespace vlm::test::dataobjects {

/// Rows of a statement, read forward once; or of a table, changed in place.
class Recordset final : public Dual<_Recordset, Recordset21, Recordset20, Recordset15, _ADO> {
public:
    /// Closed and on no connection.
    Recordset() = default;
    Recordset(com::Ref<Connection> connection, data::RecordsetPtr rows);

    /// Throws a Failure when it is closed, or when it has no current row.
    data::Recordset& Rows() const;
    data::Recordset& Row() const;
    /// A cell of the current row.
    void Read(int ordinal, VARIANT* value) const;
    void Write(int ordinal, const VARIANT& value);
    bool IsOpen() const { return rows_ != nullptr; }

    HRESULT STDMETHODCALLTYPE Open(VARIANT source, VARIANT connection, CursorTypeEnum cursor, LockTypeEnum lock,
                                   LONG options) override;
    HRESULT STDMETHODCALLTYPE Close() override;
    HRESULT STDMETHODCALLTYPE get_State(LONG* state) override { return Give(state, rows_ ? 1 : 0); }
    HRESULT STDMETHODCALLTYPE get_Fields(::Fields** fields) override;
    HRESULT STDMETHODCALLTYPE get_EOF(VARIANT_BOOL* end) override;
    HRESULT STDMETHODCALLTYPE GetRows(LONG count, VARIANT start, VARIANT fields, VARIANT* block) override;
    HRESULT STDMETHODCALLTYPE MoveNext() override;
    HRESULT STDMETHODCALLTYPE NextRecordset(VARIANT* affected, _Recordset** next) override;
    HRESULT STDMETHODCALLTYPE AddNew(VARIANT fields, VARIANT values) override;
    HRESULT STDMETHODCALLTYPE Update(VARIANT fields, VARIANT values) override;
    HRESULT STDMETHODCALLTYPE CancelUpdate() override;

private:
    void Note(const Failure& failure) override {
        if (connection_) connection_->Note(failure);
    }
    data::UpdatableRecordset& Edited() const;
    void Store();

    com::Ref<Connection> connection_;
    data::RecordsetPtr rows_;
    data::UpdatableRecordset* edited_ = nullptr;  // the rows, when they may be changed
    EditModeEnum mode_ = adEditNone;
};

}  // namespace vlm::test::dataobjects
