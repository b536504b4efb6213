#pragma once

#include <memory>

#include "frame/HostServices.h"
#include "frame/Library.h"

namespace vlm {

/// What the host's records are given besides the connection; either may be null.
struct RecordSecurity {
    HostObjectPtr lockService;
    HostObjectPtr rights;
};

/// A record of the host's, ready to be added or loaded.
inline std::unique_ptr<HostRecord> Prepared(std::unique_ptr<HostRecord> record, const Library& library,
                                            const RecordSecurity& security) {
    record->SetConnection(library.Connection());
    record->SetSecurity(security.lockService, security.rights);
    return record;
}

}  // namespace vlm
