#include "ServerFixture.h"
#include "ado/RecordsetObject.h"
#include "automation/ErrorReport.h"

/// The interfaces as a compiled host sees them: a table of functions, called by number. The first three are IUnknown's,
/// the next four IDispatch's.
namespace vlm::server {
namespace {

constexpr int kFirst = 7;

class SlotOrderTest : public test::ServerTest {
protected:
    template <typename... Arguments>
    static HRESULT CallSlot(IDispatch* object, int slot, Arguments... arguments) {
        using Function = HRESULT (*)(void*, Arguments...);
        void* const* table = *reinterpret_cast<void* const**>(object);
        return reinterpret_cast<Function>(table[slot])(object, arguments...);
    }

    /// A property that takes and gives an object.
    void ExpectReference(IDispatch* object, int getSlot, int putSlot, const char* name, const GUID& id) {
        const com::Ref<IDispatch> value = Marked(id);
        const com::LateBound late{com::Ref<IDispatch>(object)};
        if (com::Same(id, data::ado::kConnectionId) || com::Same(id, kCHMObjectId)) {
            EXPECT_EQ(CallSlot(object, putSlot, Marked(kRightsId).Get()), DISP_E_TYPEMISMATCH) << name;
        }
        EXPECT_EQ(CallSlot(object, putSlot, value.Get()), S_OK) << name;
        EXPECT_EQ(late.Get(name).Object().Get(), value.Get()) << name;
        IDispatch* given = nullptr;
        EXPECT_EQ(CallSlot(object, getSlot, &given), S_OK) << name;
        ASSERT_EQ(given, value.Get()) << name;
        given->Release();
        const auto result = CallSlot(object, putSlot, static_cast<IDispatch*>(nullptr));
        EXPECT_EQ(result, S_OK) << name;
        EXPECT_EQ(test::ReferencesTo(value.Get()), 1u) << name;
        EXPECT_EQ(CallSlot(object, getSlot, static_cast<IDispatch**>(nullptr)), E_POINTER) << name;
    }

