#pragma once

#include "frame/HostServices.h"

namespace vlm {

/// The shared utility object of a host that brings none of its own.
class PlainHostUtility : public HostUtility {
public:
    explicit PlainHostUtility(std::string workFolder) : workFolder_(std::move(workFolder)) {}

    std::string WorkFolder() const override { return workFolder_; }
    /// 'YYYY-MM-DD', or 'YYYY-MM-DD HH:MM:SS' for a date with a time of day.
    std::string SqlDate(Date date, int option) const override;
    std::string SqlString(std::string_view value) const override;

private:
    std::string workFolder_;
};

}  // namespace vlm
