#include "ServerFixture.h"
#include "automation/ErrorReport.h"
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
    EXPECT_EQ(VlmSetServices(nullptr), S_FALSE);
}

TEST_F(ComponentTest, EveryClassOffersItsInterfaces) {
    const std::pair<GUID, IID> classes[] = {{kASLExportClass, _ASLExport::kId},
                                            {kASLPanoramicoClass, _ASLPanoramico::kId},
                                            {kASLPanoramicoLineClass, _ASLPanoramicoLine::kId},
                                            {kExportProgettiClass, _ExportProgetti::kId},
                                            {kASLImportPatientClass, _ASLImportPatient::kId}};
    for (const auto& [classId, iid] : classes) {
        const auto object = Create<IDispatch>(classId, iid);
        const auto errors = com::Query<ISupportErrorInfo>(object.Get());
        ASSERT_TRUE(errors && com::SameObject(object.Get(), errors.Get()));
        EXPECT_EQ(errors->InterfaceSupportsErrorInfo(iid), S_OK);
        EXPECT_EQ(errors->InterfaceSupportsErrorInfo(com::kIdOf<IDispatch>), S_FALSE);
        EXPECT_FALSE(com::Query<IUnknown>(object.Get(), kRightsId));
        if (const LateBound late(object); late.Has("ShowDialog")) late.Call("ShowDialog");
        const bool raisesEvents = com::Same(classId, kASLImportPatientClass);
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
    EXPECT_EQ(VlmSetServices(nullptr), S_OK);
    EXPECT_EQ(test::ReferencesTo(second.Get()), 1u);
}

TEST_F(ComponentTest, InternalMembersAreNotThereForTheHost) {
    const std::pair<GUID, const char*> cases[] = {
        {kASLExportClass, "Export IDBranca GetRegion GetFileName Rights"},
        {kASLPanoramicoClass, "ExportFile IDSpecialista FromDate"},
        {kExportProgettiClass, "ExportFile IDStudio ViewAsDecoded"},
        {kASLImportPatientClass, "ReadSourceForAsl ReadWithTemplate CHMObject"},
        {kASLPanoramicoLineClass, "LookupICD9 ClearFields ShowDialog"}};
    for (const auto& [classId, names] : cases) {
        for (const std::string& name : test::WordsOf(names)) {
            EXPECT_EQ(CodeOf([&, &id = classId] { Late(id).Call(name); }), DISP_E_UNKNOWNNAME) << name;
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
    const Library::Services all = services.With(toolkit);
    ASSERT_EQ(VlmSetServices(&all), S_OK);
    const struct {
        std::function<void()> act;
        std::uint32_t code;
        const char *source, *description;
    } cases[] = {
        {[] { throw Error("non è andata", 53); }, 0x800A0035, "VlmASLServicesLib", "non è andata"},
        {[] { throw Error("dal motore", -2147217865, "Motore"); }, 0x80040E37, "Motore", "dal motore"},
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

/// A help object that notes its calls.
class Help final : public com::DispatchObject<IDispatch> {
public:
    std::string calls;
    HRESULT answer = S_OK;

private:
    HRESULT STDMETHODCALLTYPE PutWindow(std::int32_t) {
        calls += "hWnd ";
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE ShowContext(std::int32_t context) {
        calls += std::to_string(context);
        return answer;
    }
    std::span<const com::Member> Members() const noexcept override {
        static constexpr std::array kMembers = {
            com::Put<&Help::PutWindow>("hWnd", 1, VT_I4),
            com::Method<&Help::ShowContext>("ShowContext", 2, VT_EMPTY, {{"Context", VT_I4}}),
        };
        return kMembers;
    }
    void* Find(const IID& iid) noexcept override {
        return com::Same(iid, kCHMObjectId) ? static_cast<IDispatch*>(this) : DispatchObject::Find(iid);
    }
};

TEST_F(ComponentTest, AHelpRequestNeverFails) {
    Acting toolkit;
    toolkit.act = [](ui::Dialog* dialog) {
        if (dialog != nullptr) dialog->HelpRequested();
    };
    const Library::Services all = services.With(toolkit);
    ASSERT_EQ(VlmSetServices(&all), S_OK);
    const LateBound component = Late(kASLExportClass);
    component.Call("ShowDialog");
    const auto help = com::Make<Help>();
    component.PutRef("CHMObject", help.Get());
    component.Call("ShowDialog");
    EXPECT_EQ(help->calls, "hWnd 5920");
    help->answer = E_FAIL;
    component.Call("ShowDialog");
    EXPECT_EQ(help->calls, "hWnd 5920hWnd 5920");
    component.PutRef("CHMObject", Marked(kCHMObjectId).Get());  // without any member
    component.Call("ShowDialog");
    EXPECT_EQ(test::ReferencesTo(help.Get()), 1u);
}

TEST_F(ComponentTest, ViewAsDecodedTakesItsKindOrNone) {
    const LateBound component = Late(kASLExportClass);
    EXPECT_EQ(component.Call("VIEWASDECODED", {Variant("x.txt")}).Text(), "False");
    EXPECT_EQ(component.Call("ViewAsDecoded", {Variant("x.txt"), Variant("1")}).Text(), "False");
    EXPECT_EQ(services.toolkit.messages.size(), 2u);  // there is no connection
    EXPECT_EQ(Late(kASLPanoramicoClass).Call("ViewAsDecoded", {Variant("x.txt")}).Text(), "False");
}

}  // namespace
}  // namespace vlm::server
