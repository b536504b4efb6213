#include <array>

#include "creation/ArchiveRecords.h"
#include "frame/ModGeneral.h"
#include "values/DateText.h"
#include "values/Error.h"
#include "values/Utf8.h"

namespace vlm {

namespace {

struct RecordField {
    const char* name;
    ElementColumn column;
};

constexpr std::array<RecordField, 8> kFields = {{
    {"Cognome", ElementColumn::Cognome},
    {"Nome", ElementColumn::Nome},
    {"DataNascita", ElementColumn::DataNascita},
    {"Sesso", ElementColumn::Sesso},
    {"CodiceFiscale", ElementColumn::CodiceFiscale},
    {"DataScelta", ElementColumn::DataScelta},
    {"NumTesseraSanitaria", ElementColumn::Codice},
    {"NumAssistito", ElementColumn::Codice},
}};

/// Written only where the element has them: the archive's own dates stay otherwise.
constexpr std::array<RecordField, 2> kDatesIfAny = {{
    {"DataScadenza", ElementColumn::Scadenza},
    {"DataSospensione", ElementColumn::Sospensione},
}};

constexpr std::int64_t kMainResidence = 1;
constexpr std::string_view kNoCode = "(nullo)";  // how a source says that there is none

/// Elements come from this system and from hosts: their columns go by name.
int At(const data::Recordset& element, ElementColumn column) { return element.Ordinal(NameOf(column)); }

std::string TextIn(const data::Recordset& element, ElementColumn column) {
    return std::string(element.TextOf(At(element, column)));
}

}  // namespace

void BecomeOnlyWriter(data::Connection& connection) {
    connection.Execute(
        "UPDATE Paziente SET Revocato = Revocato WHERE IDPaziente = (SELECT MIN(IDPaziente) FROM Paziente)");
}

std::int32_t PatientCreation::CreatePatient(data::Recordset& element, SinceReading* since) {
    const std::unique_ptr<HostRecord> patient = Prepared(library_.Components().NewPatientRecord(), library_, security_);
    const std::int32_t known = element.Int32Of(At(element, ElementColumn::IDPaziente));
    if (known == 0) {
        patient->AddNew();
    } else {
        patient->Load(known, true);
        if (patient->Id() == 0) throw Error("Il paziente n. " + std::to_string(known) + " non è più in archivio.");
    }
    data::Transaction transaction(library_.RequireConnection());
    BecomeOnlyWriter(library_.RequireConnection());
    if (since != nullptr && known == 0) RefuseEntered(element, *since);
    SetFields(*patient, element);
    if (!patient->Save()) return 0;
    const std::int32_t id = patient->Id();
    WriteResidence(id, element);
    transaction.Commit();
    if (since != nullptr && known == 0) since->own.insert(id);
    return id;
}

void PatientCreation::RefuseEntered(const data::Recordset& element, const SinceReading& since) const {
    const HostUtility& utility = library_.Utility();
    const std::string code = TextIn(element, ElementColumn::Codice);
    const std::string fiscalCode = TextIn(element, ElementColumn::CodiceFiscale);
    std::string same;
    if (!code.empty() && !text::EqualNoCase(code, kNoCode)) {
        same = "NumTesseraSanitaria = " + utility.SqlString(code) + " OR NumAssistito = " + utility.SqlString(code);
    }
    if (!fiscalCode.empty()) {
        same.append(same.empty() ? "" : " OR ").append("CodiceFiscale = ").append(utility.SqlString(fiscalCode));
    }
    if (same.empty()) return;
    const data::RecordsetPtr found =
        library_.RequireConnection().Open("SELECT IDPaziente FROM Paziente WHERE IDPaziente > " +
                                          std::to_string(since.lastPatient) + " AND (" + same + ")");
    for (; !found->AtEnd(); found->MoveNext()) {
        if (since.own.contains(found->Int32Of(0))) continue;
        throw Error("intanto un altro utente lo ha inserito in archivio (paziente n. " +
                    std::to_string(found->Int32Of(0)) + "): rileggere la fonte.");
    }
}

void PatientCreation::SetFields(HostRecord& patient, data::Recordset& element) const {
    for (const RecordField& field : kFields) patient.SetField(field.name, element.ValueOf(At(element, field.column)));
    patient.SetField("NonIscrittoASL", std::int64_t{0});
    const std::string fiscalCode = TextIn(element, ElementColumn::CodiceFiscale);
    if (!fiscalCode.empty()) SetDecoded(patient, fiscalCode);
    for (const RecordField& field : kDatesIfAny) {
        const int ordinal = At(element, field.column);
        if (element.NumberOf(ordinal) != 0) patient.SetField(field.name, element.ValueOf(ordinal));
    }
}

/// A code that is not valid leaves the decoder without values, and they are written all the same: what the source says
/// beside a wrong fiscal code is not trusted either.
void PatientCreation::SetDecoded(HostRecord& patient, const std::string& fiscalCode) const {
    const std::unique_ptr<FiscalCodeDecoder> decoder = library_.Components().NewFiscalCodeDecoder();
    decoder->SetConnection(library_.Connection());
    try {
        decoder->SetFiscalCode(fiscalCode);
    } catch (const Error&) {  // told by what is then empty
    }
    const auto born = text::ParseItalianDate(decoder->BirthDate());
    patient.SetField("DataNascita", born ? data::Value(*born) : data::Value());
    patient.SetField("Sesso", decoder->Sex());
    patient.SetField("IDComuneNascita", std::int64_t{decoder->BirthComune()});
}

void PatientCreation::WriteResidence(std::int32_t patient, data::Recordset& element) const {
    const double comune = element.NumberOf(At(element, ElementColumn::IDComune));
    const std::string address = TextIn(element, ElementColumn::Indirizzo);
    const std::string telephone = TextIn(element, ElementColumn::Telefono);
    if (!(comune > 0) && address.empty() && telephone.empty()) return;
    WriteResidence(patient, static_cast<std::int64_t>(comune), address, TextIn(element, ElementColumn::CAP), telephone);
}

void PatientCreation::WriteResidence(std::int32_t patient, std::int64_t comune, const std::string& address,
                                     const std::string& postalCode, const std::string& telephone) const {
    const data::UpdatableRecordsetPtr rows = library_.RequireConnection().OpenForUpdate(
        "SELECT * FROM Residenza WHERE IDPaziente = " + std::to_string(patient) +
        " AND IDTipoResidenza = " + std::to_string(kMainResidence));
    if (rows->AtEnd()) {
        rows->AddNew();
        rows->SetValue("IDResidenza", GetNewID(library_, "Residenza", "IDResidenza", 0));
    }
    rows->SetValue("IDPaziente", std::int64_t{patient});
    rows->SetValue("IDTipoResidenza", kMainResidence);
    rows->SetValue("IDComune", comune);
    rows->SetValue("Indirizzo", address);
    rows->SetValue("Cap", postalCode);
    if (!telephone.empty()) rows->SetValue("Telefono", telephone);
    rows->Update();
    rows->Close();
}

}  // namespace vlm
