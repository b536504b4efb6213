#pragma once

#include "automation/Automation.h"
#include "automation/Guid.h"
#include "frame/ExportTypes.h"
#include "server/VlmHost.h"

/// The library's contract with its host: identifiers, interfaces, entry points; what a host may hand in,
/// server/VlmHost.h. The functions of an interface stand in the order of its table; a component's object references are
/// passed as IDispatch.
namespace vlm::server {

inline constexpr const char* kLibraryName = "VlmASLServicesLib";

inline constexpr GUID kTipoTracciatoConstsId = com::Guid("3BCBDB6E-C0E0-43A7-B57A-6F18728E973C");

// Classes.
inline constexpr GUID kASLExportClass = com::Guid("800F005F-7CC3-4985-9175-4561517FB9F2");
inline constexpr GUID kASLPanoramicoClass = com::Guid("8EBABA5A-3C00-4524-98AD-493BE94576CA");
inline constexpr GUID kASLPanoramicoLineClass = com::Guid("3CE9C516-DE79-41C9-BA9B-20DAD4AFFFDE");
inline constexpr GUID kExportProgettiClass = com::Guid("83EA787D-DC53-4ED5-84B3-9BF73DA5D7CA");
inline constexpr GUID kASLImportPatientClass = com::Guid("4105EB3F-B25F-4AF6-987A-85B179946804");

// What the host hands in.
inline constexpr GUID kCHMObjectId = com::Guid("4C94D045-3241-446A-ACD3-39E77BF0116B");
inline constexpr GUID kLockSrvId = com::Guid("E5B58F3A-BA1B-4425-BB37-FA9BF44F86CF");
inline constexpr GUID kRightsId = com::Guid("CB1270F9-71D4-464D-9926-EB3508D9B415");

// Events of ASLImportPatient, a dispatch interface. ReadingFile has one argument: percent of the source read so far.
inline constexpr GUID k__ASLImportPatientId = com::Guid("CA5463C2-CB66-449E-B7E4-5C7378765ABC");
inline constexpr DISPID kReadingFileId = 1;

#define VLM_SLOT virtual HRESULT STDMETHODCALLTYPE

struct _ASLExport : IDispatch {
    static constexpr GUID kId = com::Guid("25DA5973-AFFC-4CC9-99F6-A7CC304A0A9F");

    VLM_SLOT ShowDialog() = 0;
    VLM_SLOT get_Connection(IDispatch** result) = 0;
    VLM_SLOT putref_Connection(IDispatch* value) = 0;
    VLM_SLOT ViewAsDecoded(BSTR FileName, TipoTracciatoConsts TipoTracciato, VARIANT_BOOL* result) = 0;
    VLM_SLOT get_CHMObject(IDispatch** result) = 0;
    VLM_SLOT putref_CHMObject(IDispatch* value) = 0;

protected:
    ~_ASLExport() = default;
};

struct _ASLPanoramico : IDispatch {
    static constexpr GUID kId = com::Guid("BD7E450D-CDD9-454B-B294-7DEB489C6DDE");

    VLM_SLOT get_CHMObject(IDispatch** result) = 0;
    VLM_SLOT putref_CHMObject(IDispatch* value) = 0;
    VLM_SLOT ShowDialog() = 0;
    VLM_SLOT ViewAsDecoded(BSTR FileName, TipoTracciatoConsts TipoTracciato, VARIANT_BOOL* result) = 0;
    VLM_SLOT get_Connection(IDispatch** result) = 0;
    VLM_SLOT putref_Connection(IDispatch* value) = 0;

protected:
    ~_ASLPanoramico() = default;
};

struct _ASLPanoramicoLine : IDispatch {
    static constexpr GUID kId = com::Guid("52E889A1-8A95-4487-87BC-C34B08B13A54");

