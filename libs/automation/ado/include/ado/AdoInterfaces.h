#pragma once

#include "automation/Automation.h"
#include "automation/Guid.h"

/// The tables of functions of a row set, its columns and their collections, in slot order, as hosts that bind early
/// call them. Enumerations are 32 bits wide, places and counts as wide as a pointer; objects are passed as IDispatch,
/// texts and values are the caller's where they go in. The tables of one kind of object begin with each other, so one
/// table answers for the earlier interfaces too.
namespace vlm::data::ado {

#define VLM_SLOT virtual HRESULT STDMETHODCALLTYPE

struct IAdoObject : IDispatch {
    static constexpr GUID kId = com::Guid("00000534-0000-0010-8000-00AA006D2EA4");

    VLM_SLOT get_Properties(IDispatch** result) = 0;

protected:
    ~IAdoObject() = default;
};

struct IAdoCollection : IDispatch {
    static constexpr GUID kId = com::Guid("00000512-0000-0010-8000-00AA006D2EA4");

    VLM_SLOT get_Count(std::int32_t* result) = 0;
    VLM_SLOT _NewEnum(IUnknown** result) = 0;
    VLM_SLOT Refresh() = 0;
    VLM_SLOT get_Item(VARIANT index, IDispatch** result) = 0;  // of Fields and of Properties

protected:
    ~IAdoCollection() = default;
};

struct IAdoFields : IAdoCollection {
    using IBase = IAdoCollection;
    static constexpr GUID kId = com::Guid("00000564-0000-0010-8000-00AA006D2EA4");
    static constexpr GUID kEarlier[] = {com::Guid("00000506-0000-0010-8000-00AA006D2EA4"),
                                        com::Guid("0000054D-0000-0010-8000-00AA006D2EA4")};

    VLM_SLOT _Append(BSTR name, std::int32_t type, std::intptr_t size, std::int32_t attributes) = 0;
    VLM_SLOT Delete(VARIANT index) = 0;
    VLM_SLOT Append(BSTR name, std::int32_t type, std::intptr_t size, std::int32_t attributes, VARIANT value) = 0;
    VLM_SLOT Update() = 0;
    VLM_SLOT Resync(std::int32_t values) = 0;
    VLM_SLOT CancelUpdate() = 0;

protected:
    ~IAdoFields() = default;
};

struct IAdoProperties : IAdoCollection {
    using IBase = IAdoCollection;
    static constexpr GUID kId = com::Guid("00000504-0000-0010-8000-00AA006D2EA4");
    static constexpr GUID kEarlier[] = {kId};

protected:
    ~IAdoProperties() = default;
};

struct IAdoField : IAdoObject {
    using IBase = IAdoObject;
    static constexpr GUID kId = com::Guid("00000569-0000-0010-8000-00AA006D2EA4");
    static constexpr GUID kEarlier[] = {com::Guid("0000054C-0000-0010-8000-00AA006D2EA4")};

    VLM_SLOT get_ActualSize(std::intptr_t* result) = 0;
    VLM_SLOT get_Attributes(std::int32_t* result) = 0;
    VLM_SLOT get_DefinedSize(std::intptr_t* result) = 0;
    VLM_SLOT get_Name(BSTR* result) = 0;
    VLM_SLOT get_Type(std::int32_t* result) = 0;
    VLM_SLOT get_Value(VARIANT* result) = 0;
    VLM_SLOT put_Value(VARIANT value) = 0;
    VLM_SLOT get_Precision(std::uint8_t* result) = 0;
    VLM_SLOT get_NumericScale(std::uint8_t* result) = 0;
    VLM_SLOT AppendChunk(VARIANT data) = 0;
    VLM_SLOT GetChunk(std::int32_t length, VARIANT* result) = 0;
    VLM_SLOT get_OriginalValue(VARIANT* result) = 0;
    VLM_SLOT get_UnderlyingValue(VARIANT* result) = 0;
    VLM_SLOT get_DataFormat(IUnknown** result) = 0;
    VLM_SLOT putref_DataFormat(IUnknown* format) = 0;
    VLM_SLOT put_Precision(std::uint8_t precision) = 0;
    VLM_SLOT put_NumericScale(std::uint8_t scale) = 0;
    VLM_SLOT put_Type(std::int32_t type) = 0;
    VLM_SLOT put_DefinedSize(std::intptr_t size) = 0;
    VLM_SLOT put_Attributes(std::int32_t attributes) = 0;
    VLM_SLOT get_Status(std::int32_t* result) = 0;

protected:
    ~IAdoField() = default;
};

struct IAdoRecordset : IAdoObject {
    using IBase = IAdoObject;
    static constexpr GUID kId = com::Guid("00000556-0000-0010-8000-00AA006D2EA4");
    static constexpr GUID kEarlier[] = {com::Guid("0000050E-0000-0010-8000-00AA006D2EA4"),
                                        com::Guid("0000054F-0000-0010-8000-00AA006D2EA4"),
                                        com::Guid("00000555-0000-0010-8000-00AA006D2EA4")};

