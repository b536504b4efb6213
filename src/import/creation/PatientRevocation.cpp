#include <algorithm>
#include <array>
#include <unordered_set>

#include "creation/ArchiveRecords.h"
#include "values/Error.h"

namespace vlm {

namespace {

constexpr const char* kRevocable =
    "SELECT 0 as Selezionato, IDPaziente, CodicePaziente, NumTesseraSanitaria, NumAssistito, DataScelta, Cognome, Nome,"
    " DataNascita, Sesso, CodiceFiscale ,Revocato, NonIscrittoASL, DataRevoca, IDTipoRevocaPaziente FROM Paziente"
    " WHERE IsNull(Revocato, 0) = 0";

/// What is kept of a patient.
constexpr std::array kKept = {
    ElementColumn::Codice, ElementColumn::Cognome,       ElementColumn::Nome,       ElementColumn::DataNascita,
    ElementColumn::Sesso,  ElementColumn::CodiceFiscale, ElementColumn::DataScelta, ElementColumn::IDPaziente,
};

/// The archive's column of it.
const char* SourceOf(ElementColumn kept) { return kept == ElementColumn::Codice ? "CodicePaziente" : NameOf(kept); }

ElementListPtr NewList() {
    auto patients = std::make_unique<ElementList>();
    const auto append = [&](const ElementColumnFacts& facts) {
        patients->AppendColumn(facts.name, facts.type, facts.nullable);
    };
    for (const ElementColumn column : kKept) append(FactsOf(column));
    append(FactsOf(ElementColumn::Selezionato));
    patients->Open();
    return patients;
}

/// A cell of the archive that is not of its column's kind is shown empty: the other patients are there all the same.
void Keep(ElementList& patients, int kept, const data::Recordset& archive, int source) {
    try {
        patients.SetValue(kept, archive.ValueOf(source));
    } catch (const TypeMismatchError&) {
        patients.SetValue(kept, data::Value());
    }
}

std::unordered_set<std::int64_t> PatientsOf(ElementList& elements) {
    std::unordered_set<std::int64_t> patients;
    elements.SetFilter("");
    for (; !elements.AtEnd(); elements.MoveNext()) {
        patients.insert(elements.IntegerOf(OrdinalOf(ElementColumn::IDPaziente)));
    }
    return patients;
}

}  // namespace

ElementListPtr PatientRevocation::RevocablePatients(ElementList& source) const {
    const std::unordered_set<std::int64_t> listed = PatientsOf(source);
    ElementListPtr patients = NewList();
    const data::RecordsetPtr archive = library_.RequireConnection().Open(kRevocable);
    std::array<int, kKept.size()> sources{};
    std::transform(kKept.begin(), kKept.end(), sources.begin(),
                   [&](ElementColumn column) { return archive->Ordinal(SourceOf(column)); });
    const int archiveCode = sources.front();
    const int archivePatient = sources.back();
    const int card = archive->Ordinal("NumTesseraSanitaria");
    const int code = patients->Ordinal(NameOf(ElementColumn::Codice));
    const int selected = patients->Ordinal(NameOf(ElementColumn::Selezionato));
    for (; !archive->AtEnd(); archive->MoveNext()) {
        if (listed.contains(archive->IntegerOf(archivePatient))) continue;
        patients->AddNew();
        for (std::size_t at = 0; at < kKept.size(); ++at) Keep(*patients, static_cast<int>(at), *archive, sources[at]);
        if (archive->TextOf(archiveCode).empty()) patients->SetText(code, archive->TextOf(card));
        patients->SetBoolean(selected, false);
        patients->Update();
    }
    return patients;
}

void PatientRevocation::Revoke(std::int32_t patient, const Revocation& revocation) const {
    const std::unique_ptr<HostRecord> record = Prepared(library_.Components().NewPatientRecord(), library_, security_);
    record->Load(patient, true);
    if (!revocation.Revocato) return;
    if (record->Id() == 0) throw Error("Il paziente n. " + std::to_string(patient) + " non è più in archivio.");
    const Date since = revocation.DataRevoca;
    record->SetField("Revocato", std::int64_t{1});
    record->SetField("DataRevoca", since.Serial() == 0 ? data::Value() : data::Value(since));
    record->SetField("IDTipoRevocaPaziente", std::int64_t{revocation.IDTipoRevocaPaziente});
    record->SetField("NoteRevoca", revocation.NoteRevoca);
    if (!record->Save()) throw Error("Il paziente n. " + std::to_string(patient) + " non è stato salvato.");
}

}  // namespace vlm