    void ExpectError(HRESULT result, const std::string& text) {
        EXPECT_TRUE(FAILED(result));
        const Error error = com::TakeError(result, "?");
        EXPECT_NE(std::string(error.what()).find(text), std::string::npos) << error.what();
        EXPECT_EQ(error.Source(), "VlmASLServicesLib");
    }
};

TEST_F(SlotOrderTest, TheThreeExports) {
    constexpr int kNone = -1;
    const struct {
        GUID classId;
        IID iid;
        int connection, help, showDialog, view;
    } classes[] = {{kASLExportClass, _ASLExport::kId, 1, 4, 0, 3},
                   {kASLPanoramicoClass, _ASLPanoramico::kId, 4, 0, 2, 3},
                   {kExportProgettiClass, _ExportProgetti::kId, 0, 2, 4, kNone}};
    for (const auto& each : classes) {
        const auto object = test::Create<IDispatch>(each.classId, each.iid);
        ExpectReference(object.Get(), kFirst + each.connection, kFirst + each.connection + 1, "Connection",
                        data::ado::kConnectionId);
        ExpectReference(object.Get(), kFirst + each.help, kFirst + each.help + 1, "CHMObject", kCHMObjectId);
        EXPECT_EQ(CallSlot(object.Get(), kFirst + each.showDialog), S_OK);
        if (each.view == kNone) continue;
        const com::Bstr file("nessuno.txt");
        VARIANT_BOOL shown = VARIANT_TRUE;
        EXPECT_EQ(CallSlot(object.Get(), kFirst + each.view, file.Get(), ttS, &shown), S_OK);
        EXPECT_EQ(shown, VARIANT_FALSE);
    }
}

TEST_F(SlotOrderTest, ASLImportPatient) {
    const auto object = test::Create<_ASLImportPatient>(kASLImportPatientClass);
    ExpectReference(object.Get(), kFirst, kFirst + 1, "Connection", data::ado::kConnectionId);
    ExpectReference(object.Get(), kFirst + 2, kFirst + 3, "LockSrv", kLockSrvId);
    ExpectReference(object.Get(), kFirst + 5, kFirst + 4, "Rights", kRightsId);
    IDispatch* const none = nullptr;
    const com::Bstr text("x");
    IDispatch* rows = object.Get();
    LONG number = 1;
    EXPECT_EQ(CallSlot(object.Get(), kFirst + 6), S_OK);  // ShowDialog
    EXPECT_EQ(CallSlot(object.Get(), kFirst + 7, none), DISP_E_TYPEMISMATCH);
    const auto data = com::Make<data::ado::RecordsetObject>(std::make_unique<data::MemoryRecordset>());
    EXPECT_EQ(CallSlot(object.Get(), kFirst + 7, static_cast<IDispatch*>(data.Get())), S_OK);
    EXPECT_EQ(data->Native().FieldCount(), 19);
    ExpectError(CallSlot(object.Get(), kFirst + 8, text.Get(), &rows), "Impossibile aprire il file x");
    EXPECT_EQ(rows, nullptr);
    EXPECT_EQ(CallSlot(object.Get(), kFirst + 9, none, &number), DISP_E_TYPEMISMATCH);
    EXPECT_EQ(number, 0);
    for (const int list : {10, 11}) {
        ExpectError(CallSlot(object.Get(), kFirst + list, LONG{1}, text.Get(), &rows), "HealthCardClient");
    }
    EXPECT_EQ(CallSlot(object.Get(), kFirst + 12, none, &number), DISP_E_TYPEMISMATCH);
}

TEST_F(SlotOrderTest, ASLPanoramicoLine) {
    const auto object = test::Create<_ASLPanoramicoLine>(kASLPanoramicoLineClass);
    const com::LateBound late{com::Ref<IDispatch>(object.Get())};
    const char* fields[] = {"CodMed",       "AssCF",      "DataRicetta",   "CodFarmaco1",  "ICD9Farmaco1",
                            "SuggFarmaco1", "QFarmaco1",  "CodFarmaco2",   "ICD9Farmaco2", "SuggFarmaco2",
                            "QFarmaco2",    "TipoRecord", "ICD92Farmaco1", "ICD92Farmaco2"};
    // Every field gets a value of its own before any is read, so that no two can share one.
    for (int i = 0; i < 14; ++i) {
        const int put = kFirst + 2 * i + 1;
        const std::string name = fields[i];
        if (name == "DataRicetta") {
            EXPECT_EQ(CallSlot(object.Get(), put, DATE{40633}), S_OK);
        } else if (name[0] == 'Q') {
            EXPECT_EQ(CallSlot(object.Get(), put, static_cast<SHORT>(-i)), S_OK);
        } else {
            EXPECT_EQ(CallSlot(object.Get(), put, com::Bstr("città " + name).Get()), S_OK);
        }
    }
    for (int i = 0; i < 14; ++i) {
        const int get = kFirst + 2 * i;
        const std::string name = fields[i];
        if (name == "DataRicetta") {
            DATE date = 0;
            EXPECT_EQ(CallSlot(object.Get(), get, &date), S_OK);
            EXPECT_EQ(date, 40633);
            EXPECT_EQ(late.Get(name).Type(), VT_DATE);
        } else if (name[0] == 'Q') {
            SHORT number = 0;
            EXPECT_EQ(CallSlot(object.Get(), get, &number), S_OK);
            EXPECT_EQ(number, -i);
            EXPECT_EQ(late.Get(name).Type(), VT_I2);
        } else {
            com::Bstr text;
            EXPECT_EQ(CallSlot(object.Get(), get, text.Receive()), S_OK);
            EXPECT_EQ(text.Text(), "città " + name);
            EXPECT_EQ(late.Get(name).Text(), "città " + name);
        }
    }
    ExpectReference(object.Get(), kFirst + 28, kFirst + 29, "Rs", data::ado::kRecordsetId);
    ExpectReference(object.Get(), kFirst + 30, kFirst + 31, "Connection", data::ado::kConnectionId);
    VARIANT_BOOL truth = VARIANT_TRUE;
    EXPECT_TRUE(FAILED(CallSlot(object.Get(), kFirst + 32, &truth)));  // ReadData, without rows
    EXPECT_EQ(CallSlot(object.Get(), kFirst + 36, VARIANT_TRUE), S_OK);
    EXPECT_EQ(CallSlot(object.Get(), kFirst + 35, &truth), S_OK);
    EXPECT_EQ(truth, VARIANT_TRUE);
    com::Bstr text;
    EXPECT_EQ(CallSlot(object.Get(), kFirst + 33, text.Receive()), S_OK);
    EXPECT_EQ(SysStringLen(text.Get()), 76u);
    EXPECT_EQ(CallSlot(object.Get(), kFirst + 34, text.Receive()), S_OK);
    EXPECT_EQ(text.Text(), "");
}

}  // namespace
}  // namespace vlm::server
