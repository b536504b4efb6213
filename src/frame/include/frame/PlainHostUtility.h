#pragma once

#include "frame/HostServices.h"
#include "values/Error.h"

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

/// The components of a host that has none: making one throws Error and names it.
class MissingComponents final : public HostComponents {
public:
    std::unique_ptr<HostRecord> NewPatientRecord() override { Refuse("PatientRecord"); }
    std::unique_ptr<HostRecord> NewExemptionRecord() override { Refuse("ExemptionRecord"); }
    std::unique_ptr<FiscalCodeDecoder> NewFiscalCodeDecoder() override { Refuse("FiscalCodeDecoder"); }
    std::unique_ptr<ParameterStore> NewParameterStore() override { Refuse("ParameterStore"); }
    std::unique_ptr<HealthCardClient> NewHealthCardClient() override { Refuse("HealthCardClient"); }

private:
    [[noreturn]] static void Refuse(const char* component) {
        throw Error("Il componente " + std::string(component) + " dell'applicazione ospite non è disponibile.");
    }
};

}  // namespace vlm
