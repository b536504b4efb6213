#pragma once

#include <cstdint>
#include <string>

#include "automation/LateBound.h"
#include "frame/HostServices.h"

namespace vlm::host {

/// A record locked through a lock service, until the object goes. Letting go never fails.
class RecordLock {
public:
    /// Throws Error naming the holder when another user has the record. No service, no lock.
    RecordLock(const HostObjectPtr& service, std::string_view table, std::int32_t key);
    RecordLock(const RecordLock&) = delete;
    RecordLock& operator=(const RecordLock&) = delete;
    ~RecordLock();

private:
    com::LateBound service_;
    com::Variant table_, key_;
};

}  // namespace vlm::host
