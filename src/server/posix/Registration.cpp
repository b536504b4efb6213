#include "Registration.h"

namespace vlm::server {

HRESULT RegisterClasses() noexcept { return S_OK; }
HRESULT UnregisterClasses() noexcept { return S_OK; }

}  // namespace vlm::server
