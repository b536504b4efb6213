#include <cstring>

#include "ServerFixture.h"
#include "ado/RecordsetObject.h"
#include "automation/ErrorReport.h"
#include "support/Words.h"

/// The interfaces as a compiled host calls them: functions in a table, by number.
namespace vlm::server {
namespace {

using com::Variant;

class SlotOrderTest : public test::ServerTest {
protected:
    /// Behind IUnknown's three and IDispatch's four. A pointer to a virtual function holds its place in bytes, plus 1.
    template <typename... Functions>
    static void ExpectInOrder(Functions... functions) {
        std::ptrdiff_t slot = 7;
        const auto expect = [&](auto function) {
            std::ptrdiff_t place = 0;
            std::memcpy(&place, &function, sizeof place);
            EXPECT_EQ(place - 1, slot++ * static_cast<std::ptrdiff_t>(sizeof(void*)));
        };
        (expect(functions), ...);
    }

    /// A property that takes and gives an object.
    template <typename Interface>
    void ExpectReference(const GUID& classId, HRESULT (STDMETHODCALLTYPE Interface::*get)(IDispatch**),
                         HRESULT (STDMETHODCALLTYPE Interface::*put)(IDispatch*), const char* name, const GUID& id) {
        const auto object = test::Create<Interface>(classId);
        const com::Ref<IDispatch> value = Marked(id);
        EXPECT_EQ((object.Get()->*put)(value.Get()), S_OK) << name;
        EXPECT_EQ(com::LateBound(com::Ref<IDispatch>(object.Get())).Get(name).Object().Get(), value.Get()) << name;
        const bool isChecked = com::Same(id, data::ado::kConnectionId) || com::Same(id, kCHMObjectId);
        if (isChecked) {
            EXPECT_EQ((object.Get()->*put)(Marked(kRightsId).Get()), DISP_E_TYPEMISMATCH) << name;
        }
        com::Ref<IDispatch> given;
        EXPECT_EQ((object.Get()->*get)(given.Receive()), S_OK) << name;
        EXPECT_EQ(given.Get(), value.Get()) << name;
        given.Reset();
        EXPECT_EQ((object.Get()->*put)(nullptr), S_OK) << name;
        EXPECT_EQ(test::ReferencesTo(value.Get()), 1u) << name;
        EXPECT_EQ((object.Get()->*get)(nullptr), E_POINTER) << name;
    }
    template <typename Interface>
    void ExpectConnection(const GUID& classId) {
        ExpectReference<Interface>(classId, &Interface::get_Connection, &Interface::putref_Connection, "Connection",
                                   data::ado::kConnectionId);
    }
    template <typename Interface>
    void ExpectHelp(const GUID& classId) {
        ExpectReference<Interface>(classId, &Interface::get_CHMObject, &Interface::putref_CHMObject, "CHMObject",
                                   kCHMObjectId);
    }

