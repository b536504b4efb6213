#include "RowsObject.h"

/// The names of a row set, with the dispatch identifiers that hosts know.
namespace vlm::data::ado {

std::span<const com::Member> RowsObject::Members() const noexcept {
    using Self = RowsObject;
    using com::Get, com::Put, com::Method;
    using Optional = com::Parameter;
    constexpr std::int32_t kRestOfRows = -1, kCurrentRow = 1, kAllRows = 3;
    static constexpr Optional kFields{"Fields", VT_VARIANT, true}, kFieldList{"FieldList", VT_VARIANT, true};
    static constexpr Optional kValues{"Values", VT_VARIANT, true}, kStart{"Start", VT_VARIANT, true};
    static constexpr Optional kAffected{"AffectRecords", VT_I4, true, kAllRows};
    static constexpr Optional kOptions{"Options", VT_I4, true, kUnspecified};
    static constexpr std::array kMembers = {
        Get<&Self::FieldsOrOne>("Fields", DISPID_VALUE, VT_DISPATCH, {{"Index", VT_VARIANT, true}}),
        com::PutAt<&Self::put_Collect>("Fields", DISPID_VALUE, VT_VARIANT),
        Get<&Self::get_Properties>("Properties", 0x1F4, VT_DISPATCH),
        Get<&Self::get_AbsolutePosition>("AbsolutePosition", 0x3E8, kPointerWide),
        Put<&Self::put_AbsolutePosition>("AbsolutePosition", 0x3E8, kPointerWide),
        Get<&Self::get_ActiveConnection>("ActiveConnection", 0x3E9, VT_VARIANT),
        Put<&Self::put_ActiveConnection>("ActiveConnection", 0x3E9, VT_VARIANT),
        com::PutRef<&Self::putref_ActiveConnection>("ActiveConnection", 0x3E9),
        Get<&Self::get_BOF>("BOF", 0x3EA, VT_BOOL),
        Get<&Self::get_Bookmark>("Bookmark", 0x3EB, VT_VARIANT),
        Put<&Self::put_Bookmark>("Bookmark", 0x3EB, VT_VARIANT),
        Get<&Self::get_CacheSize>("CacheSize", 0x3EC, VT_I4),
        Put<&Self::put_CacheSize>("CacheSize", 0x3EC, VT_I4),
        Get<&Self::get_CursorType>("CursorType", 0x3ED, VT_I4),
        Put<&Self::put_CursorType>("CursorType", 0x3ED, VT_I4),
        Get<&Self::get_EOF>("EOF", 0x3EE, VT_BOOL),
        Get<&Self::get_LockType>("LockType", 0x3F0, VT_I4),
        Put<&Self::put_LockType>("LockType", 0x3F0, VT_I4),
        Get<&Self::get_MaxRecords>("MaxRecords", 0x3F1, kPointerWide),
        Put<&Self::put_MaxRecords>("MaxRecords", 0x3F1, kPointerWide),
        Get<&Self::get_RecordCount>("RecordCount", 0x3F2, kPointerWide),
        Get<&Self::get_Source>("Source", 0x3F3, VT_VARIANT),
        Put<&Self::put_Source>("Source", 0x3F3, VT_BSTR),
        com::PutRef<&Self::putref_Source>("Source", 0x3F3),
        Method<&Self::AddNew>("AddNew", 0x3F4, VT_EMPTY, {kFieldList, kValues}),
        Method<&Self::CancelUpdate>("CancelUpdate", 0x3F5),
        Method<&Self::Close>("Close", 0x3F6),
        Method<&Self::Delete>("Delete", 0x3F7, VT_EMPTY, {{"AffectRecords", VT_I4, true, kCurrentRow}}),
        Method<&Self::GetRows>("GetRows", 0x3F8, VT_VARIANT, {{"Rows", VT_I4, true, kRestOfRows}, kStart, kFields}),
        Method<&Self::Move>("Move", 0x3F9, VT_EMPTY, {{"NumRecords", kPointerWide}, kStart}),
        Method<&Self::MoveNext>("MoveNext", 0x3FA),
        Method<&Self::MovePrevious>("MovePrevious", 0x3FB),
        Method<&Self::MoveFirst>("MoveFirst", 0x3FC),
        Method<&Self::MoveLast>("MoveLast", 0x3FD),
        Method<&Self::Open>("Open", 0x3FE, VT_EMPTY,
                            {{"Source", VT_VARIANT, true},
                             {"ActiveConnection", VT_VARIANT, true},
                             {"CursorType", VT_I4, true, kUnspecified},
                             {"LockType", VT_I4, true, kUnspecified},
                             kOptions}),
        Method<&Self::Requery>("Requery", 0x3FF, VT_EMPTY, {kOptions}),
        Method<&Self::Resync>("Resync", 0x400, VT_EMPTY, {kAffected, {"ResyncValues", VT_I4, true, 2}}),
        Method<&Self::Update>("Update", 0x401, VT_EMPTY, {kFields, kValues}),
        Get<&Self::get_EditMode>("EditMode", 0x402, VT_I4),
        Get<&Self::get_Status>("Status", 0x405, VT_I4),
        Get<&Self::get_Filter>("Filter", 0x406, VT_VARIANT),
        Put<&Self::put_Filter>("Filter", 0x406, VT_VARIANT),
        Get<&Self::get_Sort>("Sort", 0x407, VT_BSTR),
        Put<&Self::put_Sort>("Sort", 0x407, VT_BSTR),
        Method<&Self::Clone>("Clone", 0x40A, VT_DISPATCH, {{"LockType", VT_I4, true, kUnspecified}}),
        Method<&Self::UpdateBatch>("UpdateBatch", 0x40B, VT_EMPTY, {kAffected}),
        Method<&Self::Supports>("Supports", 0x40C, VT_BOOL, {{"CursorOptions", VT_I4}}),
        Get<&Self::get_AbsolutePage>("AbsolutePage", 0x417, kPointerWide),
        Put<&Self::put_AbsolutePage>("AbsolutePage", 0x417, kPointerWide),
        Get<&Self::get_PageSize>("PageSize", 0x418, VT_I4),
        Put<&Self::put_PageSize>("PageSize", 0x418, VT_I4),
        Method<&Self::CancelBatch>("CancelBatch", 0x419, VT_EMPTY, {kAffected}),
        Get<&Self::get_PageCount>("PageCount", 0x41A, kPointerWide),
        Get<&Self::get_CursorLocation>("CursorLocation", 0x41B, VT_I4),
        Put<&Self::put_CursorLocation>("CursorLocation", 0x41B, VT_I4),
        Method<&Self::NextRecordset>("NextRecordset", 0x41C, VT_DISPATCH, {{"RecordsAffected", VT_VARIANT, true}}),
        Get<&Self::get_MarshalOptions>("MarshalOptions", 0x41D, VT_I4),
        Put<&Self::put_MarshalOptions>("MarshalOptions", 0x41D, VT_I4),
        Get<&Self::get_State>("State", 0x41E, VT_I4),
        Method<&Self::Cancel>("Cancel", 0x41F),
        Get<&Self::get_DataSource>("DataSource", 0x420, VT_UNKNOWN),
        Method<&Self::Save>("Save", 0x421, VT_EMPTY,
                            {{"Destination", VT_VARIANT, true}, {"PersistFormat", VT_I4, true}}),
        Method<&Self::FindRow>(
            "Find", 0x422, VT_EMPTY,
            {{"Criteria", VT_BSTR}, {"SkipRecords", VT_I4, true}, {"SearchDirection", VT_I4, true, 1}, kStart}),
        Get<&Self::get_ActiveCommand>("ActiveCommand", 0x425, VT_DISPATCH),
        Method<&Self::GetString>("GetString", 0x426, VT_BSTR,
                                 {{"StringFormat", VT_I4, true, 2},
                                  {"NumRows", VT_I4, true, kRestOfRows},
                                  {"ColumnDelimeter", VT_BSTR, true},
                                  {"RowDelimeter", VT_BSTR, true},
                                  {"NullExpr", VT_BSTR, true}}),
        Get<&Self::get_StayInSync>("StayInSync", 0x427, VT_BOOL),
        Put<&Self::put_StayInSync>("StayInSync", 0x427, VT_BOOL),
        Get<&Self::get_DataMember>("DataMember", 0x428, VT_BSTR),
        Put<&Self::put_DataMember>("DataMember", 0x428, VT_BSTR),
        Method<&Self::CompareBookmarks>("CompareBookmarks", 0x429, VT_I4, {{"Bookmark1"}, {"Bookmark2"}}),
        Method<&Self::Seek>("Seek", 0x42A, VT_EMPTY, {{"KeyValues"}, {"SeekOption", VT_I4, true, 1}}),
        Get<&Self::get_Index>("Index", 0x42B, VT_BSTR),
        Put<&Self::put_Index>("Index", 0x42B, VT_BSTR),
        Get<&Self::get_Collect>("Collect", DISPID_COLLECT, VT_VARIANT, {{"Index"}}),
        com::PutAt<&Self::put_Collect>("Collect", DISPID_COLLECT, VT_VARIANT),
    };
    return kMembers;
}

}  // namespace vlm::data::ado
