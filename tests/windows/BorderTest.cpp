#include <activscp.h>
#include <thread>

#include "HostOfRuns.h"
#include "support/Words.h"

template <>
inline constexpr GUID vlm::com::kIdOf<IActiveScriptSite> = vlm::com::Guid("DB01A1E3-A42B-11CF-8F20-00805F2CD064");

/// The border as hosts of this kind meet it: tables called from a compiler that knows the data objects' own, other
/// apartments, many lives, and a script.
namespace vlm::test {
namespace {

using namespace server;

VARIANT Missing() { return com::Variant::Missing().Detach(); }

/// What a grid of the host shows of the columns Cognome and Nome, from the current row to the end.
std::string Shown(_Recordset& rows) {
    std::string shown;
    VARIANT_BOOL end = VARIANT_FALSE;
    for (; rows.get_EOF(&end) == S_OK && end == VARIANT_FALSE; rows.MoveNext()) {
        com::Ref<Fields> fields;
        EXPECT_EQ(rows.get_Fields(fields.Receive()), S_OK);
        for (const char* name : {"Cognome", "Nome"}) {
            com::Ref<Field> field;
            com::Variant value;
            const com::Variant index(name);
            EXPECT_EQ(fields->get_Item(index.Get(), field.Receive()), S_OK);
            EXPECT_EQ(field->get_Value(value.Receive()), S_OK);
            shown += value.Text() + " ";
        }
    }
    return shown;
}

class BorderTest : public ::testing::Test {
protected:
    void SetUp() override { places.Renew(); }

    const Places places;
    const dataobjects::RecordsetClass recordsets;
};

TEST_F(BorderTest, AHandedOutListIsAGridsEarlyBoundRowSet) {
    WriteBytes(places.work + "\\elenco.txt",
               "N;T;CF\n1;A;;Verdi;Lia;;;;;;;;\n2;B;;Bianchi;Ugo;;;;;;;;\n3;C;;Rossi;Ada;;;;;;;;\n");
    const Host host(places, 12, {});
    const com::LateBound import(host.Create(kASLImportPatientClass));
    import.PutRef("Connection", host.Connection());
    const com::LateBound list = import.ObjectOf("GetElementList", {com::Variant(places.work + "\\elenco.txt")});
    const auto rows = com::Query<_Recordset>(list.Object().Get(), com::Guid("00000555-0000-0010-8000-00AA006D2EA4"));
    ASSERT_TRUE(rows);
    ADO_LONGPTR count = 0;
    PositionEnum_Param position = 0;
    com::Bstr text;
    com::Variant mark;
    EXPECT_EQ(rows->MoveFirst(), S_OK);
    EXPECT_EQ(Shown(*rows), "Verdi Lia Bianchi Ugo Rossi Ada ");
    EXPECT_TRUE(rows->get_RecordCount(&count) == S_OK && count == 3);
    EXPECT_TRUE(rows->get_AbsolutePosition(&position) == S_OK && position == adPosEOF);
    EXPECT_EQ(rows->put_Sort(com::Bstr("Cognome").Get()), S_OK);
    EXPECT_EQ(rows->get_Bookmark(mark.Receive()), S_OK);
    EXPECT_EQ(Shown(*rows), "Bianchi Ugo Rossi Ada Verdi Lia ");
    EXPECT_EQ(rows->put_Bookmark(mark.Get()), S_OK);
    EXPECT_EQ(rows->Find(com::Bstr("Nome = 'Lia'").Get(), 0, adSearchForward, Missing()), S_OK);
    EXPECT_EQ(rows->MovePrevious(), S_OK);
    com::Ref<_Recordset> clone;
    EXPECT_EQ(rows->Clone(adLockUnspecified, clone.Receive()), S_OK);
    EXPECT_EQ(clone->put_Filter(com::Variant("Cognome <> 'Rossi'").Get()), S_OK);
    EXPECT_EQ(Shown(*clone), "Verdi Lia Bianchi Ugo ");
    EXPECT_EQ(Shown(*rows), "Rossi Ada Verdi Lia ");
    EXPECT_EQ(rows->Move(-3, Missing()), S_OK);
    EXPECT_EQ(rows->Delete(adAffectCurrent), S_OK);
    EXPECT_EQ(rows->MoveLast(), S_OK);
    EXPECT_EQ(rows->put_Collect(com::Variant("Nome").Get(), com::Variant("Lea").Get()), S_OK);
    EXPECT_EQ(rows->Update(Missing(), Missing()), S_OK);
    EXPECT_EQ(rows->MoveFirst(), S_OK);
    EXPECT_EQ(rows->GetString(adClipString, 1, com::Bstr(";").Get(), com::Bstr("|").Get(), nullptr, text.Receive()),
              S_OK);
    EXPECT_EQ(text.Text().substr(0, 18), "True;C;Rossi;Ada;;");
    EXPECT_EQ(Shown(*rows), "Verdi Lea ");
    EXPECT_EQ(static_cast<std::uint32_t>(rows->Save(Missing(), adPersistXML)), 0x800A0CB3u);  // the last of the table
}

/// What the process has from its heaps, in bytes.
std::size_t HeapInUse() {
    HANDLE heaps[64];
    const DWORD count = GetProcessHeaps(64, heaps);
    std::size_t used = 0;
    for (DWORD i = 0; i < std::min<DWORD>(count, 64); ++i) {
        PROCESS_HEAP_ENTRY entry{};
        HeapLock(heaps[i]);
        while (HeapWalk(heaps[i], &entry) != 0) {
            if ((entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) != 0) used += entry.cbData;
        }
        HeapUnlock(heaps[i]);
    }
    return used;
}

TEST_F(BorderTest, AThousandLivesLeaveNothing) {
    const Host host(places, 12, {});
    const auto live = [&](int times) {
        for (int i = 0; i < times; ++i) {
            for (const GUID* classId : {&kASLExportClass, &kASLPanoramicoClass, &kASLPanoramicoLineClass,
                                        &kExportProgettiClass, &kASLImportPatientClass}) {
                const com::LateBound component(host.Create(*classId));
                component.PutRef("Connection", host.Connection());
                EXPECT_THROW(component.Call("Manca"), Error);
                component.PutRef("Connection", nullptr);
            }
        }
        return HeapInUse();
    };
    const std::size_t before = live(50);
    EXPECT_GT(before, 0u);
    EXPECT_LE(live(1000), before + 16 * 1024);
}

TEST_F(BorderTest, AnotherApartmentHasComponentsOfItsOwnAndNotTheConnection) {
    WriteBytes(places.work + "\\elenco.txt", "N;T;CF\n1;A;;Verdi;Lia;;;;;;;;\n");
    const Host host(places, 12, {});
    const com::LateBound first(host.Create(kASLExportClass));
    first.PutRef("Connection", host.Connection());
    std::string failure, code;
    std::thread([&] {
        EXPECT_EQ(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED), S_OK);
        {
            const com::LateBound import(host.Create(kASLImportPatientClass));
            try {
                import.Call("GetElementList", {com::Variant(places.work + "\\elenco.txt")});
            } catch (const Error& error) {
                failure = error.what();
            }
            const com::LateBound record(host.Create(kASLPanoramicoLineClass));
            record.Put("CodMed", com::Variant("123"));
            code = record.Get("CodMed").Text();
        }
        CoUninitialize();
    }).join();
    EXPECT_NE(failure.find("thread"), std::string::npos) << failure;
    EXPECT_EQ(code, "123");
    EXPECT_EQ(first.Get("Connection").Object().Get(), static_cast<IDispatch*>(host.Connection()));
}

/// A place where a script runs that knows objects of the host's. The component is one of them, because the engine that
/// is here keeps what its own CreateObject went through; a script that creates is client.vbs.
class ScriptPlace final : public com::Object<IActiveScriptSite> {
public:
    explicit ScriptPlace(std::map<std::wstring, com::Ref<IDispatch>> items) : items_(std::move(items)) {}

