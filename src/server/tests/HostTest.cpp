#include <cstddef>
#include <map>
#include <thread>

#include "ServerFixture.h"
#include "ado/RecordsetObject.h"
#include "automation/ErrorReport.h"
#include "import/ASLImportPatient.h"

/// What a host hands in, and what the library does without.
namespace vlm::server {
namespace {

using com::LateBound;
using com::Variant;
using test::Create;

/// An object of the host's that writes down what is done with it, and gives what it has: values, and objects of the
/// same kind, which write into the same book.
class Spy final : public com::Object<IDispatch> {
public:
    using Values = std::map<std::string, Variant>;
    Spy(std::string name, Values values, std::string& book)
        : name_(std::move(name)), values_(std::move(values)), book_(book) {}

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID, DISPID* ids) override {
        const auto found = values_.find(com::ToUtf8(com::WideView(names[0])));
        if (found == values_.end()) return DISP_E_UNKNOWNNAME;
        ids[0] = static_cast<DISPID>(std::distance(values_.begin(), found)) + 1;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                                     EXCEPINFO*, UINT*) override {
        const auto& [member, value] = *std::next(values_.begin(), id - 1);
        const bool put = (flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
        const bool element = !put && parameters->cArgs > 0 && value.Type() == VT_DISPATCH;
        std::string told = name_ + "." + member + (put ? "=" : "(");
        for (UINT i = parameters->cArgs; i-- > 0;) told += TextOf(parameters->rgvarg[i]) + (i > 0 ? "," : "");
        if (put || element || value.Type() == VT_EMPTY) book_ += told + (put ? "\n" : element ? ")" : ")\n");
        if (!put && result != nullptr) *result = Variant(value).Detach();
        return S_OK;
    }

private:
    static std::string TextOf(const VARIANT& value) {
        return value.vt == VT_DISPATCH ? (value.pdispVal == nullptr ? "Nothing" : "object") : Variant(value).Text();
    }

    std::string name_;
    Values values_;
    std::string& book_;
};

class HostTest : public test::ServerTest {
protected:
    HostTest() {
        host.size = sizeof host;
        host.context = this;
        host.tell = Tell;
    }
    static void VLM_CALL Tell(void* test, std::int32_t kind, const char* text) {
        static_cast<HostTest*>(test)->told += std::to_string(kind) + " " + text + "\n";
    }
    void Play(std::vector<const char*> words, HRESULT expected = S_OK) {
        host.toolkit = "console";
        host.steps = words.data();
        host.stepCount = static_cast<std::uint32_t>(words.size());
        EXPECT_EQ(VlmSetHost(&host), expected);
        words.assign(words.size(), "x");  // they are the library's own by now
    }
    Variant Spied(const std::string& name, Spy::Values values) {
        return Variant(com::Make<Spy>(name, std::move(values), book).Get());
    }

    static com::Ref<IDispatch> Element() {
        auto data = std::make_unique<data::MemoryRecordset>();
        InitDataStructure(*data);
        data->Open();
        data->AddNew();
        data->SetValue("Selezionato", true);
        data->SetValue("IDPaziente", std::int64_t{0});
        data->SetValue("Cognome", std::string("D'Amico"));
        data->SetValue("CodiceFiscale", std::string("DMCNCL73B28G273P"));
        data->Update();
        return data::ado::MakeRecordsetObject(std::move(data));
    }