    VLM_SLOT get_CodMed(BSTR* result) = 0;
    VLM_SLOT put_CodMed(BSTR value) = 0;
    VLM_SLOT get_AssCF(BSTR* result) = 0;
    VLM_SLOT put_AssCF(BSTR value) = 0;
    VLM_SLOT get_DataRicetta(DATE* result) = 0;
    VLM_SLOT put_DataRicetta(DATE value) = 0;
    VLM_SLOT get_CodFarmaco1(BSTR* result) = 0;
    VLM_SLOT put_CodFarmaco1(BSTR value) = 0;
    VLM_SLOT get_ICD9Farmaco1(BSTR* result) = 0;
    VLM_SLOT put_ICD9Farmaco1(BSTR value) = 0;
    VLM_SLOT get_SuggFarmaco1(BSTR* result) = 0;
    VLM_SLOT put_SuggFarmaco1(BSTR value) = 0;
    VLM_SLOT get_QFarmaco1(SHORT* result) = 0;
    VLM_SLOT put_QFarmaco1(SHORT value) = 0;
    VLM_SLOT get_CodFarmaco2(BSTR* result) = 0;
    VLM_SLOT put_CodFarmaco2(BSTR value) = 0;
    VLM_SLOT get_ICD9Farmaco2(BSTR* result) = 0;
    VLM_SLOT put_ICD9Farmaco2(BSTR value) = 0;
    VLM_SLOT get_SuggFarmaco2(BSTR* result) = 0;
    VLM_SLOT put_SuggFarmaco2(BSTR value) = 0;
    VLM_SLOT get_QFarmaco2(SHORT* result) = 0;
    VLM_SLOT put_QFarmaco2(SHORT value) = 0;
    VLM_SLOT get_TipoRecord(BSTR* result) = 0;
    VLM_SLOT put_TipoRecord(BSTR value) = 0;
    VLM_SLOT get_ICD92Farmaco1(BSTR* result) = 0;
    VLM_SLOT put_ICD92Farmaco1(BSTR value) = 0;
    VLM_SLOT get_ICD92Farmaco2(BSTR* result) = 0;
    VLM_SLOT put_ICD92Farmaco2(BSTR value) = 0;
    VLM_SLOT get_Rs(IDispatch** result) = 0;
    VLM_SLOT putref_Rs(IDispatch* value) = 0;
    VLM_SLOT get_Connection(IDispatch** result) = 0;
    VLM_SLOT putref_Connection(IDispatch* value) = 0;
    VLM_SLOT ReadData(VARIANT_BOOL* result) = 0;
    VLM_SLOT GetFormattedLine(BSTR* result) = 0;
    VLM_SLOT GetErrors(BSTR* result) = 0;
    VLM_SLOT get_PrescrivibileSSN(VARIANT_BOOL* result) = 0;
    VLM_SLOT put_PrescrivibileSSN(VARIANT_BOOL value) = 0;

protected:
    ~_ASLPanoramicoLine() = default;
};

struct _ExportProgetti : IDispatch {
    static constexpr GUID kId = com::Guid("15C6B39A-8CBF-4947-8771-6A236CB555E4");

    VLM_SLOT get_Connection(IDispatch** result) = 0;
    VLM_SLOT putref_Connection(IDispatch* value) = 0;
    VLM_SLOT get_CHMObject(IDispatch** result) = 0;
    VLM_SLOT putref_CHMObject(IDispatch* value) = 0;
    VLM_SLOT ShowDialog() = 0;

protected:
    ~_ExportProgetti() = default;
};

struct _ASLImportPatient : IDispatch {
    static constexpr GUID kId = com::Guid("52176D7C-48C3-424A-A5F9-14ACD91DEFD1");

    VLM_SLOT get_Connection(IDispatch** result) = 0;
    VLM_SLOT putref_Connection(IDispatch* value) = 0;
    VLM_SLOT get_LockSrv(IDispatch** result) = 0;
    VLM_SLOT putref_LockSrv(IDispatch* value) = 0;
    VLM_SLOT putref_Rights(IDispatch* value) = 0;  // before its get
    VLM_SLOT get_Rights(IDispatch** result) = 0;
    VLM_SLOT ShowDialog() = 0;
    VLM_SLOT InitDataStructure(IDispatch* Data) = 0;
    VLM_SLOT GetElementList(BSTR FileName, IDispatch** result) = 0;
    VLM_SLOT CreatePatient(IDispatch* Data, LONG* result) = 0;
    VLM_SLOT GetElementListSistemaTS(LONG nSpecialistaID, BSTR PIN, IDispatch** result) = 0;
    VLM_SLOT GetElementListEsentiRedditoSistemaTS(LONG nSpecialistaID, BSTR PIN, IDispatch** result) = 0;
    VLM_SLOT CreateEsenzione(IDispatch* Data, LONG* result) = 0;

protected:
    ~_ASLImportPatient() = default;
};

#undef VLM_SLOT

}  // namespace vlm::server

#ifdef _WIN32
#define VLM_ENTRY extern "C"
#else
#define VLM_ENTRY extern "C" __attribute__((visibility("default")))
#endif

VLM_ENTRY HRESULT STDAPICALLTYPE DllGetClassObject(REFCLSID classId, REFIID iid, void** object);
/// S_OK when no object of the library is alive, no class factory is locked and nothing of the host's is held: neither
/// the library-wide connection nor what VlmSetHost was given.
VLM_ENTRY HRESULT STDAPICALLTYPE DllCanUnloadNow();
/// The type library and the five classes. Where there is no registry both do nothing and succeed.
VLM_ENTRY HRESULT STDAPICALLTYPE DllRegisterServer();
VLM_ENTRY HRESULT STDAPICALLTYPE DllUnregisterServer();
