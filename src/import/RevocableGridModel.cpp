#include "RevocableGridModel.h"

#include <algorithm>
#include <unordered_set>

#include "values/Error.h"

namespace vlm {

namespace {

/// The columns that the grid keeps, in its rows' own order.
enum Kept { kCode, kSurname, kFirstName, kBorn, kSex, kFiscalCode, kChoice, kPatient, kKeptColumns };

struct KeptColumn {
    const char* name;
    data::FieldType type;
};
constexpr std::array<KeptColumn, kKeptColumns> kKept = {{
    {"CodicePaziente", data::FieldType::Text},
    {"Cognome", data::FieldType::Text},
    {"Nome", data::FieldType::Text},
    {"DataNascita", data::FieldType::Date},
    {"Sesso", data::FieldType::Text},
    {"CodiceFiscale", data::FieldType::Text},
    {"DataScelta", data::FieldType::Date},
    {"IDPaziente", data::FieldType::BigInt},
}};

constexpr int kRevokedColumn = kKeptColumns + 1;  // behind the selection box and the columns kept

constexpr const char* kRevocable =
    "SELECT 0 as Selezionato, IDPaziente, CodicePaziente, NumTesseraSanitaria, NumAssistito, DataScelta, Cognome, Nome,"
    " DataNascita, Sesso, CodiceFiscale ,Revocato, NonIscrittoASL, DataRevoca, IDTipoRevocaPaziente FROM Paziente"
    " WHERE IsNull(Revocato, 0) = 0";

/// A cell of the archive that is not of its column's kind is shown empty: the other patients are there all the same.
void Keep(data::MemoryRecordset& rows, int kept, const data::Recordset& archive, int source) {
    try {
        rows.SetValue(kept, archive.ValueOf(source));
    } catch (const TypeMismatchError&) {
        rows.SetValue(kept, data::Value());
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

RevocableGridModel::RevocableGridModel(data::Connection& connection, ElementList& elements)
    : rows_(std::make_unique<data::MemoryRecordset>()) {
    const std::unordered_set<std::int64_t> listed = PatientsOf(elements);
    for (const KeptColumn& column : kKept) rows_->AppendColumn(column.name, column.type);
    rows_->Open();
    const data::RecordsetPtr archive = connection.Open(kRevocable);
    std::array<int, kKeptColumns> sources{};
    for (int kept = 0; kept < kKeptColumns; ++kept) {
        sources[static_cast<std::size_t>(kept)] = archive->Ordinal(kKept[static_cast<std::size_t>(kept)].name);
    }
    const int card = archive->Ordinal("NumTesseraSanitaria");
    for (; !archive->AtEnd(); archive->MoveNext()) {
        if (listed.contains(archive->IntegerOf(sources[kPatient]))) continue;
        rows_->AddNew();
        for (int kept = 0; kept < kKeptColumns; ++kept) {
            Keep(*rows_, kept, *archive, sources[static_cast<std::size_t>(kept)]);
        }
        if (archive->TextOf(sources[kCode]).empty()) rows_->SetText(kCode, archive->TextOf(card));
        rows_->Update();
    }
    selected_.assign(static_cast<std::size_t>(rows_->RecordCount()), false);
    revoked_ = selected_;
}

std::string RevocableGridModel::TextAt(int row, int ordinal) const {
    rows_->MoveToRow(static_cast<std::uint32_t>(row));
    return std::string(rows_->TextOf(ordinal));
}

std::int32_t RevocableGridModel::PatientAt(int row) const {
    rows_->MoveToRow(static_cast<std::uint32_t>(row));
    return rows_->Int32Of(kPatient);
}

std::string RevocableGridModel::NameAt(int row) const { return TextAt(row, kSurname) + " " + TextAt(row, kFirstName); }

std::string RevocableGridModel::BirthDateAt(int row) const { return TextAt(row, kBorn); }

std::size_t RevocableGridModel::CountSelected() const {
    return static_cast<std::size_t>(std::count(selected_.begin(), selected_.end(), true));
}

const std::vector<ui::GridModel::Column>& RevocableGridModel::Columns() const {
    static const std::vector<Column> kColumns = {
        {"Selezionato", "Importa", 60, true, true},
        {"CodicePaziente", "Codice paziente", 110},
        {"Cognome", "Cognome", 130},
        {"Nome", "Nome", 130},
        {"DataNascita", "Data nascita", 90},
        {"Sesso", "Sesso", 50},
        {"CodiceFiscale", "Codice fiscale", 150},
        {"DataScelta", "Data scelta", 90},
        {"IDPaziente", "IDPaziente", 80, false},
        {"Revocato", "Revocato", 70},
    };
    return kColumns;
}

std::string RevocableGridModel::Cell(int row, int column) const {
    if (column == 0) return IsSelected(row) ? "1" : "0";
    if (column == kRevokedColumn) return IsRevoked(row) ? "Si" : "";
    return TextAt(row, column - 1);
}

}  // namespace vlm
