#include "healthcard/ModSistemaTS.h"

#include <cmath>

#include "ModCrypt.h"
#include "frame/Messages.h"
#include "values/Error.h"
#include "values/Utf8.h"

namespace vlm {

namespace {

constexpr std::uint64_t kProgressStep = 10;

[[noreturn]] void RaiseErrors(const std::vector<HealthCardClient::Failure>& errors) {
    std::string description;
    for (const HealthCardClient::Failure& error : errors) {
        description += error.code + " - " + error.description + messages::kLineEnd;
    }
    throw Error(description, ModSistemaTS::kSistemaTSError, "SistemaTS");
}

void SetPerson(ElementList& elements, const HealthCardClient::Person& person, std::int32_t patient) {
    elements.AddNew();
    elements.SetText(OrdinalOf(ElementColumn::Cognome), text::Trim(person.surname));
    elements.SetText(OrdinalOf(ElementColumn::Nome), text::Trim(person.firstName));
    elements.SetText(OrdinalOf(ElementColumn::CodiceFiscale), text::Trim(person.fiscalCode));
    elements.SetWhole(OrdinalOf(ElementColumn::IDPaziente), patient);
}

/// A date with a time of day gives the following day.
Date RoundUpToDay(Date date) {
    const double day = std::trunc(date.Serial());
    return day == date.Serial() ? date : Date(day + 1);
}

/// The zero date is the system's "no date".
void SetDay(ElementList& elements, ElementColumn column, Date date) {
    if (date.Serial() != 0) elements.SetDate(OrdinalOf(column), RoundUpToDay(date));
}

}  // namespace

ElementListPtr ModSistemaTS::GetElementList(HealthCardList list, std::int32_t specialist, const std::string& pin) {
    ElementListPtr elements = NewElementList();
    const std::unique_ptr<HealthCardClient> client = context_.library.Components().NewHealthCardClient();
    client->SetToolPath(GetInstallPath() + "\\openssl.exe");
    client->SetCertificatePath(GetInstallPath() + "\\SanitelCF.cer");
    HealthCardClient::Credentials credentials;
    SetCredentials(credentials, specialist);
    credentials.pin = pin;
    const bool patients = list == HealthCardList::Patients;
    const HealthCardClient::Response response =
        patients ? client->RequestPatients(credentials) : client->RequestExemptions(credentials);
    if (response.error) RaiseErrors(response.errors);
    AskForPatients(response.persons);
    std::uint64_t count = 0;
    for (const HealthCardClient::Person& person : response.persons) {
        if (patients) {
            AddPerson(*elements, person);
        } else {
            AddExemptions(*elements, person);
        }
        if (++count % kProgressStep == 0) context_.progress.Raise(count, response.persons.size());
    }
    elements->MoveFirst();
    return elements;
}

void ModSistemaTS::SetCredentials(HealthCardClient::Credentials& credentials, std::int32_t specialist) const {
    const std::unique_ptr<ParameterStore> parameters = context_.library.Components().NewParameterStore();
    parameters->SetConnection(context_.library.Connection());
    parameters->SetLockService(security_.lockService);
    parameters->Load(specialist, 0);
    credentials.userId = data::TextOf(parameters->Parameter("INPSUtente"));
    credentials.password = CryptText(data::TextOf(parameters->Parameter("INPSPassword")));
    SetStudioCodes(credentials);
}

void ModSistemaTS::SetStudioCodes(HealthCardClient::Credentials& credentials) const {
    const data::RecordsetPtr rows = context_.library.RequireConnection().Open("SELECT * FROM vwstudi");
    if (rows->AtEnd()) return;
    credentials.aslCode = rows->TextOf(rows->Ordinal("NumeroASL"));
    credentials.regionCode = rows->TextOf(rows->Ordinal("CodiceRegioneTariffario"));
}

/// A handful of persons is no reason to read the whole archive. What fails here fails again, person by person.
void ModSistemaTS::AskForPatients(const std::vector<HealthCardClient::Person>& persons) {
    try {
        if (!context_.archive.IsWorthAsking(persons.size())) return;
        std::vector<std::string> fiscalCodes;
        for (const HealthCardClient::Person& person : persons) fiscalCodes.emplace_back(text::Trim(person.fiscalCode));
        context_.archive.AskFor({}, std::move(fiscalCodes));
    } catch (const Error&) {
        context_.archive.Close();
    }
}

/// One person that cannot be looked up does not cost the others.
std::int32_t ModSistemaTS::PatientOf(const HealthCardClient::Person& person) {
    try {
        return context_.archive.FindPatientByFiscalCode(text::Trim(person.fiscalCode));
    } catch (const Error&) {
        return 0;
    }
}

void ModSistemaTS::AddPerson(ElementList& elements, const HealthCardClient::Person& person) {
    const std::int32_t patient = PatientOf(person);
    SetPerson(elements, person, patient);
    elements.SetBoolean(OrdinalOf(ElementColumn::Selezionato), patient == 0);
    elements.Update();
}

void ModSistemaTS::AddExemptions(ElementList& elements, const HealthCardClient::Person& person) {
    const std::int32_t patient = PatientOf(person);
    if (patient == 0) return;
    for (const HealthCardClient::Exemption& exemption : person.exemptions) {
        SetPerson(elements, person, patient);
        elements.SetText(OrdinalOf(ElementColumn::Esenzione), exemption.code);
        SetDay(elements, ElementColumn::EsenzioneDataInizio, exemption.start);
        SetDay(elements, ElementColumn::EsenzioneDataScadenza, exemption.end);
        elements.SetBoolean(OrdinalOf(ElementColumn::Selezionato), true);
        elements.Update();
    }
}

}  // namespace vlm
