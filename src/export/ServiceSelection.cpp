#include "export/ServiceSelection.h"

#include "values/DateText.h"

namespace vlm {

namespace {

/// The codes of the chosen operation types, joined by ",".
std::string OperationList(std::int32_t mask) {
    std::string list;
    for (int code = 1; code <= 3; ++code) {
        if ((mask & (1 << (code - 1))) == 0) continue;
        if (!list.empty()) list += ',';
        list += std::to_string(code);
    }
    return list;
}

}  // namespace

std::string ServiceSelection::GetDateLiteral(std::int32_t month, std::int32_t year) {
    return "'" + text::MonthFirst(month, year) + "'";
}

std::string ServiceSelection::GetWhereSQL(bool parcellaColumns) const {
    const std::string period = std::to_string(periodo);
    std::string condition = "YEAR(DataAiFiniConvenzione) = " + std::to_string(anno);
    if (quarterly) {
        // The summary takes what a monthly export has already processed.
        condition += " AND CEILING(CAST(MONTH(DataAiFiniConvenzione) AS FLOAT) / 3) = " + period;
        condition += " AND (NOT ElaborataASL IS NULL AND ElaborataASL <> 0)";
    } else {
        condition += " AND MONTH(DataAiFiniConvenzione) = " + period;
        if (!includiElaborate) condition += " AND (ElaborataASL = 0 OR ElaborataASL IS NULL)";
        if (includiPrecedenti) {
            condition.insert(0, "(");
            condition += ") OR (DataAiFiniConvenzione < " + GetDateLiteral(periodo, anno) +
                         " AND IDPosizioneContabile <> 1 AND (ElaborataASL IS NULL OR ElaborataASL = 0))";
        }
    }
    const std::string operations = OperationList(tipiOperazione);
    if (!operations.empty()) condition += " AND IDTipoOperazione IN (" + operations + ")";
    condition = "(" + condition + ")";
    const std::string suffix = parcellaColumns ? "" : "_Parcella";
    if (idSpecialista > 0) condition += " AND IDSpecialista" + suffix + " = " + std::to_string(idSpecialista);
    if (idBranca > 0) condition += " AND IDBrancaPerStudio" + suffix + " = " + std::to_string(idBranca);
    return condition;
}

std::string ServiceSelection::GetSelectSQL() const {
    return "SELECT VwPrestazionePerASL.*,Aldra..Comune.CodiceISTAT, Aldra..TipoEsenzione.IDPosizioneTicket"
           " FROM VwPrestazionePerASL"
           " LEFT JOIN Residenza ON (VwPrestazionePerASL.IDPaziente = Residenza.IDPaziente"
           " AND Residenza.IDTipoResidenza = 1)"
           " LEFT JOIN Aldra..Comune ON Residenza.IDComune = Aldra..Comune.IDComune"
           " LEFT JOIN Aldra..Esenzione ON VwPrestazionePerASL.IDPartecipazioneSpesa = Aldra..Esenzione.IDEsenzione"
           " LEFT JOIN Aldra..TipoEsenzione ON Aldra..Esenzione.IDTipoEsenzione = Aldra..TipoEsenzione.IDTipoEsenzione"
           " WHERE " +
           GetWhereSQL(false) + " ORDER BY CodiceBranca, DataAiFiniConvenzione, IDParcella";
}

}  // namespace vlm