    VlmHost host{};
    std::string told, book;
};

/// Where no window can be shown: here for want of a toolkit, there on a thread that cannot have any.
void WithoutWindows(const std::function<void()>& action) {
#ifdef _WIN32
    std::thread([&] {
        CoInitializeEx(nullptr, COINIT_MULTITHREADED);
        action();
        CoUninitialize();
    }).join();
#else
    action();
#endif
}

TEST_F(HostTest, WithoutWindowsADialogFailsAndSaysSo) {
    for (const VlmHost* each : {static_cast<const VlmHost*>(&host), static_cast<const VlmHost*>(nullptr)}) {
        ASSERT_EQ(VlmSetHost(each), S_OK);
        WithoutWindows([this] {
            const LateBound component(Create(kASLExportClass));
            component.PutRef("Connection", ForeignConnection().Get());
            const std::string text = test::CaughtText([&] { component.Call("ShowDialog"); });
            EXPECT_NE(text.find("Le finestre non sono disponibili"), std::string::npos) << text;
        });
    }
}

TEST_F(HostTest, WhatThereIsNotIsRefusedAndNothingChanges) {
    Play({"answer:yes"});
    const struct {
        std::function<void(VlmHost&)> wish;
        const char* says;
    } cases[] = {{[](VlmHost& other) { other.size = 0; }, "size"},
                 {[](VlmHost& other) { other.toolkit = "gtk"; }, "\"gtk\""},
                 {[](VlmHost& other) { other.toolkit = "../qt"; }, "\"../qt\""},
                 {[](VlmHost& other) { other.today = "31/03/2011"; }, "31/03/2011"}};
    for (const auto& each : cases) {
        VlmHost other{};
        other.size = sizeof other;
        each.wish(other);
        const HRESULT code = VlmSetHost(&other);
        EXPECT_EQ(code, E_INVALIDARG) << each.says;
        const std::string text = com::TakeError(code, "?").what();
        EXPECT_NE(text.find(each.says), std::string::npos) << text;
    }
    Play({"boh"}, E_INVALIDARG);
    EXPECT_EQ(told, "1 Il passo \"boh\" non si può eseguire: non è un passo conosciuto.\n");
    told.clear();
    EXPECT_EQ(VlmSetHost(nullptr), S_OK);
    EXPECT_EQ(told, "2 Risposta non usata: answer:yes\n\n");
}

/// A host of an earlier header hands in less than there is now.
TEST_F(HostTest, WhatLiesBehindTheStructureIsNothing) {
    host.size = offsetof(VlmHost, today);
    host.today = "nessun giorno";
    host.components = reinterpret_cast<IDispatch*>(this);
    EXPECT_EQ(VlmSetHost(&host), S_OK);
}

TEST_F(HostTest, TheConsoleTellsWhatHappensAndInTheEndWhatFailed) {
    Play({"help:", "cmdNiente!", "answer:no"});
    std::string failure;
    {
        const LateBound component(Create(kASLExportClass));
        component.PutRef("Connection", ForeignConnection().Get());
        component.PutRef("CHMObject", com::Make<test::NotingObject>(kCHMObjectId, marked).Get());
        failure = test::CaughtText([&] { component.Call("ShowDialog"); });
    }
    EXPECT_EQ(VlmSetHost(nullptr), S_OK);
    EXPECT_EQ(told.substr(std::min(told.size(), told.find(R"(0 {"event":"dialog")"))),
              R"(0 {"event":"dialog","name":"frmASLExport","title":"Esportazione ASL"}

0 {"event":"help","context":5920}

0 {"event":"closed","name":"frmASLExport"}

1 )" + failure + "\n");
    EXPECT_NE(failure.find("cmdNiente!"), std::string::npos) << failure;
}

TEST_F(HostTest, TheHostsObjectsKeepTheLibraryLoaded) {
    const Variant object = Spied("any", {});
    for (IDispatch* VlmHost::*const place : {&VlmHost::components, &VlmHost::utility}) {
        host.*place = object.Object().Get();
        EXPECT_EQ(VlmSetHost(&host), S_OK);
        host.*place = nullptr;
        EXPECT_EQ(DllCanUnloadNow(), S_FALSE);
        EXPECT_EQ(VlmSetHost(nullptr), S_OK);
        EXPECT_EQ(DllCanUnloadNow(), S_OK);
    }
    EXPECT_EQ(test::ReferencesTo(object.Get().pdispVal), 1u);
}

TEST_F(HostTest, AConnectionIsUsedOnTheThreadThatSetItOnly) {
    const auto component = Create<_ASLExport>(kASLExportClass);
    const com::Ref<IDispatch> connection = ForeignConnection();
    const auto used = [&] {
        com::Ref<IDispatch> given;
        const HRESULT code = component->get_Connection(given.Receive());
        return FAILED(code) ? std::string(com::TakeError(code, "?").what())
                            : Module::Get().Lib().RequireConnection().InitialCatalog();
    };
    const std::string refused = "La connessione appartiene a un altro thread: impostare Connection anche in questo.";
    EXPECT_EQ(component->putref_Connection(connection.Get()), S_OK);
    EXPECT_EQ(used(), "Studio0012");
    std::thread([&] {
        EXPECT_EQ(used(), refused);
        EXPECT_EQ(test::CaughtText([] { Module::Get().Lib().RequireConnection().IsOpen(); }), refused);
        EXPECT_EQ(component->putref_Connection(connection.Get()), S_OK);
        EXPECT_EQ(used(), "Studio0012");
    }).join();
    EXPECT_EQ(used(), refused);
}

/// They go as far as the connection lets them.
TEST_F(HostTest, WithoutAFactoryTheLibrarysOwnRecordsAreUsed) {
    ASSERT_EQ(VlmSetHost(&host), S_OK);
    const auto import = Create<_ASLImportPatient>(kASLImportPatientClass);
    EXPECT_EQ(import->putref_Connection(com::Make<data::ado::ConnectionObject>(database).Get()), S_OK);
    LONG patient = 0;
    const HRESULT code = import->CreatePatient(Element().Get(), &patient);
    EXPECT_STREQ(com::TakeError(code, "?").what(), "Le righe di questa connessione non si possono modificare.");
}

TEST_F(HostTest, TheHostsOwnServicesAreCalledByName) {
    const Variant field = Spied("", {{"Value", Variant("x")}});
    const auto record = [&](const char* name, std::int32_t id) {
        return Spied(name, {{"Connection", {}},
                            {"LockSrv", {}},
                            {"Rights", {}},
                            {"AddNew", {}},
                            {"Load", {}},
                            {"Fields", field},
                            {"Save", Variant(true)},
                            {"ID", Variant(id)}});
    };
    const Variant factory =
        Spied("factory", {{"PatientRecord", record("patient", 77)},
                          {"FiscalCodeDecoder", Spied("decoder", {{"Connection", {}},
                                                                  {"FiscalCode", {}},
                                                                  {"BirthDate", Variant("28/02/1973")},
                                                                  {"Sex", Variant("M")},
                                                                  {"BirthComune", Variant(std::int32_t{3})}})}});
    host.components = factory.Object().Get();
    ASSERT_EQ(VlmSetHost(&host), S_OK);
    const auto import = Create<_ASLImportPatient>(kASLImportPatientClass);
    const com::Ref<IDispatch> rights = Marked(kRightsId);
    EXPECT_EQ(import->putref_Connection(ForeignConnection().Get()), S_OK);
    EXPECT_EQ(import->putref_Rights(rights.Get()), S_OK);
    // What the factory does not have is the library's own, or missing.
    IDispatch* rows = nullptr;
    const HRESULT code = import->GetElementListSistemaTS(1, nullptr, &rows);
    EXPECT_STREQ(com::TakeError(code, "?").what(),
                 "Il componente HealthCardClient dell'applicazione ospite non è disponibile.");
    EXPECT_EQ(book, "");
    LONG patient = 0;
    EXPECT_EQ(import->CreatePatient(Element().Get(), &patient), S_OK);
    EXPECT_EQ(patient, 77);
    EXPECT_EQ(book,
              "patient.Connection=object\n"
              "patient.Rights=object\n"
              "patient.AddNew()\n"
              "patient.Fields(Cognome).Value=D'Amico\n"
              "patient.Fields(Nome).Value=\n"
              "patient.Fields(DataNascita).Value=\n"
              "patient.Fields(Sesso).Value=\n"
              "patient.Fields(CodiceFiscale).Value=DMCNCL73B28G273P\n"
              "patient.Fields(DataScelta).Value=\n"
              "patient.Fields(NumTesseraSanitaria).Value=\n"
              "patient.Fields(NumAssistito).Value=\n"
              "patient.Fields(NonIscrittoASL).Value=0\n"
              "decoder.Connection=object\n"
              "decoder.FiscalCode=DMCNCL73B28G273P\n"
              "patient.Fields(DataNascita).Value=28/02/1973\n"
              "patient.Fields(Sesso).Value=M\n"
              "patient.Fields(IDComuneNascita).Value=3\n");
}

}  // namespace
}  // namespace vlm::server
