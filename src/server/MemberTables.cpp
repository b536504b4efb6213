#include "MemberTables.h"

#include "ado/AdoTypes.h"
#include "server/VlmASLServicesLib.h"

namespace vlm::server {

using com::Get;
using com::Member;
using com::Method;
using com::Parameter;
using com::Put;
using com::PutRef;
using data::ado::kConnectionId;
using data::ado::kRecordsetId;

namespace {

constexpr Parameter kFileName{"FileName", VT_BSTR};
constexpr Parameter kTipoTracciato{"TipoTracciato", VT_I4, true, ttM};
constexpr Parameter kData{"Data", VT_DISPATCH, false, 0, &kRecordsetId};
constexpr Parameter kSpecialista{"nSpecialistaID", VT_I4};
constexpr Parameter kPin{"PIN", VT_BSTR};

}  // namespace

template <>
std::span<const Member> MembersOf<_ASLExport>() noexcept {
    using I = _ASLExport;
    static constexpr std::array kMembers = {
        Method<&I::ShowDialog>("ShowDialog", 1),
        Get<&I::get_Connection>("Connection", 2, VT_DISPATCH),
        PutRef<&I::putref_Connection>("Connection", 2, &kConnectionId),
        Method<&I::ViewAsDecoded>("ViewAsDecoded", 3, VT_BOOL, {kFileName, kTipoTracciato}),
        Get<&I::get_CHMObject>("CHMObject", 4, VT_DISPATCH),
        PutRef<&I::putref_CHMObject>("CHMObject", 4, &kCHMObjectId),
    };
    return kMembers;
}

template <>
std::span<const Member> MembersOf<_ASLPanoramico>() noexcept {
    using I = _ASLPanoramico;
    static constexpr std::array kMembers = {
        Get<&I::get_CHMObject>("CHMObject", 1, VT_DISPATCH),
        PutRef<&I::putref_CHMObject>("CHMObject", 1, &kCHMObjectId),
        Method<&I::ShowDialog>("ShowDialog", 2),
        Method<&I::ViewAsDecoded>("ViewAsDecoded", 3, VT_BOOL, {kFileName, kTipoTracciato}),
        Get<&I::get_Connection>("Connection", 4, VT_DISPATCH),
        PutRef<&I::putref_Connection>("Connection", 4, &kConnectionId),
    };
    return kMembers;
}

template <>
std::span<const Member> MembersOf<_ASLPanoramicoLine>() noexcept {
    using I = _ASLPanoramicoLine;
    static constexpr std::array kMembers = {
        Get<&I::get_CodMed>("CodMed", 1, VT_BSTR),
        Put<&I::put_CodMed>("CodMed", 1, VT_BSTR),
        Get<&I::get_AssCF>("AssCF", 2, VT_BSTR),
        Put<&I::put_AssCF>("AssCF", 2, VT_BSTR),
        Get<&I::get_DataRicetta>("DataRicetta", 3, VT_DATE),
        Put<&I::put_DataRicetta>("DataRicetta", 3, VT_DATE),
        Get<&I::get_CodFarmaco1>("CodFarmaco1", 4, VT_BSTR),
        Put<&I::put_CodFarmaco1>("CodFarmaco1", 4, VT_BSTR),
        Get<&I::get_ICD9Farmaco1>("ICD9Farmaco1", 5, VT_BSTR),
        Put<&I::put_ICD9Farmaco1>("ICD9Farmaco1", 5, VT_BSTR),
        Get<&I::get_SuggFarmaco1>("SuggFarmaco1", 6, VT_BSTR),
        Put<&I::put_SuggFarmaco1>("SuggFarmaco1", 6, VT_BSTR),
        Get<&I::get_QFarmaco1>("QFarmaco1", 7, VT_I2),
        Put<&I::put_QFarmaco1>("QFarmaco1", 7, VT_I2),
        Get<&I::get_CodFarmaco2>("CodFarmaco2", 8, VT_BSTR),
        Put<&I::put_CodFarmaco2>("CodFarmaco2", 8, VT_BSTR),
        Get<&I::get_ICD9Farmaco2>("ICD9Farmaco2", 9, VT_BSTR),
        Put<&I::put_ICD9Farmaco2>("ICD9Farmaco2", 9, VT_BSTR),
        Get<&I::get_SuggFarmaco2>("SuggFarmaco2", 10, VT_BSTR),
        Put<&I::put_SuggFarmaco2>("SuggFarmaco2", 10, VT_BSTR),
        Get<&I::get_QFarmaco2>("QFarmaco2", 11, VT_I2),
        Put<&I::put_QFarmaco2>("QFarmaco2", 11, VT_I2),
        Get<&I::get_TipoRecord>("TipoRecord", 12, VT_BSTR),
        Put<&I::put_TipoRecord>("TipoRecord", 12, VT_BSTR),
        Get<&I::get_ICD92Farmaco1>("ICD92Farmaco1", 13, VT_BSTR),
        Put<&I::put_ICD92Farmaco1>("ICD92Farmaco1", 13, VT_BSTR),
        Get<&I::get_ICD92Farmaco2>("ICD92Farmaco2", 14, VT_BSTR),
        Put<&I::put_ICD92Farmaco2>("ICD92Farmaco2", 14, VT_BSTR),
        Get<&I::get_Rs>("Rs", 15, VT_DISPATCH),
        PutRef<&I::putref_Rs>("Rs", 15, &kRecordsetId),
        Get<&I::get_Connection>("Connection", 16, VT_DISPATCH),
        PutRef<&I::putref_Connection>("Connection", 16, &kConnectionId),
        Method<&I::ReadData>("ReadData", 17, VT_BOOL),
        Method<&I::GetFormattedLine>("GetFormattedLine", 18, VT_BSTR),
        Method<&I::GetErrors>("GetErrors", 19, VT_BSTR),
        Get<&I::get_PrescrivibileSSN>("PrescrivibileSSN", 20, VT_BOOL),
        Put<&I::put_PrescrivibileSSN>("PrescrivibileSSN", 20, VT_BOOL),
    };
    return kMembers;
}

template <>
std::span<const Member> MembersOf<_ExportProgetti>() noexcept {
    using I = _ExportProgetti;
    static constexpr std::array kMembers = {
        Get<&I::get_Connection>("Connection", 1, VT_DISPATCH),
        PutRef<&I::putref_Connection>("Connection", 1, &kConnectionId),
        Get<&I::get_CHMObject>("CHMObject", 2, VT_DISPATCH),
        PutRef<&I::putref_CHMObject>("CHMObject", 2, &kCHMObjectId),
        Method<&I::ShowDialog>("ShowDialog", 3),
    };
    return kMembers;
}

template <>
std::span<const Member> MembersOf<_ASLImportPatient>() noexcept {
    using I = _ASLImportPatient;
    static constexpr std::array kMembers = {
        Get<&I::get_Connection>("Connection", 1, VT_DISPATCH),
        PutRef<&I::putref_Connection>("Connection", 1, &kConnectionId),
        Get<&I::get_LockSrv>("LockSrv", 2, VT_DISPATCH),
        PutRef<&I::putref_LockSrv>("LockSrv", 2),
        PutRef<&I::putref_Rights>("Rights", 3),
        Get<&I::get_Rights>("Rights", 3, VT_DISPATCH),
        Method<&I::ShowDialog>("ShowDialog", 4),
        Method<&I::InitDataStructure>("InitDataStructure", 5, VT_EMPTY, {kData}),
        Method<&I::GetElementList>("GetElementList", 6, VT_DISPATCH, {kFileName}),
        Method<&I::CreatePatient>("CreatePatient", 7, VT_I4, {kData}),
        Method<&I::GetElementListSistemaTS>("GetElementListSistemaTS", 8, VT_DISPATCH, {kSpecialista, kPin}),
        Method<&I::GetElementListEsentiRedditoSistemaTS>("GetElementListEsentiRedditoSistemaTS", 9, VT_DISPATCH,
                                                         {kSpecialista, kPin}),
        Method<&I::CreateEsenzione>("CreateEsenzione", 10, VT_I4, {kData}),
    };
    return kMembers;
}

}  // namespace vlm::server
