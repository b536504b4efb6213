#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <unordered_set>

#include "database/Recordset.h"
#include "elements/ElementList.h"
#include "frame/HostServices.h"
#include "frame/Library.h"

/// What is written into the archive: patients and exemptions of elements, revocations.
namespace vlm {

/// What the host's records are given besides the connection; either may be null.
struct RecordSecurity {
    HostObjectPtr lockService;
    HostObjectPtr rights;
};

/// Inside a transaction, before it reads: a write that changes nothing. Who writes the archive too waits until the
/// transaction has ended, and what is read then stays so.
void BecomeOnlyWriter(data::Connection& connection);

/// A record of the host's, ready to be added or loaded.
inline std::unique_ptr<HostRecord> Prepared(std::unique_ptr<HostRecord> record, const Library& library,
                                            const RecordSecurity& security) {
    record->SetConnection(library.Connection());
    record->SetSecurity(security.lockService, security.rights);
    return record;
}

/// What is known of the archive since a list was read: others may enter patients of the same list meanwhile.
struct SinceReading {
    std::int32_t lastPatient = 0;          // the highest IDPaziente at the reading
    std::unordered_set<std::int32_t> own;  // patients that were created of the list itself
};

/// Makes archive patients of elements.
class PatientCreation {
public:
    PatientCreation(const Library& library, const RecordSecurity& security) : library_(library), security_(security) {}

    /// Stores the patient of the current element, a new one when its `IDPaziente` is 0, and the main residence when the
    /// element says anything of it: both or neither. What the fiscal code says of birth and sex replaces what the
    /// source says. The patient's identifier; 0 when the host did not store the patient. Errors are thrown.
    ///
    /// One patient at a time is written into a clinic's archive, so that numbers are given once. With `since` a new
    /// patient whom somebody else has entered since the reading, by code or fiscal code, is an Error.
    std::int32_t CreatePatient(data::Recordset& element, SinceReading* since = nullptr);

private:
    void RefuseEntered(const data::Recordset& element, const SinceReading& since) const;
    void SetFields(HostRecord& patient, data::Recordset& element) const;
    void SetDecoded(HostRecord& patient, const std::string& fiscalCode) const;
    void WriteResidence(std::int32_t patient, data::Recordset& element) const;
    void WriteResidence(std::int32_t patient, std::int64_t comune, const std::string& address,
                        const std::string& postalCode, const std::string& telephone) const;

    const Library& library_;
    const RecordSecurity& security_;
};

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

/// A patient's revocation, by the names of its columns.
struct Revocation {
    bool Revocato = false;
    Date DataRevoca;  // the zero date for none
    std::int32_t IDTipoRevocaPaziente = 0;
    std::string NoteRevoca;
};

/// Revokes archive patients.
class PatientRevocation {
public:
    PatientRevocation(const Library& library, const RecordSecurity& security)
        : library_(library), security_(security) {}

    /// The patients that are not revoked and that a source does not list any more: each is looked for among the
    /// `IDPaziente` of its elements. Has the columns of an element list that the archive knows, none of them selected.
    ElementListPtr RevocablePatients(ElementList& source) const;
    /// Writes nothing when the flag of the revocation is not set; a flag without a date stores no date. The patient is
    /// locked meanwhile. Errors of the host's record are thrown, and Error for a patient that is gone or not saved.
    void Revoke(std::int32_t patient, const Revocation& revocation) const;

private:
    const Library& library_;
    const RecordSecurity& security_;
};

}  // namespace vlm
