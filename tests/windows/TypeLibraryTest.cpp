#include "Client.h"

namespace vlm::test {

com::Ref<ITypeLib> RegisteredTypeLibrary() {
    constexpr GUID kLibraryId = com::Guid("3B7CE6DA-3DFC-4591-8B0E-EC5C3956837D");
    com::Ref<ITypeLib> library;
    if (FAILED(LoadRegTypeLib(kLibraryId, 1, 0, 0, library.Receive()))) return {};
    return library;
}

}  // namespace vlm::test

namespace vlm::server {
namespace {

/// A type as the member tables say it: an enumeration is a 32-bit number, a pointer to an interface an object.
VARTYPE TypeOf(ITypeInfo& info, const TYPEDESC& type) {
    if (type.vt == VT_PTR) {
        const VARTYPE inner = TypeOf(info, *type.lptdesc);
        return inner == VT_UNKNOWN ? static_cast<VARTYPE>(VT_DISPATCH) : inner;
    }
    if (type.vt != VT_USERDEFINED) return type.vt;
    com::Ref<ITypeInfo> named;
    TYPEATTR* attributes = nullptr;
    if (FAILED(info.GetRefTypeInfo(type.hreftype, named.Receive())) || FAILED(named->GetTypeAttr(&attributes))) {
        return VT_EMPTY;
    }
    const TYPEKIND kind = attributes->typekind;
    named->ReleaseTypeAttr(attributes);
    return kind == TKIND_ENUM ? VT_I4 : VT_UNKNOWN;
}

struct Described {
    explicit Described(ITypeInfo& typeInfo, UINT index) : info(typeInfo) {
        EXPECT_EQ(info.GetFuncDesc(index, &function), S_OK);
    }
    ~Described() { info.ReleaseFuncDesc(function); }
    Described(const Described&) = delete;
    Described& operator=(const Described&) = delete;

    /// The member's name, then those of its parameters.
    std::vector<std::string> Names() const {
        std::array<BSTR, 8> names{};
        UINT count = 0;
        EXPECT_EQ(info.GetNames(function->memid, names.data(), 8, &count), S_OK);
        std::vector<std::string> texts;
        for (UINT i = 0; i < count; ++i) {
            texts.push_back(com::ToUtf8(names[i]));
            SysFreeString(names[i]);
        }
        return texts;
    }

