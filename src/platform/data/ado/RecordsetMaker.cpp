#include "platform/data/ado/RecordsetMaker.h"

#include "platform/Error.h"
#include "platform/automation/ErrorReport.h"

namespace vlm::data::ado {

#ifdef _WIN32

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

#else

com::LateBound NewMachineRecordset() {
    throw Error("Su questo sistema le righe di una connessione altrui non si possono modificare.");
}

#endif

}  // namespace vlm::data::ado
