#include "frame/ModSysTables.h"

#include <array>

namespace vlm {

namespace {

struct Source {
    PickListKind kind;
    const char* rows;
    const char* key;
    const char* display;
};

constexpr std::array kSources = {
    Source{PickListKind::Specialists,
           "SELECT IDSpecialista, Cognome + ' ' + Nome AS Specialista, CodiceRegionale FROM Specialista",
           "IDSpecialista", "Specialista"},
    Source{PickListKind::Branches,
           "SELECT IDBrancaPerStudio, BrancaPerStudio FROM BrancaPerStudio ORDER BY BrancaPerStudio",
           "IDBrancaPerStudio", "BrancaPerStudio"},
    Source{PickListKind::Months, "SELECT IDMese,Mese FROM Aldra..Mese ORDER BY IDMese", "IDMese", "Mese"},
    Source{PickListKind::Centres,
           "SELECT IDStudio, IsNull(RagioneSociale,'') + ' ' + IsNull(Nome,'') AS Studio FROM Aldra..Studi"
           " WHERE ISNULL([IDEquipe],0) > 0 ORDER BY RagioneSociale",
           "IDStudio", "Studio"},
    Source{PickListKind::RevocationTypes,
           "SELECT IDTipoRevocaPaziente, TipoRevocaPaziente FROM Aldra..TipoRevocaPaziente"
           " ORDER BY IDTipoRevocaPaziente",
           "IDTipoRevocaPaziente", "TipoRevocaPaziente"},
};

/// The specialists with their branches, from "FROM" on.
constexpr const char* kSpecialistsOfBranch =
    " FROM Specialista INNER JOIN BrancaPerStudioPerSpecialista"
    " ON Specialista.IDSpecialista = BrancaPerStudioPerSpecialista.IDSpecialista";

std::string OfBranch(std::int32_t idBranca) { return " WHERE IDBrancaPerStudio = " + std::to_string(idBranca); }

std::string OfBranchOrAll(std::int32_t idBranca) { return idBranca > 0 ? OfBranch(idBranca) : std::string{}; }

void FillSpecialists(const Library& library, ui::PickList& list, const std::string& furtherColumns,
                     const std::string& condition) {
    list.rowSource = "SELECT Specialista.IDSpecialista, Cognome + ' ' + Nome AS Specialista" + furtherColumns +
                     kSpecialistsOfBranch + condition + " ORDER BY Cognome + ' ' + Nome";
    list.displayColumn = "Specialista";
    LoadPickList(list, library.RequireConnection());
    if (list.RowCount() == 1) list.SelectIndex(0);
}

}  // namespace

void LoadPickList(ui::PickList& list, data::Connection& connection) {
    list.SetRows({}, {});
    const data::RecordsetPtr recordset = connection.Open(list.rowSource);
    const int key = recordset->Ordinal(ui::WithoutTable(list.keyColumn));
    const int display = recordset->Ordinal(ui::WithoutTable(list.displayColumn));
    std::vector<std::string> columns;
    for (int i = 0; i < recordset->FieldCount(); ++i) columns.emplace_back(recordset->FieldName(i));
    std::vector<ui::PickList::Row> rows;
    for (; !recordset->AtEnd(); recordset->MoveNext()) {
        ui::PickList::Row row{recordset->Int32Of(key), std::string(recordset->TextOf(display)), {}};
        row.cells.reserve(columns.size());
        for (int i = 0; i < recordset->FieldCount(); ++i) row.cells.emplace_back(recordset->TextOf(i));
        rows.push_back(std::move(row));
    }
    list.SetRows(std::move(columns), std::move(rows));
}

void FillPickList(const Library& library, ui::PickList& list, PickListKind kind, const std::string& condition) {
    for (const Source& source : kSources) {
        if (source.kind != kind) continue;
        list.rowSource = source.rows;
        if (kind == PickListKind::Specialists && !condition.empty()) list.rowSource += " WHERE " + condition;
        list.keyColumn = source.key;
        list.displayColumn = source.display;
    }
    LoadPickList(list, library.RequireConnection());
}

void FillSpecialistsOfBranch(const Library& library, ui::PickList& list, std::int32_t idBranca) {
    list.keyColumn = "IDSpecialista";
    FillSpecialists(library, list, {}, OfBranch(idBranca));
}

void FillSpecialistsWithCode(const Library& library, ui::PickList& list, std::int32_t idBranca) {
    list.keyColumn = "Specialista.IDSpecialista";
    list.extraColumns = {{"CodiceRegionale", "Codice regionale", 1400}};
    FillSpecialists(library, list, ", Specialista.CodiceRegionale", OfBranchOrAll(idBranca));
}

std::string GetCodiceRegionale(const Library& library, std::int32_t idBranca) {
    const data::ConnectionPtr& connection = library.Connection();
    if (!connection || !connection->IsOpen()) return {};
    const data::RecordsetPtr rows = connection->Open(std::string("SELECT Specialista.CodiceRegionale") +
                                                     kSpecialistsOfBranch + OfBranchOrAll(idBranca));
    return rows->AtEnd() ? std::string{} : std::string(rows->TextOf(rows->Ordinal("CodiceRegionale")));
}

}  // namespace vlm
