#include <cstring>

#include "ServerFixture.h"
#include "ado/RecordsetObject.h"
#include "automation/ErrorReport.h"
#include "support/TempFolder.h"
#include "support/Words.h"

namespace vlm::server {
namespace {

using com::LateBound;
using com::Variant;
using test::Create;

class ComponentTest : public test::ServerTest {
protected:
    static LateBound Late(const GUID& classId) { return LateBound(Create(classId)); }
};

TEST_F(ComponentTest, TheLibraryHandsOutItsClassesAndCountsThem) {
    void* object = this;
    EXPECT_EQ(DllGetClassObject(kLockSrvId, com::kIdOf<IClassFactory>, &object), CLASS_E_CLASSNOTAVAILABLE);
    EXPECT_EQ(object, nullptr);
    EXPECT_EQ(DllGetClassObject(kASLExportClass, com::kIdOf<IDispatch>, &object), E_NOINTERFACE);
    EXPECT_EQ(DllGetClassObject(kASLExportClass, com::kIdOf<IClassFactory>, nullptr), E_POINTER);
    EXPECT_EQ(DllCanUnloadNow(), S_OK);
    com::Ref<IClassFactory> factory;
    ASSERT_EQ(DllGetClassObject(kASLExportClass, com::kIdOf<IClassFactory>, factory.ReceiveAny()), S_OK);
    EXPECT_EQ(DllCanUnloadNow(), S_FALSE);
    EXPECT_EQ(factory->CreateInstance(factory.Get(), com::kIdOf<IUnknown>, &object), CLASS_E_NOAGGREGATION);
    EXPECT_EQ(factory->CreateInstance(nullptr, kRightsId, &object), E_NOINTERFACE);
    EXPECT_EQ(factory->LockServer(TRUE), S_OK);
    factory.Reset();
    EXPECT_EQ(DllCanUnloadNow(), S_FALSE);
    ASSERT_EQ(DllGetClassObject(kASLExportClass, com::kIdOf<IClassFactory>, factory.ReceiveAny()), S_OK);
    EXPECT_EQ(factory->LockServer(FALSE), S_OK);
    factory.Reset();
    EXPECT_EQ(DllCanUnloadNow(), S_OK);

    const auto component = Create(kExportProgettiClass);
    EXPECT_EQ(DllCanUnloadNow(), S_FALSE);
    EXPECT_EQ(VlmSetHost(nullptr), S_FALSE);
}

TEST_F(ComponentTest, EveryClassOffersItsInterfacesAndNothingInternal) {
    const struct {
        GUID classId;
        IID iid;
        const char* internal;
    } classes[] = {{kASLExportClass, _ASLExport::kId, "Export IDBranca GetRegion GetFileName Rights"},
                   {kASLPanoramicoClass, _ASLPanoramico::kId, "ExportFile IDSpecialista FromDate"},
                   {kExportProgettiClass, _ExportProgetti::kId, "ExportFile IDStudio ViewAsDecoded"},
                   {kASLImportPatientClass, _ASLImportPatient::kId, "ReadSourceForAsl ReadWithTemplate CHMObject"},
                   {kASLPanoramicoLineClass, _ASLPanoramicoLine::kId, "LookupICD9 ClearFields ShowDialog"}};
    for (const auto& each : classes) {
        const auto object = Create<IDispatch>(each.classId, each.iid);
        const auto errors = com::Query<ISupportErrorInfo>(object.Get());
        ASSERT_TRUE(errors && com::SameObject(object.Get(), errors.Get()));
        EXPECT_EQ(errors->InterfaceSupportsErrorInfo(each.iid), S_OK);
        EXPECT_EQ(errors->InterfaceSupportsErrorInfo(com::kIdOf<IDispatch>), S_FALSE);
        EXPECT_FALSE(com::Query<IUnknown>(object.Get(), kRightsId));
        const LateBound late(object);
        if (late.Has("ShowDialog")) late.Call("ShowDialog");
        for (const std::string& name : test::WordsOf(each.internal)) EXPECT_FALSE(late.Has(name)) << name;
        EXPECT_EQ(CodeOf([&] { late.Call("ExportFile"); }), DISP_E_UNKNOWNNAME);
        const bool raisesEvents = com::Same(each.classId, kASLImportPatientClass);
        EXPECT_EQ(static_cast<bool>(com::Query<IConnectionPointContainer>(object.Get())), raisesEvents);
    }
}

TEST_F(ComponentTest, OneConnectionForAllAndOneOfItsOwnForTheRecord) {
    const com::Ref<IDispatch> first = ForeignConnection();
    const com::Ref<IDispatch> second = com::Make<data::ado::ConnectionObject>(database);
    {
        const LateBound exporter = Late(kASLExportClass);
        const LateBound projects = Late(kExportProgettiClass);
        const LateBound record = Late(kASLPanoramicoLineClass);
        exporter.PutRef("Connection", first.Get());
        record.PutRef("Connection", first.Get());
        EXPECT_EQ(Late(kASLPanoramicoClass).Get("Connection").Object().Get(), first.Get());
        projects.PutRef("Connection", second.Get());
        EXPECT_EQ(exporter.Get("Connection").Object().Get(), second.Get());
        EXPECT_EQ(record.Get("Connection").Object().Get(), first.Get());
        EXPECT_EQ(CodeOf([&] { exporter.PutRef("Connection", Marked(kCHMObjectId).Get()); }), DISP_E_TYPEMISMATCH);
        EXPECT_EQ(Late(kASLImportPatientClass).Get("Connection").Object().Get(), second.Get());
        EXPECT_EQ(test::ReferencesTo(second.Get()), 2u);
    }
    EXPECT_EQ(test::ReferencesTo(first.Get()), 1u);
    EXPECT_EQ(Late(kASLExportClass).Get("Connection").Object().Get(), second.Get());  // it outlives the components
    EXPECT_EQ(DllCanUnloadNow(), S_FALSE);
    EXPECT_EQ(VlmSetHost(nullptr), S_OK);
    EXPECT_EQ(DllCanUnloadNow(), S_OK);
    EXPECT_EQ(test::ReferencesTo(second.Get()), 1u);
}

TEST_F(ComponentTest, PropertiesThatAreObjects) {
    const struct {
        const char* name;
        const GUID& kind;
        bool checked;
        std::vector<GUID> classes;
    } cases[] = {
        {"Connection",
         data::ado::kConnectionId,
         true,
         {kASLExportClass, kASLPanoramicoClass, kExportProgettiClass, kASLImportPatientClass, kASLPanoramicoLineClass}},
        {"CHMObject", kCHMObjectId, true, {kASLExportClass, kASLPanoramicoClass, kExportProgettiClass}},
        {"LockSrv", kLockSrvId, false, {kASLImportPatientClass}},
        {"Rights", kRightsId, false, {kASLImportPatientClass}},
        {"Rs", data::ado::kRecordsetId, false, {kASLPanoramicoLineClass}}};
    for (const auto& each : cases) {
        for (const GUID& classId : each.classes) {
            const LateBound object = Late(classId);
            const com::Ref<IDispatch> value = Marked(each.kind);
            const auto put = [&](IDispatch* given) { object.PutRef(each.name, given); };
            object.Put(each.name, Variant(value.Get()));  // as languages without "Set" do
            if (each.checked) {
                EXPECT_EQ(CodeOf([&] { put(Marked(kRightsId).Get()); }), DISP_E_TYPEMISMATCH);
            }
            EXPECT_EQ(object.Get(each.name).Object().Get(), value.Get()) << each.name;
            put(nullptr);
            EXPECT_EQ(test::ReferencesTo(value.Get()), 1u) << each.name;
        }
    }
}

/// Does something in place of showing a dialog, or a message.
struct Acting final : test::FakeServices::Silent {
    std::function<void(ui::Dialog*)> act;
    void ShowModal(ui::Dialog& dialog) override { act(&dialog); }
    ui::Answer Show(const ui::Message&) override {
        act(nullptr);
        return ui::Answer::Ok;
    }
};

TEST_F(ComponentTest, NoExceptionCrossesTheBorder) {
    Acting toolkit;
    Module::Get().SetServices(services.With(toolkit));
    const struct {
        std::function<void()> act;
        std::uint32_t code;
        const char *source, *description;
    } cases[] = {
        {[] { throw Error("non è andata", 53); }, 0x800A0035, "VlmASLServicesLib", "non è andata"},
        {[] { throw Error("dal motore", -2147217865, "Motore"); }, 0x80040E37, "Motore", "dal motore"},
        {[] { throw Error("troppo", 70000); }, 0x80004005, "VlmASLServicesLib", "troppo"},
        {[] { throw TypeMismatchError("tipo"); }, 0x800A000D, "VlmASLServicesLib", "tipo"},
        {[] { throw std::runtime_error("altro"); }, 0x80004005, "VlmASLServicesLib", "altro"},
        {[] { throw std::bad_alloc(); }, 0x8007000E, "VlmASLServicesLib", "Memoria insufficiente."},
        {[] { throw 7; }, 0x8000FFFF, "VlmASLServicesLib", "Errore imprevisto."},
    };
    for (const auto& each : cases) {
        toolkit.act = [&each](ui::Dialog*) { each.act(); };
        const auto component = Create<_ASLExport>(kASLExportClass);
        const HRESULT code = component->ShowDialog();
        EXPECT_EQ(static_cast<std::uint32_t>(code), each.code);
        const Error direct = com::TakeError(code, "?");
        EXPECT_STREQ(direct.what(), each.description);
        EXPECT_EQ(direct.Source(), each.source);
    }
}

TEST_F(ComponentTest, AHelpRequestNeverFails) {
    Acting toolkit;
    toolkit.act = [](ui::Dialog* dialog) {
        if (dialog != nullptr) dialog->HelpRequested();
    };
    Module::Get().SetServices(services.With(toolkit));
    const LateBound component = Late(kASLExportClass);
    component.Call("ShowDialog");
    const auto help = com::Make<test::NotingObject>(kCHMObjectId, marked);
    component.PutRef("CHMObject", help.Get());
    component.Call("ShowDialog");
    EXPECT_EQ(help->calls, "hWnd 5920 ");
    help->answer = E_FAIL;
    component.Call("ShowDialog");
    EXPECT_EQ(help->calls, "hWnd 5920 hWnd 5920 ");
    component.PutRef("CHMObject", Marked(kCHMObjectId).Get());  // without any member
    component.Call("ShowDialog");
    EXPECT_EQ(test::ReferencesTo(help.Get()), 1u);
}

/// A file is shown in detail when nothing says how.
TEST_F(ComponentTest, ViewAsDecodedTakesItsKindOrNone) {
    const LateBound component = Late(kASLExportClass);
    EXPECT_EQ(component.Call("ViewAsDecoded", {Variant("x.txt")}).Text(), "False");
    EXPECT_EQ(services.toolkit.messages.size(), 1u);  // there is no connection
    const test::TempFolder folder;
    services.utility = PlainHostUtility(folder.Path().string());
    database->tables["SELECT IDRegioneTariffario FROM Aldra..Studi WHERE IDStudio = 12"] = {{"IDRegioneTariffario"},
                                                                                            {{std::string("19")}}};
    component.PutRef("Connection", ForeignConnection().Get());
    test::WriteBytes(folder / "dati.txt", "x\r\n");
    const auto shown = [&](std::vector<Variant> arguments) {
        arguments.insert(arguments.begin(), Variant(folder / "dati.txt"));
        EXPECT_EQ(component.Call("VIEWASDECODED", arguments).Text(), "True");
        return test::ReadBytes(folder / "dati.txt.tmp");
    };
    const std::string detailed = shown({Variant("0")});
    EXPECT_NE(shown({Variant("1")}), detailed);
    EXPECT_EQ(shown({}), detailed);
    EXPECT_EQ(Late(kASLPanoramicoClass).Call("ViewAsDecoded", {Variant("x.txt")}).Text(), "False");
}

TEST_F(ComponentTest, MethodsOfTheImport) {
    const auto import = Create<_ASLImportPatient>(kASLImportPatientClass);
    std::vector<std::string> own, appended;
    for (const bool foreign : {false, true}) {
        const auto data = data::ado::MakeRecordsetObject(std::make_unique<data::MemoryRecordset>());
        com::Ref<IDispatch> given(data.Get());
        if (foreign) given = com::Make<test::ForeignObject>(given, world);
        EXPECT_EQ(import->InitDataStructure(given.Get()), S_OK);
        auto& rows =
            dynamic_cast<data::MemoryRecordset&>(com::Query<data::ado::INativeRecordset>(data.Get())->Native());
        std::vector<std::string> columns;
        for (int i = 0; i < rows.FieldCount(); ++i) {
            columns.push_back(std::string(rows.FieldName(i)) + " " +
                              std::to_string(data::ado::AdoTypeOf(rows.TypeOf(i))));
        }
        (foreign ? appended : own) = columns;
        rows.Open();
        rows.AddNew();
        EXPECT_THROW(rows.Update(), Error) << "an element says whether it is selected";
        rows.SetValue("Selezionato", true);
        rows.Update();
    }
    EXPECT_EQ(own.size(), 19u);
    EXPECT_EQ(appended, own);
    constexpr auto kNoRows = static_cast<HRESULT>(0x800A000D);
    EXPECT_EQ(import->InitDataStructure(nullptr), kNoRows);
    IDispatch* rows = import.Get();
    const HRESULT code = import->GetElementList(com::Bstr("x").Get(), &rows);
    EXPECT_NE(std::string(com::TakeError(code, "?").what()).find("Impossibile aprire il file x"), std::string::npos);
    EXPECT_EQ(rows, nullptr);
    EXPECT_EQ(import->get_Rights(nullptr), E_POINTER);
    LONG patient = 1;
    LONG exemption = 1;
    EXPECT_EQ(import->CreatePatient(nullptr, &patient), kNoRows);
    EXPECT_EQ(import->CreateEsenzione(nullptr, &exemption), kNoRows);
    EXPECT_EQ(patient + exemption, 0);
    const LateBound late{com::Ref<IDispatch>(import.Get())};
    for (const char* list : {"GetElementListSistemaTS", "GetElementListEsentiRedditoSistemaTS"}) {
        const std::string failure = test::CaughtText([&] { late.Call(list, {Variant("1"), Variant("x")}); });
        EXPECT_NE(failure.find("HealthCardClient"), std::string::npos) << failure;
    }
}

TEST_F(ComponentTest, TheRecordKeepsWhatItIsGiven) {
    const LateBound record = Late(kASLPanoramicoLineClass);
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

/// The interfaces as a compiled host calls them: functions in a table, by number, behind IUnknown's three and
/// IDispatch's four. A pointer to a virtual function holds its place in bytes, plus 1.
template <typename... Functions>
void ExpectInOrder(Functions... functions) {
    std::ptrdiff_t slot = 7;
    const auto expect = [&](auto function) {
        std::ptrdiff_t place = 0;
        std::memcpy(&place, &function, sizeof place);
        EXPECT_EQ(place - 1, slot++ * static_cast<std::ptrdiff_t>(sizeof(void*)));
    };
    (expect(functions), ...);
}

TEST(SlotOrder, FunctionsStandAsHostsWereCompiled) {
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

}  // namespace
}  // namespace vlm::server
