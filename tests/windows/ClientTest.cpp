#include <array>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "MemberTables.h"
#include "automation/Object.h"
#include "server/VlmASLServicesLib.h"
#include "system/Registry.h"

namespace vlm::server {
namespace {

using Lines = std::vector<std::string>;

constexpr const wchar_t* kModule = L"VlmASLServicesLib.dll";

/// A class as a client knows it.
struct KnownClass {
    const char* name;
    GUID classId;
    GUID interfaceId;
    std::span<const com::Member> members;
};

const std::array<KnownClass, 5>& KnownClasses() {
    static const std::array<KnownClass, 5> kClasses = {{
        {"ASLExport", kASLExportClass, _ASLExport::kId, MembersOf<_ASLExport>()},
        {"ASLPanoramico", kASLPanoramicoClass, _ASLPanoramico::kId, MembersOf<_ASLPanoramico>()},
        {"ASLPanoramicoLine", kASLPanoramicoLineClass, _ASLPanoramicoLine::kId, MembersOf<_ASLPanoramicoLine>()},
        {"ExportProgetti", kExportProgettiClass, _ExportProgetti::kId, MembersOf<_ExportProgetti>()},
        {"ASLImportPatient", kASLImportPatientClass, _ASLImportPatient::kId, MembersOf<_ASLImportPatient>()},
    }};
    return kClasses;
}

com::Ref<IDispatch> Created(const GUID& classId) {
    com::Ref<IDispatch> object;
    EXPECT_EQ(CoCreateInstance(classId, nullptr, CLSCTX_INPROC_SERVER, com::kIdOf<IDispatch>, object.ReceiveAny()),
              S_OK);
    return object;
}

/// The registered type library; nothing when none is registered.
com::Ref<ITypeLib> RegisteredTypeLibrary() {
    constexpr GUID kLibraryId = com::Guid("3B7CE6DA-3DFC-4591-8B0E-EC5C3956837D");
    com::Ref<ITypeLib> library;
    if (FAILED(LoadRegTypeLib(kLibraryId, 1, 0, 0, library.Receive()))) return {};
    return library;
}

TYPEATTR AttributesOf(ITypeInfo& info) {
    TYPEATTR* attributes = nullptr;
    EXPECT_EQ(info.GetTypeAttr(&attributes), S_OK);
    const TYPEATTR copy = *attributes;
    info.ReleaseTypeAttr(attributes);
    return copy;
}

TEST(Client, EveryClassTellsOfItself) {
    std::string withEvents;
    for (const KnownClass& known : KnownClasses()) {
        const auto object = Created(known.classId);
        ASSERT_TRUE(object) << known.name;
        EXPECT_TRUE(com::Query<IDispatch>(object.Get(), known.interfaceId)) << known.name;
        UINT count = 0;
        EXPECT_EQ(object->GetTypeInfoCount(&count), S_OK);
        EXPECT_EQ(count, 1u);
        com::Ref<ITypeInfo> info;
        ASSERT_EQ(object->GetTypeInfo(0, 0, info.Receive()), S_OK) << known.name;
        EXPECT_TRUE(com::Same(AttributesOf(*info).guid, known.interfaceId)) << known.name;
        EXPECT_EQ(object->GetTypeInfo(1, 0, info.Receive()), DISP_E_BADINDEX);
        EXPECT_FALSE(info);
        const auto described = com::Query<IProvideClassInfo2>(object.Get());
        ASSERT_TRUE(described && com::Query<IProvideClassInfo>(object.Get())) << known.name;
        ASSERT_EQ(described->GetClassInfo(info.Receive()), S_OK);
        EXPECT_TRUE(com::Same(AttributesOf(*info).guid, known.classId));
        GUID events{};
        EXPECT_EQ(described->GetGUID(0, &events), E_INVALIDARG);
        const HRESULT sourced = described->GetGUID(GUIDKIND_DEFAULT_SOURCE_DISP_IID, &events);
        if (FAILED(sourced)) continue;
        withEvents += known.name;
        EXPECT_TRUE(com::Same(events, k__ASLImportPatientId));
    }
    EXPECT_EQ(withEvents, "ASLImportPatient");
}

TEST(Client, TheLibraryGoesWhenNobodyNeedsIt) {
    CoFreeUnusedLibrariesEx(0, 0);
    EXPECT_EQ(GetModuleHandleW(kModule), nullptr);
    for (int round = 0; round < 3; ++round) {
        auto object = Created(kExportProgettiClass);
        const HMODULE module = GetModuleHandleW(kModule);
        ASSERT_NE(module, nullptr);
        const auto canUnload = reinterpret_cast<HRESULT(STDAPICALLTYPE*)()>(
            reinterpret_cast<void*>(GetProcAddress(module, "DllCanUnloadNow")));
        ASSERT_NE(canUnload, nullptr);
        EXPECT_EQ(canUnload(), S_FALSE);
        CoFreeUnusedLibrariesEx(0, 0);
        ASSERT_NE(GetModuleHandleW(kModule), nullptr);
        object.Reset();
        EXPECT_EQ(canUnload(), S_OK);
        CoFreeUnusedLibrariesEx(0, 0);
        EXPECT_EQ(GetModuleHandleW(kModule), nullptr);
    }
}

/// A type as the member tables say it: an enumeration is a 32-bit number, a pointer to an interface an object.
VARTYPE TypeOf(ITypeInfo& info, const TYPEDESC& type) {
    if (type.vt == VT_PTR) {
        const VARTYPE inner = TypeOf(info, *type.lptdesc);
        return inner == VT_UNKNOWN ? static_cast<VARTYPE>(VT_DISPATCH) : inner;
    }
    if (type.vt != VT_USERDEFINED) return type.vt;
    com::Ref<ITypeInfo> named;
    if (FAILED(info.GetRefTypeInfo(type.hreftype, named.Receive()))) return VT_EMPTY;
    return AttributesOf(*named).typekind == TKIND_ENUM ? VT_I4 : VT_UNKNOWN;
}

/// A member in a line: its place in the table, its identifier and kind, name, "type name" of the parameters of a method
/// with what an optional one is when it is not given, and its result. A property's parameter has no name.
std::string Line(std::size_t place, DISPID id, int kind, std::string_view name) {
    return std::to_string(place) + " " + std::to_string(id) + " " + std::to_string(kind) + " " + std::string(name);
}

std::string LineOf(const com::Member& member, std::size_t place) {
    std::string line = Line(place, member.id, member.kind, member.name);
    for (std::size_t i = 0; i < member.parameterCount; ++i) {
        const com::Parameter& parameter = member.parameters[i];
        line += " " + std::to_string(parameter.type);
        if (member.kind == DISPATCH_METHOD) line += " " + std::string(parameter.name);
        if (parameter.optional) line += "=" + std::to_string(parameter.absent);
    }
    return member.result == VT_EMPTY ? line : line + " -> " + std::to_string(member.result);
}

std::string LineOf(ITypeInfo& info, UINT index) {
    FUNCDESC* function = nullptr;
    EXPECT_EQ(info.GetFuncDesc(index, &function), S_OK);
    std::array<com::Bstr, 8> names;
    std::array<BSTR, 8> received{};
    UINT count = 0;
    EXPECT_EQ(info.GetNames(function->memid, received.data(), 8, &count), S_OK);
    for (UINT i = 0; i < count; ++i) *names[i].Receive() = received[i];
    std::string line = Line(static_cast<std::size_t>(function->oVft) / sizeof(void*) - 7, function->memid,
                            function->invkind, names[0].Text());
    for (SHORT i = 0; i < function->cParams; ++i) {
        const ELEMDESC& described = function->lprgelemdescParam[i];
        const USHORT flags = described.paramdesc.wParamFlags;
        if ((flags & PARAMFLAG_FRETVAL) != 0) line += " ->";
        line += " " + std::to_string(TypeOf(info, described.tdesc));
        if (function->invkind == INVOKE_FUNC && (flags & PARAMFLAG_FRETVAL) == 0) {
            line += " " + names[static_cast<std::size_t>(i) + 1].Text();
        }
        if ((flags & PARAMFLAG_FOPT) != 0 && (flags & PARAMFLAG_FHASDEFAULT) != 0) {
            line += "=" + std::to_string(described.paramdesc.pparamdescex->varDefaultValue.lVal);
        }
    }
    info.ReleaseFuncDesc(function);
    return line;
}

/// The table of functions behind a dual interface.
com::Ref<ITypeInfo> TableOf(ITypeLib& library, const GUID& interfaceId) {
    com::Ref<ITypeInfo> dispatch;
    com::Ref<ITypeInfo> table;
    HREFTYPE reference = 0;
    if (FAILED(library.GetTypeInfoOfGuid(interfaceId, dispatch.Receive())) ||
        FAILED(dispatch->GetRefTypeOfImplType(static_cast<UINT>(-1), &reference)) ||
        FAILED(dispatch->GetRefTypeInfo(reference, table.Receive()))) {
        return {};
    }
    return table;
}

TEST(TypeLibrary, DescribesEveryMemberAsTheTablesHaveIt) {
    const com::Ref<ITypeLib> library = RegisteredTypeLibrary();
    ASSERT_TRUE(library);
    for (const KnownClass& known : KnownClasses()) {
        const com::Ref<ITypeInfo> table = TableOf(*library, known.interfaceId);
        ASSERT_TRUE(table) << known.name;
        const TYPEATTR attributes = AttributesOf(*table);
        EXPECT_NE(attributes.wTypeFlags & TYPEFLAG_FDUAL, 0) << known.name;
        Lines described, expected;
        for (UINT i = 0; i < attributes.cFuncs; ++i) described.push_back(LineOf(*table, i));
        for (const com::Member& member : known.members) expected.push_back(LineOf(member, expected.size()));
        EXPECT_EQ(described, expected) << known.name;
    }
}

/// "name flags," of each interface of a class: 1 is its default one, 2 its source of events.
std::string InterfacesOf(ITypeInfo& classInfo) {
    std::string interfaces;
    HREFTYPE reference = 0;
    for (UINT i = 0; SUCCEEDED(classInfo.GetRefTypeOfImplType(i, &reference)); ++i) {
        com::Ref<ITypeInfo> offered;
        com::Bstr name;
        INT flags = 0;
        EXPECT_EQ(classInfo.GetRefTypeInfo(reference, offered.Receive()), S_OK);
        EXPECT_EQ(offered->GetDocumentation(MEMBERID_NIL, name.Receive(), nullptr, nullptr, nullptr), S_OK);
        EXPECT_EQ(classInfo.GetImplTypeFlags(i, &flags), S_OK);
        interfaces += name.Text() + " " + std::to_string(flags) + ",";
    }
    return interfaces;
}

TEST(TypeLibrary, DescribesClassesEventsAndTheRecordKind) {
    const com::Ref<ITypeLib> library = RegisteredTypeLibrary();
    ASSERT_TRUE(library);
    com::Bstr name;
    com::Bstr description;
    EXPECT_EQ(library->GetDocumentation(-1, name.Receive(), description.Receive(), nullptr, nullptr), S_OK);
    EXPECT_EQ(name.Text() + ": " + description.Text(), "VlmASLServicesLib: Velmo - ASL Services Library");
    std::string interfaces;
    for (const KnownClass& known : KnownClasses()) {
        com::Ref<ITypeInfo> info;
        ASSERT_EQ(library->GetTypeInfoOfGuid(known.classId, info.Receive()), S_OK) << known.name;
        interfaces += InterfacesOf(*info);
    }
    EXPECT_EQ(interfaces,
              "_ASLExport 1,_ASLPanoramico 1,_ASLPanoramicoLine 1,_ExportProgetti 1,_ASLImportPatient 1,"
              "__ASLImportPatient 3,");
    com::Ref<ITypeInfo> events;
    ASSERT_EQ(library->GetTypeInfoOfGuid(k__ASLImportPatientId, events.Receive()), S_OK);
    const std::string reading = LineOf(*events, 0);
    EXPECT_EQ(reading.substr(reading.find(' ') + 1), "1 1 ReadingFile 3 Value");  // it has no place in a table

    com::Ref<ITypeInfo> kinds;
    ASSERT_EQ(library->GetTypeInfoOfGuid(kTipoTracciatoConstsId, kinds.Receive()), S_OK);
    std::string values;
    for (UINT i = 0; i < 2; ++i) {
        VARDESC* value = nullptr;
        com::Bstr constant;
        UINT count = 0;
        ASSERT_EQ(kinds->GetVarDesc(i, &value), S_OK);
        EXPECT_EQ(kinds->GetNames(value->memid, constant.Receive(), 1, &count), S_OK);
        values += constant.Text() + "=" + std::to_string(value->lpvarValue->lVal) + " ";
        kinds->ReleaseVarDesc(value);
    }
    EXPECT_EQ(values, "ttM=0 ttS=1 ");
}

void ExpectNothingRegistered() {
    for (const KnownClass& known : KnownClasses()) {
        void* object = nullptr;
        CLSID classId{};
        const com::WideText name = com::ToWide(std::string(kLibraryName) + "." + known.name);
        EXPECT_EQ(CLSIDFromProgID(name.c_str(), &classId), CO_E_CLASSSTRING) << known.name;
        EXPECT_EQ(CoCreateInstance(known.classId, nullptr, CLSCTX_INPROC_SERVER, known.interfaceId, &object),
                  REGDB_E_CLASSNOTREG)
            << known.name;
    }
    EXPECT_FALSE(RegisteredTypeLibrary());
}

// These run alone, after the library has been taken out of the registry.
TEST(Unregistered, NothingOfTheLibraryIsLeft) { ExpectNothingRegistered(); }

TEST(Unregistered, RegistrationStopsHalfWayWithoutATraceAndLeavesTheDataObjectsKeysAlone) {
    namespace registry = sys::registry;
    const char* const kDataObjects[] = {"Interface\\{00000550-0000-0010-8000-00AA006D2EA4}\\TypeLib",
                                        "Interface\\{00000555-0000-0010-8000-00AA006D2EA4}\\TypeLib",
                                        "TypeLib\\{00000201-0000-0010-8000-00AA006D2EA4}\\2.1\\0\\win32"};
    std::vector<std::optional<std::string>> before;
    for (const char* key : kDataObjects) {
        before.push_back(registry::Read(HKEY_CLASSES_ROOT, key, ""));
        ASSERT_EQ(registry::Write(HKEY_CLASSES_ROOT, key, "", "loro"), ERROR_SUCCESS);
    }
    // Below a key that does not last none can be made that does: the fourth class cannot be entered.
    const wchar_t* const kFourth = L"VlmASLServicesLib.ExportProgetti";
    HKEY fourth = nullptr;
    ASSERT_EQ(RegCreateKeyExW(HKEY_CLASSES_ROOT, kFourth, 0, nullptr, REG_OPTION_VOLATILE, KEY_ALL_ACCESS, nullptr,
                              &fourth, nullptr),
              ERROR_SUCCESS);
    RegCloseKey(fourth);
    const HMODULE module = LoadLibraryW(kModule);
    const auto call = [module](const char* name) {
        return reinterpret_cast<HRESULT(STDAPICALLTYPE*)()>(reinterpret_cast<void*>(GetProcAddress(module, name)))();
    };
    EXPECT_EQ(call("DllRegisterServer"), SELFREG_E_CLASS);
    RegDeleteTreeW(HKEY_CLASSES_ROOT, kFourth);
    ExpectNothingRegistered();
    EXPECT_EQ(call("DllRegisterServer"), S_OK);
    EXPECT_EQ(call("DllUnregisterServer"), S_OK);
    FreeLibrary(module);
    for (std::size_t at = 0; at < before.size(); ++at) {
        EXPECT_EQ(registry::Read(HKEY_CLASSES_ROOT, kDataObjects[at], ""), "loro") << kDataObjects[at];
        if (before[at]) {
            registry::Write(HKEY_CLASSES_ROOT, kDataObjects[at], "", *before[at]);
        } else {
            const std::string key = kDataObjects[at];
            registry::Remove(HKEY_CLASSES_ROOT, key.substr(0, key.find('\\', key.find('\\') + 1)));
        }
    }
}

}  // namespace
}  // namespace vlm::server

/// The tests run in a single-threaded apartment, as the host's interface does.
int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    if (FAILED(CoInitialize(nullptr))) return 2;
    const int failed = RUN_ALL_TESTS();
    CoUninitialize();
    return failed;
}
