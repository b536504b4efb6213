#pragma once

#include <cstdint>
#include <string>

#include "creation/ArchiveRecords.h"
#include "elements/ElementList.h"
#include "readers/SourceReaders.h"

namespace vlm {

/// The lists that the national health-card system hands out on line to one specialist.
enum class HealthCardList {
    Patients,   // who chose the specialist as doctor
    Exemptions  // the income exemptions of those of them that are in the archive
};

/// Asks the system for a list and reads its answer. An answer of errors throws Error with number kSistemaTSError, the
/// source "SistemaTS" and a line for each of them; errors before the answer reach the caller as they are.
class ModSistemaTS {
public:
    static constexpr std::int32_t kSistemaTSError = static_cast<std::int32_t>(0x80043018);

    ModSistemaTS(const RecordSecurity& security, ReadContext& context) : security_(security), context_(context) {}

    ElementListPtr GetElementList(HealthCardList list, std::int32_t specialist, const std::string& pin);

private:
    std::string GetInstallPath() const { return context_.library.InstallFolder().Path(); }
    void SetCredentials(HealthCardClient::Credentials& credentials, std::int32_t specialist) const;
    void SetStudioCodes(HealthCardClient::Credentials& credentials) const;
    void AskForPatients(const std::vector<HealthCardClient::Person>& persons);
    std::int32_t PatientOf(const HealthCardClient::Person& person);
    void AddPerson(ElementList& elements, const HealthCardClient::Person& person);
    void AddExemptions(ElementList& elements, const HealthCardClient::Person& person);

    const RecordSecurity& security_;
    ReadContext& context_;
};

}  // namespace vlm
