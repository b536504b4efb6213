#include "dataobjects/Dual.h"

namespace vlm::test::dataobjects {

com::Ref<ITypeInfo> DescriptionOf(const GUID& interfaceId) {
    wchar_t program[MAX_PATH] = {};
    GetModuleFileNameW(nullptr, program, MAX_PATH);
    std::wstring file(program);
    file.erase(file.find_last_of(L"\\/") + 1);
    com::Ref<ITypeLib> library;
    com::Ref<ITypeInfo> info;
    if (FAILED(LoadTypeLibEx((file + L"HostDataObjects.tlb").c_str(), REGKIND_NONE, library.Receive())) ||
        FAILED(library->GetTypeInfoOfGuid(interfaceId, info.Receive()))) {
        std::abort();  // without it nothing here can be called by name
    }
    return info;
}

HRESULT Tell(const Failure& failure, const GUID& interfaceId) noexcept {
    com::Ref<ICreateErrorInfo> error;
    if (SUCCEEDED(CreateErrorInfo(error.Receive()))) {
        error->SetGUID(interfaceId);
        error->SetDescription(com::Bstr(failure.text).Get());
        error->SetSource(com::Bstr(failure.source).Get());
        SetErrorInfo(0, com::Query<IErrorInfo>(error.Get()).Get());
    }
    return failure.result;
}

}  // namespace vlm::test::dataobjects