    ITypeInfo& info;
    FUNCDESC* function = nullptr;
};

void ExpectParameter(ITypeInfo& info, const ELEMDESC& described, const com::Parameter& parameter) {
    EXPECT_EQ(TypeOf(info, described.tdesc), parameter.type) << parameter.name;
    const USHORT flags = described.paramdesc.wParamFlags;
    EXPECT_EQ((flags & PARAMFLAG_FOPT) != 0, parameter.optional) << parameter.name;
    EXPECT_EQ((flags & PARAMFLAG_FHASDEFAULT) != 0, parameter.optional) << parameter.name;
    if ((flags & PARAMFLAG_FHASDEFAULT) != 0) {
        EXPECT_EQ(described.paramdesc.pparamdescex->varDefaultValue.lVal, parameter.absent) << parameter.name;
    }
}

void ExpectMember(ITypeInfo& info, UINT index, const com::Member& member) {
    const Described described(info, index);
    const FUNCDESC& function = *described.function;
    EXPECT_EQ(function.memid, member.id);
    EXPECT_EQ(static_cast<WORD>(function.invkind), member.kind);
    EXPECT_EQ(function.oVft, static_cast<SHORT>((7 + index) * sizeof(void*)));
    const std::vector<std::string> names = described.Names();
    EXPECT_EQ(names.at(0), member.name);
    const bool hasResult = member.result != VT_EMPTY;
    ASSERT_EQ(static_cast<std::size_t>(function.cParams), member.parameterCount + (hasResult ? 1 : 0));
    for (std::size_t i = 0; i < member.parameterCount; ++i) {
        ExpectParameter(info, function.lprgelemdescParam[i], member.parameters[i]);
        if (member.kind == DISPATCH_METHOD) {
            EXPECT_EQ(names.at(i + 1), member.parameters[i].name);
        }
    }
    if (!hasResult) return;
    const ELEMDESC& result = function.lprgelemdescParam[member.parameterCount];
    EXPECT_NE(result.paramdesc.wParamFlags & PARAMFLAG_FRETVAL, 0);
    EXPECT_EQ(TypeOf(info, result.tdesc), member.result);
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
    const com::Ref<ITypeLib> library = test::RegisteredTypeLibrary();
    ASSERT_TRUE(library);
    for (const test::KnownClass& known : test::KnownClasses()) {
        const com::Ref<ITypeInfo> table = TableOf(*library, known.interfaceId);
        ASSERT_TRUE(table) << known.name;
        TYPEATTR* attributes = nullptr;
        ASSERT_EQ(table->GetTypeAttr(&attributes), S_OK);
        const UINT count = attributes->cFuncs;
        EXPECT_NE(attributes->wTypeFlags & TYPEFLAG_FDUAL, 0) << known.name;
        table->ReleaseTypeAttr(attributes);
        ASSERT_EQ(count, known.members.size()) << known.name;
        for (UINT i = 0; i < count; ++i) {
            SCOPED_TRACE(std::string(known.name) + "." + std::string(known.members[i].name));
            ExpectMember(*table, i, known.members[i]);
        }
    }
}

/// "name default|source" of each interface of a class.
std::vector<std::string> InterfacesOf(ITypeInfo& classInfo) {
    std::vector<std::string> interfaces;
    HREFTYPE reference = 0;
    for (UINT i = 0; SUCCEEDED(classInfo.GetRefTypeOfImplType(i, &reference)); ++i) {
        com::Ref<ITypeInfo> offered;
        com::Bstr name;
        INT flags = 0;
        EXPECT_EQ(classInfo.GetRefTypeInfo(reference, offered.Receive()), S_OK);
        EXPECT_EQ(offered->GetDocumentation(MEMBERID_NIL, name.Receive(), nullptr, nullptr, nullptr), S_OK);
        EXPECT_EQ(classInfo.GetImplTypeFlags(i, &flags), S_OK);
        interfaces.push_back(name.Text() + ((flags & IMPLTYPEFLAG_FDEFAULT) != 0 ? " default" : "") +
                             ((flags & IMPLTYPEFLAG_FSOURCE) != 0 ? " source" : ""));
    }
    return interfaces;
}

TEST(TypeLibrary, DescribesClassesEventsAndTheRecordKind) {
    const com::Ref<ITypeLib> library = test::RegisteredTypeLibrary();
    ASSERT_TRUE(library);
    com::Bstr name;
    com::Bstr description;
    EXPECT_EQ(library->GetDocumentation(-1, name.Receive(), description.Receive(), nullptr, nullptr), S_OK);
    EXPECT_EQ(name.Text() + ": " + description.Text(), "VlmASLServicesLib: Velmo - ASL Services Library");
    for (const test::KnownClass& known : test::KnownClasses()) {
        com::Ref<ITypeInfo> info;
        ASSERT_EQ(library->GetTypeInfoOfGuid(known.classId, info.Receive()), S_OK) << known.name;
        std::vector<std::string> expected = {"_" + std::string(known.name) + " default"};
        if (std::string_view(known.name) == "ASLImportPatient") {
            expected.emplace_back("__ASLImportPatient default source");
        }
        EXPECT_EQ(InterfacesOf(*info), expected);
    }
    com::Ref<ITypeInfo> events;
    ASSERT_EQ(library->GetTypeInfoOfGuid(k__ASLImportPatientId, events.Receive()), S_OK);
    const Described reading(*events, 0);
    EXPECT_EQ(reading.function->memid, kReadingFileId);
    EXPECT_EQ(reading.Names(), (std::vector<std::string>{"ReadingFile", "Value"}));
    ASSERT_EQ(reading.function->cParams, 1);
    EXPECT_EQ(reading.function->lprgelemdescParam[0].tdesc.vt, VT_I4);

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

}  // namespace
}  // namespace vlm::server
