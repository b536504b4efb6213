#include "creation/ArchiveRecords.h"
#include "values/Error.h"

namespace vlm {

namespace {

/// The catalogue's two bounds are those of an exemption by age: `EtaMinEsenzione` is the last year of the young,
/// `EtaMaxEsenzione` the first of the old; 0 and 0 is everybody.
bool FitsAge(const data::Recordset& row, int youngColumn, int oldColumn, int age) {
    const bool hasYoung = !row.IsNull(youngColumn);
    const bool hasOld = !row.IsNull(oldColumn);
    const double upTo = row.NumberOf(youngColumn);
    const double from = row.NumberOf(oldColumn);
    if (hasYoung && upTo != 0 && age >= 0 && age <= upTo) return true;
    if (hasOld && from != 0 && age >= from) return true;
    return hasYoung && hasOld && upTo == 0 && from == 0;
}

}  // namespace

std::int32_t ExemptionCreation::CreateEsenzione(data::Recordset& element) {
    const auto at = [&](ElementColumn column) { return element.Ordinal(NameOf(column)); };
    const std::unique_ptr<HostRecord> patient = Prepared(library_.Components().NewPatientRecord(), library_, security_);
    patient->Load(element.Int32Of(at(ElementColumn::IDPaziente)), false);
    const std::int32_t id = patient->Id();
    if (id == 0) return 0;
    const std::int32_t exemption =
        FindExemptionByCode(std::string(element.TextOf(at(ElementColumn::Esenzione))), AgeOf(*patient));
    if (exemption <= 0) return 0;

    const std::unique_ptr<HostRecord> record =
        Prepared(library_.Components().NewExemptionRecord(), library_, security_);
    const std::int32_t row = FindPatientExemption(exemption, id);
    if (row < 1) {
        record->AddNew();
        record->SetField("IDEsenzione", std::int64_t{exemption});
        record->SetField("IDPaziente", std::int64_t{id});
    } else {
        record->Load(row, true);
    }
    data::Transaction transaction(library_.RequireConnection());
    BecomeOnlyWriter(library_.RequireConnection());
    record->SetField("DataEsenzione", element.ValueOf(at(ElementColumn::EsenzioneDataInizio)));
    record->SetField("Scadenza", element.ValueOf(at(ElementColumn::EsenzioneDataScadenza)));
    if (!record->Save()) return 0;
    transaction.Commit();
    return -1;
}

/// Calendar years between birth and today; -1 for a patient without a birth date, whom only exemptions for every age
/// fit.
int ExemptionCreation::AgeOf(const HostRecord& patient) const {
    const auto born = data::DateOf(patient.Field("DataNascita"), "DataNascita");
    if (!born) return -1;
    return library_.Clock().Today().ToCivil().year - born->ToCivil().year;
}

std::int32_t ExemptionCreation::FindExemptionByCode(const std::string& code, int age) const noexcept {
    try {
        const data::RecordsetPtr rows = library_.RequireConnection().Open(
            "SELECT * FROM vwPartecipazioneSpesa WHERE CodiceIdentificativo = " + library_.Utility().SqlString(code));
        const int key = rows->Ordinal("IDEsenzione");
        const int young = rows->Ordinal("EtaMinEsenzione");
        const int old = rows->Ordinal("EtaMaxEsenzione");
        std::int32_t found = 0;
        for (; !rows->AtEnd(); rows->MoveNext()) {
            if (FitsAge(*rows, young, old, age)) found = rows->Int32Of(key);
        }
        return found;
    } catch (const std::exception&) {
        return 0;
    }
}

std::int32_t ExemptionCreation::FindPatientExemption(std::int32_t exemption, std::int32_t patient) const noexcept {
    try {
        const data::RecordsetPtr rows = library_.RequireConnection().Open(
            "SELECT * FROM EsenzionePerPaziente WHERE IDEsenzione = " + std::to_string(exemption) +
            " AND IDPaziente = " + std::to_string(patient) + " ORDER BY Scadenza DESC");
        return rows->AtEnd() ? 0 : rows->Int32Of(rows->Ordinal("IDEsenzionePerPaziente"));
    } catch (const std::exception&) {
        return 0;
    }
}

}  // namespace vlm
