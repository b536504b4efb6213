#include "archive/ArchiveComponents.h"

#include <map>
#include <string>

#include "archive/ArchiveRecord.h"
#include "archive/FiscalCode.h"
#include "database/SqlTokens.h"
#include "frame/PlainHostUtility.h"
#include "values/DateText.h"
#include "values/Error.h"
#include "values/Utf8.h"

namespace vlm::archive {

namespace {

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

void ParametersOfSpecialist::Load(std::int32_t specialist, std::int32_t /*kind*/) {
    values_.clear();
    if (connection_ == nullptr)
        throw Error("I parametri dello specialista non si possono leggere: manca la connessione.");
    const auto rows = connection_->Open("SELECT Nome, Valore FROM ParametroSpecialista WHERE IDSpecialista = " +
                                        std::to_string(specialist));
    for (; !rows->AtEnd(); rows->MoveNext()) values_.try_emplace(text::FoldCase(rows->TextOf(0)), rows->ValueOf(1));
}

data::Value ParametersOfSpecialist::Parameter(std::string_view name) const {
    const auto found = values_.find(text::FoldCase(name));
    return found == values_.end() ? data::Value() : found->second;
}

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

void PersonDecoder::SetFiscalCode(std::string_view code) {
    const FiscalBearer bearer = ReadFiscalCode(code, clock_.Today());
    comune_ = FindComune(bearer.landRegistryCode);
    birthDate_ = text::DdMmYyyySlashes(bearer.birth);
    sex_ = bearer.female ? "F" : "M";
}

std::int32_t PersonDecoder::FindComune(const std::string& landRegistryCode) const {
    if (landRegistryCode.front() == 'Z') return 0;  // a foreign state
    if (connection_ == nullptr) throw Error("Il comune di nascita non si può cercare: manca la connessione.");
    const auto comune = connection_->Open("SELECT IDComune FROM Aldra..Comune WHERE CodiceCatastale = " +
                                          data::SqlTextLiteral(landRegistryCode));
    return comune->AtEnd() ? 0 : comune->Int32Of(0);
}

}  // namespace

std::unique_ptr<HostRecord> ArchiveComponents::NewPatientRecord() { return std::make_unique<ArchiveRecord>(kPatients); }

std::unique_ptr<HostRecord> ArchiveComponents::NewExemptionRecord() {
    return std::make_unique<ArchiveRecord>(kPatientExemptions);
}

std::unique_ptr<FiscalCodeDecoder> ArchiveComponents::NewFiscalCodeDecoder() {
    return std::make_unique<PersonDecoder>(clock_);
}

std::unique_ptr<ParameterStore> ArchiveComponents::NewParameterStore() {
    return std::make_unique<ParametersOfSpecialist>();
}

std::unique_ptr<HealthCardClient> ArchiveComponents::NewHealthCardClient() {
    return MissingComponents().NewHealthCardClient();
}

}  // namespace vlm::archive
