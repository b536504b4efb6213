#pragma once

#include <cstdint>
#include <string>

#include "creation/RecordSecurity.h"
#include "database/Recordset.h"

namespace vlm {

/// Gives archive patients the exemptions that elements say.
class ExemptionCreation {
public:
    ExemptionCreation(const Library& library, const RecordSecurity& security)
        : library_(library), security_(security) {}

    /// Stores the exemption of the current element: -1 when it was written, 0 when its patient is not in the archive or
    /// the catalogue has no exemption of that code for the patient's age. Errors of the host's records are thrown.
    std::int32_t CreateEsenzione(data::Recordset& element);

    /// The catalogue's exemption of a code that fits an age in years, the last one where several do; 0 for none. An age
    /// below 0 is not known. Errors count as none.
    std::int32_t FindExemptionByCode(const std::string& code, int age) const noexcept;
    /// The patient's row of an exemption, the one that expires last; 0 for none. Errors count as none.
    std::int32_t FindPatientExemption(std::int32_t exemption, std::int32_t patient) const noexcept;

private:
    int AgeOf(const HostRecord& patient) const;

    const Library& library_;
    const RecordSecurity& security_;
};

}  // namespace vlm
