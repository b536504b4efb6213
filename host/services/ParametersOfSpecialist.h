#pragma once

#include <map>
#include <string>

#include "frame/HostServices.h"

namespace vlm::host {

/// The parameters of a specialist in the clinic's table ParametroSpecialista; names compare without regard to case,
/// and of several of one name the first counts.
class ParametersOfSpecialist final : public ParameterStore {
public:
    void SetConnection(const data::ConnectionPtr& connection) override { connection_ = connection; }
    void SetLockService(const HostObjectPtr&) override {}  // parameters are only read
    void Load(std::int32_t specialist, std::int32_t kind) override;
    data::Value Parameter(std::string_view name) const override;

private:
    data::ConnectionPtr connection_;
    std::map<std::string, data::Value> values_;  // by folded name
};

}  // namespace vlm::host
