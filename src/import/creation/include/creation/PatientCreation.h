#pragma once

#include <cstdint>
#include <string>

#include "creation/RecordSecurity.h"
#include "database/Recordset.h"

namespace vlm {

/// Makes archive patients of elements.
class PatientCreation {
public:
    PatientCreation(const Library& library, const RecordSecurity& security) : library_(library), security_(security) {}

    /// Stores the patient of the current element, a new one when its `IDPaziente` is 0, and the main residence when the
    /// element says anything of it: both or neither. What the fiscal code says of birth and sex replaces what the
    /// source says. The patient's identifier; 0 when the host did not store the patient. Errors are thrown.
    std::int32_t CreatePatient(data::Recordset& element);

private:
    void SetFields(HostRecord& patient, data::Recordset& element) const;
    void SetDecoded(HostRecord& patient, const std::string& fiscalCode) const;
    void WriteResidence(std::int32_t patient, data::Recordset& element) const;
    void WriteResidence(std::int32_t patient, std::int64_t comune, const std::string& address,
                        const std::string& postalCode, const std::string& telephone) const;

    const Library& library_;
    const RecordSecurity& security_;
};

}  // namespace vlm
