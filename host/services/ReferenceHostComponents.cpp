#include "services/ReferenceHostComponents.h"

#include "ArchiveRecord.h"
#include "HealthCardFile.h"
#include "ParametersOfSpecialist.h"
#include "PersonDecoder.h"

namespace vlm::host {

std::unique_ptr<HostRecord> ReferenceHostComponents::NewPatientRecord() {
    return std::make_unique<ArchiveRecord>(kPatients);
}

std::unique_ptr<HostRecord> ReferenceHostComponents::NewExemptionRecord() {
    return std::make_unique<ArchiveRecord>(kPatientExemptions);
}

std::unique_ptr<FiscalCodeDecoder> ReferenceHostComponents::NewFiscalCodeDecoder() {
    return std::make_unique<PersonDecoder>(clock_);
}

std::unique_ptr<ParameterStore> ReferenceHostComponents::NewParameterStore() {
    return std::make_unique<ParametersOfSpecialist>();
}

std::unique_ptr<HealthCardClient> ReferenceHostComponents::NewHealthCardClient() {
    return std::make_unique<HealthCardFile>();
}

}  // namespace vlm::host
