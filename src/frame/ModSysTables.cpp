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

}  // namespace

void FillPickList(const Library& library, ui::PickList& list, PickListKind kind, const std::string& condition) {
    for (const Source& source : kSources) {
        if (source.kind != kind) continue;
        list.rowSource = source.rows;
        if (kind == PickListKind::Specialists && !condition.empty()) list.rowSource += " WHERE " + condition;
        list.keyColumn = source.key;
        list.displayColumn = source.display;
    }
    list.Load(library.RequireConnection());
}

void FillSpecialistsOfBranch(const Library& library, ui::PickList& list, const std::string& furtherColumns,
                             const std::string& condition) {
    list.rowSource = "SELECT Specialista.IDSpecialista, Cognome + ' ' + Nome AS Specialista" + furtherColumns +
                     kSpecialistsOfBranch + condition + " ORDER BY Cognome + ' ' + Nome";
    list.displayColumn = "Specialista";
    list.Load(library.RequireConnection());
    if (list.RowCount() == 1) list.SelectIndex(0);
}

}  // namespace vlm