    static void ExpectError(HRESULT result, const std::string& text) {
        EXPECT_TRUE(FAILED(result));
        const Error error = com::TakeError(result, "?");
        EXPECT_NE(std::string(error.what()).find(text), std::string::npos) << error.what();
        EXPECT_EQ(error.Source(), "VlmASLServicesLib");
    }
};

TEST_F(SlotOrderTest, FunctionsStandAsHostsWereCompiled) {
    using E = _ASLExport;
    ExpectInOrder(&E::ShowDialog, &E::get_Connection, &E::putref_Connection, &E::ViewAsDecoded, &E::get_CHMObject,
                  &E::putref_CHMObject);
    using D = _ASLPanoramico;
    ExpectInOrder(&D::get_CHMObject, &D::putref_CHMObject, &D::ShowDialog, &D::ViewAsDecoded, &D::get_Connection,
                  &D::putref_Connection);
    using P = _ExportProgetti;
    ExpectInOrder(&P::get_Connection, &P::putref_Connection, &P::get_CHMObject, &P::putref_CHMObject, &P::ShowDialog);
    using I = _ASLImportPatient;
    ExpectInOrder(&I::get_Connection, &I::putref_Connection, &I::get_LockSrv, &I::putref_LockSrv, &I::putref_Rights,
                  &I::get_Rights, &I::ShowDialog, &I::InitDataStructure, &I::GetElementList, &I::CreatePatient,
                  &I::GetElementListSistemaTS, &I::GetElementListEsentiRedditoSistemaTS, &I::CreateEsenzione);
    using L = _ASLPanoramicoLine;
    ExpectInOrder(&L::get_CodMed, &L::put_CodMed, &L::get_AssCF, &L::put_AssCF, &L::get_DataRicetta,
                  &L::put_DataRicetta, &L::get_CodFarmaco1, &L::put_CodFarmaco1, &L::get_ICD9Farmaco1,
                  &L::put_ICD9Farmaco1, &L::get_SuggFarmaco1, &L::put_SuggFarmaco1, &L::get_QFarmaco1,
                  &L::put_QFarmaco1, &L::get_CodFarmaco2, &L::put_CodFarmaco2, &L::get_ICD9Farmaco2,
                  &L::put_ICD9Farmaco2, &L::get_SuggFarmaco2, &L::put_SuggFarmaco2, &L::get_QFarmaco2,
                  &L::put_QFarmaco2, &L::get_TipoRecord, &L::put_TipoRecord, &L::get_ICD92Farmaco1,
                  &L::put_ICD92Farmaco1, &L::get_ICD92Farmaco2, &L::put_ICD92Farmaco2, &L::get_Rs, &L::putref_Rs,
                  &L::get_Connection, &L::putref_Connection, &L::ReadData, &L::GetFormattedLine, &L::GetErrors,
                  &L::get_PrescrivibileSSN, &L::put_PrescrivibileSSN);
}

TEST_F(SlotOrderTest, References) {
    ExpectConnection<_ASLExport>(kASLExportClass);
    ExpectConnection<_ASLPanoramico>(kASLPanoramicoClass);
    ExpectConnection<_ExportProgetti>(kExportProgettiClass);
    ExpectConnection<_ASLImportPatient>(kASLImportPatientClass);
    ExpectConnection<_ASLPanoramicoLine>(kASLPanoramicoLineClass);
    ExpectHelp<_ASLExport>(kASLExportClass);
    ExpectHelp<_ASLPanoramico>(kASLPanoramicoClass);
    ExpectHelp<_ExportProgetti>(kExportProgettiClass);
    using I = _ASLImportPatient;
    ExpectReference<I>(kASLImportPatientClass, &I::get_LockSrv, &I::putref_LockSrv, "LockSrv", kLockSrvId);
    ExpectReference<I>(kASLImportPatientClass, &I::get_Rights, &I::putref_Rights, "Rights", kRightsId);
    using L = _ASLPanoramicoLine;
    ExpectReference<L>(kASLPanoramicoLineClass, &L::get_Rs, &L::putref_Rs, "Rs", data::ado::kRecordsetId);
}

TEST_F(SlotOrderTest, MethodsOfTheImport) {
    const auto import = test::Create<_ASLImportPatient>(kASLImportPatientClass);
    const com::Bstr text("x");
    EXPECT_EQ(import->InitDataStructure(nullptr), DISP_E_TYPEMISMATCH);
    const auto data = com::Make<data::ado::RecordsetObject>(std::make_unique<data::MemoryRecordset>());
    EXPECT_EQ(import->InitDataStructure(data.Get()), S_OK);
    EXPECT_EQ(data->Native().FieldCount(), 19);
    IDispatch* rows = import.Get();
    ExpectError(import->GetElementList(text.Get(), &rows), "Impossibile aprire il file x");
    EXPECT_EQ(rows, nullptr);
    ExpectError(import->GetElementListSistemaTS(1, text.Get(), &rows), "HealthCardClient");
    ExpectError(import->GetElementListEsentiRedditoSistemaTS(1, text.Get(), &rows), "HealthCardClient");
    LONG patient = 1;
    LONG exemption = 1;
    EXPECT_EQ(import->CreatePatient(nullptr, &patient), DISP_E_TYPEMISMATCH);
    EXPECT_EQ(import->CreateEsenzione(nullptr, &exemption), DISP_E_TYPEMISMATCH);
    EXPECT_EQ(patient + exemption, 0);
}

TEST_F(SlotOrderTest, TheRecordKeepsWhatItIsGiven) {
    const com::LateBound record(test::Create(kASLPanoramicoLineClass));
    EXPECT_TRUE(test::Caught([&] { record.Call("ReadData"); }).Number() != 0) << "without rows";
    const std::vector<std::string> names = test::WordsOf(
        "CodMed AssCF DataRicetta CodFarmaco1 ICD9Farmaco1 SuggFarmaco1 QFarmaco1 CodFarmaco2 ICD9Farmaco2 "
        "SuggFarmaco2 QFarmaco2 TipoRecord ICD92Farmaco1 ICD92Farmaco2 PrescrivibileSSN");
    const auto ownValue = [](const std::string& name) {
        if (name == "DataRicetta") return Variant(Date(40633));
        if (name == "PrescrivibileSSN") return Variant(true);
        return name[0] == 'Q' ? Variant(static_cast<std::int16_t>(name.back())) : Variant("città " + name);
    };
    for (const std::string& name : names) record.Put(name, ownValue(name));
    for (const std::string& name : names) {  // all were put before: no two share a place
        EXPECT_EQ(record.Get(name).Type(), ownValue(name).Type()) << name;
        EXPECT_EQ(record.Get(name).Text(), ownValue(name).Text()) << name;
    }
    EXPECT_EQ(record.Call("GetErrors").Text(), "");
}

}  // namespace
}  // namespace vlm::server