    VLM_SLOT get_AbsolutePosition(std::intptr_t* result) = 0;
    VLM_SLOT put_AbsolutePosition(std::intptr_t position) = 0;
    VLM_SLOT putref_ActiveConnection(IDispatch* connection) = 0;
    VLM_SLOT put_ActiveConnection(VARIANT connection) = 0;
    VLM_SLOT get_ActiveConnection(VARIANT* result) = 0;
    VLM_SLOT get_BOF(VARIANT_BOOL* result) = 0;
    VLM_SLOT get_Bookmark(VARIANT* result) = 0;
    VLM_SLOT put_Bookmark(VARIANT bookmark) = 0;
    VLM_SLOT get_CacheSize(std::int32_t* result) = 0;
    VLM_SLOT put_CacheSize(std::int32_t size) = 0;
    VLM_SLOT get_CursorType(std::int32_t* result) = 0;
    VLM_SLOT put_CursorType(std::int32_t type) = 0;
    VLM_SLOT get_EOF(VARIANT_BOOL* result) = 0;
    VLM_SLOT get_Fields(IDispatch** result) = 0;
    VLM_SLOT get_LockType(std::int32_t* result) = 0;
    VLM_SLOT put_LockType(std::int32_t type) = 0;
    VLM_SLOT get_MaxRecords(std::intptr_t* result) = 0;
    VLM_SLOT put_MaxRecords(std::intptr_t most) = 0;
    VLM_SLOT get_RecordCount(std::intptr_t* result) = 0;
    VLM_SLOT putref_Source(IDispatch* source) = 0;
    VLM_SLOT put_Source(BSTR source) = 0;
    VLM_SLOT get_Source(VARIANT* result) = 0;
    VLM_SLOT AddNew(VARIANT fields, VARIANT values) = 0;
    VLM_SLOT CancelUpdate() = 0;
    VLM_SLOT Close() = 0;
    VLM_SLOT Delete(std::int32_t affected) = 0;
    VLM_SLOT GetRows(std::int32_t rows, VARIANT start, VARIANT fields, VARIANT* result) = 0;
    VLM_SLOT Move(std::intptr_t count, VARIANT start) = 0;
    VLM_SLOT MoveNext() = 0;
    VLM_SLOT MovePrevious() = 0;
    VLM_SLOT MoveFirst() = 0;
    VLM_SLOT MoveLast() = 0;
    VLM_SLOT Open(VARIANT source, VARIANT connection, std::int32_t cursorType, std::int32_t lockType,
                  std::int32_t options) = 0;
    VLM_SLOT Requery(std::int32_t options) = 0;
    VLM_SLOT _xResync(std::int32_t affected) = 0;
    VLM_SLOT Update(VARIANT fields, VARIANT values) = 0;
    VLM_SLOT get_AbsolutePage(std::intptr_t* result) = 0;
    VLM_SLOT put_AbsolutePage(std::intptr_t page) = 0;
    VLM_SLOT get_EditMode(std::int32_t* result) = 0;
    VLM_SLOT get_Filter(VARIANT* result) = 0;
    VLM_SLOT put_Filter(VARIANT filter) = 0;
    VLM_SLOT get_PageCount(std::intptr_t* result) = 0;
    VLM_SLOT get_PageSize(std::int32_t* result) = 0;
    VLM_SLOT put_PageSize(std::int32_t size) = 0;
    VLM_SLOT get_Sort(BSTR* result) = 0;
    VLM_SLOT put_Sort(BSTR sort) = 0;
    VLM_SLOT get_Status(std::int32_t* result) = 0;
    VLM_SLOT get_State(std::int32_t* result) = 0;
    VLM_SLOT _xClone(IDispatch** result) = 0;
    VLM_SLOT UpdateBatch(std::int32_t affected) = 0;
    VLM_SLOT CancelBatch(std::int32_t affected) = 0;
    VLM_SLOT get_CursorLocation(std::int32_t* result) = 0;
    VLM_SLOT put_CursorLocation(std::int32_t location) = 0;
    VLM_SLOT NextRecordset(VARIANT* recordsAffected, IDispatch** result) = 0;
    VLM_SLOT Supports(std::int32_t options, VARIANT_BOOL* result) = 0;
    VLM_SLOT get_Collect(VARIANT index, VARIANT* result) = 0;
    VLM_SLOT put_Collect(VARIANT index, VARIANT value) = 0;
    VLM_SLOT get_MarshalOptions(std::int32_t* result) = 0;
    VLM_SLOT put_MarshalOptions(std::int32_t options) = 0;
    VLM_SLOT FindRow(BSTR criteria, std::int32_t skip, std::int32_t direction, VARIANT start) = 0;
    // The second version.
    VLM_SLOT Cancel() = 0;
    VLM_SLOT get_DataSource(IUnknown** result) = 0;
    VLM_SLOT putref_DataSource(IUnknown* source) = 0;
    VLM_SLOT _xSave(BSTR fileName, std::int32_t format) = 0;
    VLM_SLOT get_ActiveCommand(IDispatch** result) = 0;
    VLM_SLOT put_StayInSync(VARIANT_BOOL stay) = 0;
    VLM_SLOT get_StayInSync(VARIANT_BOOL* result) = 0;
    VLM_SLOT GetString(std::int32_t format, std::int32_t rows, BSTR columnDelimiter, BSTR rowDelimiter, BSTR nullText,
                       BSTR* result) = 0;
    VLM_SLOT get_DataMember(BSTR* result) = 0;
    VLM_SLOT put_DataMember(BSTR member) = 0;
    VLM_SLOT CompareBookmarks(VARIANT left, VARIANT right, std::int32_t* result) = 0;
    VLM_SLOT Clone(std::int32_t lockType, IDispatch** result) = 0;
    VLM_SLOT Resync(std::int32_t affected, std::int32_t values) = 0;
    // 2.1
    VLM_SLOT Seek(VARIANT keys, std::int32_t option) = 0;
    VLM_SLOT put_Index(BSTR index) = 0;
    VLM_SLOT get_Index(BSTR* result) = 0;
    // 2.5
    VLM_SLOT Save(VARIANT destination, std::int32_t format) = 0;

protected:
    ~IAdoRecordset() = default;
};

#undef VLM_SLOT

}  // namespace vlm::data::ado
