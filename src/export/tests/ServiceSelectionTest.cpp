#include <gtest/gtest.h>

#include "export/ServiceSelection.h"

namespace vlm {
namespace {

TEST(ServiceSelectionTest, BuildsTheConditionOfEveryFilter) {
    const std::string month = "YEAR(DataAiFiniConvenzione) = 2011 AND MONTH(DataAiFiniConvenzione) = 3";
    const std::string unsent = " AND (ElaborataASL = 0 OR ElaborataASL IS NULL)";
    const std::string earlier =
        ") OR (DataAiFiniConvenzione < '3/1/2011' AND IDPosizioneContabile <> 1 AND (ElaborataASL IS NULL OR "
        "ElaborataASL = 0))";
    const std::string quarter =
        "(YEAR(DataAiFiniConvenzione) = 2011 AND CEILING(CAST(MONTH(DataAiFiniConvenzione) AS FLOAT) / 3) = 2 AND (NOT "
        "ElaborataASL IS NULL AND ElaborataASL <> 0))";
    using Case = std::tuple<ServiceSelection, bool, std::string>;
    const std::vector<Case> cases = {
        {{false, 0, 0, 3, 2011, false, false, 0}, false, "(" + month + unsent + ")"},
        {{false, 0, 0, 3, 2011, false, true, 0}, false, "(" + month + ")"},
        {{false, 0, 0, 3, 2011, true, false, 0}, true, "((" + month + unsent + earlier + ")"},
        {{false, 0, 0, 3, 2011, true, true, 5}, false, "((" + month + earlier + " AND IDTipoOperazione IN (1,3))"},
        {{false, 0, 0, 3, 2011, false, false, 7}, false, "(" + month + unsent + " AND IDTipoOperazione IN (1,2,3))"},
        {{false, 7, 2, 3, 2011, false, false, 2},
         false,
         "(" + month + unsent +
             " AND IDTipoOperazione IN (2)) AND IDSpecialista_Parcella = 7 AND "
             "IDBrancaPerStudio_Parcella = 2"},
        {{false, 7, 2, 3, 2011, false, false, 0},
         true,
         "(" + month + unsent + ") AND IDSpecialista = 7 AND IDBrancaPerStudio = 2"},
        {{true, 0, 0, 2, 2011, true, true, 0}, false, quarter},
    };
    for (const auto& [selection, parcella, condition] : cases) EXPECT_EQ(selection.GetWhereSQL(parcella), condition);
}

TEST(ServiceSelectionTest, JoinsTownAndTicketPositionAndOrdersByDocument) {
    const ServiceSelection selection{false, 0, 0, 12, 2010, false, true, 0};
    EXPECT_EQ(
        selection.GetSelectSQL(),
        "SELECT VwPrestazionePerASL.*,Aldra..Comune.CodiceISTAT, Aldra..TipoEsenzione.IDPosizioneTicket FROM "
        "VwPrestazionePerASL LEFT JOIN Residenza ON (VwPrestazionePerASL.IDPaziente = Residenza.IDPaziente AND "
        "Residenza.IDTipoResidenza = 1) LEFT JOIN Aldra..Comune ON Residenza.IDComune = Aldra..Comune.IDComune LEFT "
        "JOIN Aldra..Esenzione ON VwPrestazionePerASL.IDPartecipazioneSpesa = Aldra..Esenzione.IDEsenzione LEFT JOIN "
        "Aldra..TipoEsenzione ON Aldra..Esenzione.IDTipoEsenzione = Aldra..TipoEsenzione.IDTipoEsenzione WHERE "
        "(YEAR(DataAiFiniConvenzione) = 2010 AND MONTH(DataAiFiniConvenzione) = 12) ORDER BY CodiceBranca, "
        "DataAiFiniConvenzione, IDParcella");
}

}  // namespace
}  // namespace vlm