    HRESULT STDMETHODCALLTYPE GetLCID(LCID* locale) override {
        *locale = com::kItalian;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetItemInfo(LPCOLESTR name, DWORD wanted, IUnknown** item, ITypeInfo** info) override {
        if ((wanted & SCRIPTINFO_ITYPEINFO) != 0) *info = nullptr;
        if ((wanted & SCRIPTINFO_IUNKNOWN) != 0) *item = com::Ref<IDispatch>(items_.at(name)).Detach();
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetDocVersionString(BSTR*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE OnScriptTerminate(const VARIANT*, const EXCEPINFO*) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnStateChange(SCRIPTSTATE) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnScriptError(IActiveScriptError* error) override {
        EXCEPINFO info{};
        if (SUCCEEDED(error->GetExceptionInfo(&info))) ADD_FAILURE() << com::ToUtf8(info.bstrDescription);
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE OnEnterScript() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnLeaveScript() override { return S_OK; }

private:
    std::map<std::wstring, com::Ref<IDispatch>> items_;
};

TEST_F(BorderTest, AScriptExportsAMonth) {
    const std::vector<std::string> steps = {"txtPath=" + places.out,  "cboBranca=1", "cboMese=3", "numAnno=2011",
                                            "chkIncludiPrecedenti=1", "cmdConferma!"};
    const auto exported = [&](const auto& play) {
        places.Renew();
        play();
        return FilesIn(places.out);
    };
    const auto expected = exported([&] { places.PlayDirectly({12, "ASLExport", &kASLExportClass, steps}); });
    EXPECT_EQ(expected.size(), 1u);
    EXPECT_EQ(
        exported([&] {
            const Host host(places, 12, steps);
            CLSID engineClass{};
            com::Ref<IActiveScript> engine;
            com::Ref<IActiveScriptParse> parser;
            ASSERT_EQ(CLSIDFromProgID(L"VBScript", &engineClass), S_OK);
            ASSERT_EQ(
                CoCreateInstance(engineClass, nullptr, CLSCTX_INPROC_SERVER, IID_IActiveScript, engine.ReceiveAny()),
                S_OK);
            ASSERT_EQ(engine->QueryInterface(__uuidof(IActiveScriptParse), parser.ReceiveAny()), S_OK);
            const auto place = com::Make<ScriptPlace>(std::map<std::wstring, com::Ref<IDispatch>>{
                {L"connection", com::Ref<IDispatch>(host.Connection())}, {L"exporter", host.Create(kASLExportClass)}});
            EXPECT_EQ(engine->SetScriptSite(place.Get()), S_OK);
            EXPECT_EQ(parser->InitNew(), S_OK);
            for (const wchar_t* item : {L"connection", L"exporter"}) {
                EXPECT_EQ(engine->AddNamedItem(item, SCRIPTITEM_ISVISIBLE), S_OK);
            }
            EXPECT_EQ(parser->ParseScriptText(L"Set exporter.Connection = connection\nexporter.ShowDialog\n", nullptr,
                                              nullptr, nullptr, 0, 0, 0, nullptr, nullptr),
                      S_OK);
            EXPECT_EQ(engine->SetScriptState(SCRIPTSTATE_CONNECTED), S_OK);
            EXPECT_EQ(engine->Close(), S_OK);
        }),
        expected);
}

}  // namespace
}  // namespace vlm::test
