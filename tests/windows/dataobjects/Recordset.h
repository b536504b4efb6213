#pragma once

#include "dataobjects/Connection.h"

namespace vlm::test::dataobjects {

/// What a statement changed, where the caller wants to know.
void TellChanged(VARIANT* affected, LONG changed);

/// Rows of a statement, read forward once; or of a table, changed in place. Those of a table are found again by their
/// first column.
class Recordset final : public Dual<_Recordset, Recordset21, Recordset20, Recordset15, _ADO> {
public:
    /// Closed and on no connection.
    Recordset() = default;
    /// Closed when there are no rows.
    Recordset(com::Ref<Connection> connection, data::RecordsetPtr rows);

    /// Throws a Failure when it is closed, or when it has no current row.
    data::Recordset& Rows() const;
    data::Recordset& Row() const;
    /// A cell of the current row.
    void Read(int ordinal, VARIANT* value) const;
    void Write(int ordinal, VARIANT value);
    bool IsOpen() const { return rows_ != nullptr; }

    HRESULT STDMETHODCALLTYPE Open(VARIANT source, VARIANT connection, CursorTypeEnum cursor, LockTypeEnum lock,
                                   LONG options) override;
    HRESULT STDMETHODCALLTYPE Close() override;
    HRESULT STDMETHODCALLTYPE get_State(LONG* state) override { return Give(state, rows_ ? 1 : 0); }
    HRESULT STDMETHODCALLTYPE get_ActiveConnection(VARIANT* connection) override;
    HRESULT STDMETHODCALLTYPE get_Fields(::Fields** fields) override;
    HRESULT STDMETHODCALLTYPE get_BOF(VARIANT_BOOL* start) override;
    HRESULT STDMETHODCALLTYPE get_EOF(VARIANT_BOOL* end) override;
    HRESULT STDMETHODCALLTYPE get_CursorType(CursorTypeEnum* cursor) override {
        return Give(cursor, edited_ == nullptr ? adOpenForwardOnly : adOpenKeyset);
    }
    HRESULT STDMETHODCALLTYPE get_LockType(LockTypeEnum* lock) override {
        return Give(lock, edited_ == nullptr ? adLockReadOnly : adLockOptimistic);
    }
    HRESULT STDMETHODCALLTYPE get_RecordCount(ADO_LONGPTR* count) override { return Give(count, -1); }
    HRESULT STDMETHODCALLTYPE get_EditMode(EditModeEnum* mode) override { return Give(mode, mode_); }
    HRESULT STDMETHODCALLTYPE GetRows(LONG count, VARIANT start, VARIANT fields, VARIANT* block) override;
    HRESULT STDMETHODCALLTYPE MoveNext() override;
    HRESULT STDMETHODCALLTYPE NextRecordset(VARIANT* affected, _Recordset** next) override;
    HRESULT STDMETHODCALLTYPE AddNew(VARIANT fields, VARIANT values) override;
    HRESULT STDMETHODCALLTYPE Update(VARIANT fields, VARIANT values) override;
    HRESULT STDMETHODCALLTYPE CancelUpdate() override;
    HRESULT STDMETHODCALLTYPE Delete(AffectEnum affected) override;

    VLM_REFUSED(get_Properties, ::Properties**)
    VLM_REFUSED_PROPERTY(AbsolutePosition, PositionEnum_Param)
    VLM_REFUSED(putref_ActiveConnection, IDispatch*)
    VLM_REFUSED(put_ActiveConnection, VARIANT)
    VLM_REFUSED_PROPERTY(Bookmark, VARIANT)
    VLM_REFUSED_PROPERTY(CacheSize, LONG)
    VLM_REFUSED(put_CursorType, CursorTypeEnum)
    VLM_REFUSED(put_LockType, LockTypeEnum)
    VLM_REFUSED_PROPERTY(MaxRecords, ADO_LONGPTR)
    VLM_REFUSED(putref_Source, IDispatch*)
    VLM_REFUSED(put_Source, BSTR)
    VLM_REFUSED(get_Source, VARIANT*)
    VLM_REFUSED(Move, ADO_LONGPTR, VARIANT)
    VLM_REFUSED(MovePrevious)
    VLM_REFUSED(MoveFirst)
    VLM_REFUSED(MoveLast)
    VLM_REFUSED(Requery, LONG)
    VLM_REFUSED(_xResync, AffectEnum)
    VLM_REFUSED_PROPERTY(AbsolutePage, PositionEnum_Param)
    VLM_REFUSED_PROPERTY(Filter, VARIANT)
    VLM_REFUSED(get_PageCount, ADO_LONGPTR*)
    VLM_REFUSED_PROPERTY(PageSize, LONG)
    VLM_REFUSED_PROPERTY(Sort, BSTR)
    VLM_REFUSED(get_Status, LONG*)
    VLM_REFUSED(_xClone, _Recordset**)
    VLM_REFUSED(UpdateBatch, AffectEnum)
    VLM_REFUSED(CancelBatch, AffectEnum)
    VLM_REFUSED_PROPERTY(CursorLocation, CursorLocationEnum)
    VLM_REFUSED(Supports, CursorOptionEnum, VARIANT_BOOL*)
    VLM_REFUSED(get_Collect, VARIANT, VARIANT*)
    VLM_REFUSED(put_Collect, VARIANT, VARIANT)
    VLM_REFUSED_PROPERTY(MarshalOptions, MarshalOptionsEnum)
    VLM_REFUSED(Find, BSTR, LONG, SearchDirectionEnum, VARIANT)
    VLM_REFUSED(Cancel)
    VLM_REFUSED(get_DataSource, IUnknown**)
    VLM_REFUSED(putref_DataSource, IUnknown*)
    VLM_REFUSED(_xSave, BSTR, PersistFormatEnum)
    VLM_REFUSED(get_ActiveCommand, IDispatch**)
    VLM_REFUSED_PROPERTY(StayInSync, VARIANT_BOOL)
    VLM_REFUSED(GetString, StringFormatEnum, LONG, BSTR, BSTR, BSTR, BSTR*)
    VLM_REFUSED_PROPERTY(DataMember, BSTR)
    VLM_REFUSED(CompareBookmarks, VARIANT, VARIANT, CompareEnum*)
    VLM_REFUSED(Clone, LockTypeEnum, _Recordset**)
    VLM_REFUSED(Resync, AffectEnum, ResyncEnum)
    VLM_REFUSED(Seek, VARIANT, SeekEnum)
    VLM_REFUSED_PROPERTY(Index, BSTR)
    VLM_REFUSED(Save, VARIANT, PersistFormatEnum)

private:
    void Note(const Failure& failure) override {
        if (connection_) connection_->Note(failure);
    }
    data::UpdatableRecordset& Edited() const;
    void Take(com::Ref<Connection> connection, data::RecordsetPtr rows);
    void Store();

    com::Ref<Connection> connection_;
    data::ConnectionPtr native_;  // lives as long as the rows, though the connection be closed
    data::RecordsetPtr rows_;
    data::UpdatableRecordset* edited_ = nullptr;  // the rows, when they may be changed
    std::string table_;
    EditModeEnum mode_ = adEditNone;
    bool none_ = true;  // there is no row at all
};

}  // namespace vlm::test::dataobjects
