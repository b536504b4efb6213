#include "ado/AdoConnection.h"
#include "automation/ErrorReport.h"
#include "values/Error.h"

namespace vlm::data::ado {

com::LateBound NewMachineRecordset() {
    CLSID classId;
    HRESULT done = CLSIDFromProgID(L"ADODB.Recordset", &classId);
    void* made = nullptr;
    if (SUCCEEDED(done)) {
        done = CoCreateInstance(classId, nullptr, CLSCTX_INPROC_SERVER, com::kIdOf<IDispatch>, &made);
    }
    if (FAILED(done)) throw com::TakeError(done, "ADODB.Recordset");
    return com::LateBound(com::Ref<IDispatch>::Adopt(static_cast<IDispatch*>(made)));
}

}  // namespace vlm::data::ado
