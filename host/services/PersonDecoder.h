#pragma once

#include "frame/HostServices.h"
#include "system/Clock.h"

namespace vlm::host {

/// Reads fiscal codes; the comune of birth is the first one of the archive with that land-registry code.
class PersonDecoder final : public FiscalCodeDecoder {
public:
    /// `clock` tells the century of a birth; it must live as long.
    explicit PersonDecoder(const sys::Clock& clock) : clock_(clock) {}

    void SetConnection(const data::ConnectionPtr& connection) override { connection_ = connection; }
    void SetFiscalCode(std::string_view code) override;
    std::string BirthDate() const override { return birthDate_; }
    std::string Sex() const override { return sex_; }
    std::int32_t BirthComune() const override { return comune_; }

private:
    std::int32_t FindComune(const std::string& landRegistryCode) const;

    const sys::Clock& clock_;
    data::ConnectionPtr connection_;
    std::string birthDate_, sex_;
    std::int32_t comune_ = 0;
};

}  // namespace vlm::host
