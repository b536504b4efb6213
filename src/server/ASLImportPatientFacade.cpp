#include "ASLImportPatientFacade.h"

#include "ado/AdoTypes.h"
#include "ado/HostRecordset.h"
#include "ado/RecordsetObject.h"

namespace vlm::server {

namespace {

constexpr std::int32_t kTypeMismatch = 13;  // run-time error number

[[noreturn]] void RefuseRows() { throw Error("Data: l'oggetto non è un insieme di righe.", kTypeMismatch); }

/// The current row of a host's row set goes to `make`.
template <typename Make>
std::int32_t WithElement(IDispatch* data, Make&& make) {
    const data::ado::RecordsetReference rows(data);
    if (rows.Rows() == nullptr) RefuseRows();
    return make(*rows.Rows());
}

/// What a component returns lives on its own, and keeps the library loaded. Null for no rows.
IDispatch* Given(ElementListPtr elements) {
    if (!elements) return nullptr;
    auto object = data::ado::MakeRecordsetObject(std::move(elements), std::make_shared<Module::Alive>());
    return object.Detach();
}

/// A row set of the host's own kind is given its columns by name.
void AppendColumns(IDispatch* data) {
    const com::LateBound fields = com::LateBound(com::Ref<IDispatch>(data)).ObjectOf("Fields");
    for (const ElementColumnFacts& column : kElementColumns) {
        const std::int32_t attributes = column.nullable ? data::ado::kFieldIsNullable : data::ado::kFieldUnspecified;
        fields.Call("Append", {com::Variant(column.name), com::Variant(data::ado::AdoTypeOf(column.type)),
                               com::Variant(std::int32_t{0}), com::Variant(attributes)});
    }
}

}  // namespace

ASLImportPatientFacade::ASLImportPatientFacade() : Facade(kASLImportPatientClass) {
    component_.ReadingFile = [this](std::int32_t percent) { events_.Fire(kReadingFileId, com::Variant(percent)); };
}

HRESULT ASLImportPatientFacade::InitDataStructure(IDispatch* data) {
    return Do([&] {
        const data::ado::RecordsetReference rows(data);
        if (rows.Rows() == nullptr) RefuseRows();
        if (auto* own = dynamic_cast<data::MemoryRecordset*>(rows.Rows())) {
            vlm::InitDataStructure(*own);
        } else {
            AppendColumns(data);
        }
    });
}

HRESULT ASLImportPatientFacade::GetElementList(BSTR fileName, IDispatch** result) {
    return Give(result, [&] { return Given(component_.GetElementList(com::ToUtf8(fileName))); });
}

HRESULT ASLImportPatientFacade::CreatePatient(IDispatch* data, LONG* result) {
    return Give(result, [&] {
        return WithElement(data, [&](data::Recordset& element) { return component_.CreatePatient(element); });
    });
}

HRESULT ASLImportPatientFacade::GetElementListSistemaTS(LONG specialist, BSTR pin, IDispatch** result) {
    return Give(result, [&] { return Given(component_.GetElementListSistemaTS(specialist, com::ToUtf8(pin))); });
}

HRESULT ASLImportPatientFacade::GetElementListEsentiRedditoSistemaTS(LONG specialist, BSTR pin, IDispatch** result) {
    return Give(result,
                [&] { return Given(component_.GetElementListEsentiRedditoSistemaTS(specialist, com::ToUtf8(pin))); });
}

HRESULT ASLImportPatientFacade::CreateEsenzione(IDispatch* data, LONG* result) {
    return Give(result, [&] {
        return WithElement(data, [&](data::Recordset& element) { return component_.CreateEsenzione(element); });
    });
}

}  // namespace vlm::server
