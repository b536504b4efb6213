#pragma once

#include <cstdint>
#include <string>

namespace vlm {

/// Which billed services a run takes, and the statements that say so.
struct ServiceSelection {
    bool quarterly = false;
    std::int32_t idSpecialista = 0;  // 0 = all
    std::int32_t idBranca = 0;       // 0 = all
    std::int32_t periodo = 0;        // month 1-12, or quarter 1-4
    std::int16_t anno = 0;
    bool includiPrecedenti = false;   // monthly only
    bool includiElaborate = false;    // monthly only
    std::int32_t tipiOperazione = 0;  // bits 1 new, 2 changed, 4 cancelled; 0 = all

    /// The condition without "WHERE", on the services view or (`parcellaColumns`) on the document table. The
    /// operation types bind to the alternative of earlier periods, by the precedence of AND over OR.
    std::string GetWhereSQL(bool parcellaColumns) const;
    /// The whole selection, ordered by branch, date and document.
    std::string GetSelectSQL() const;
    /// '3/1/2011': the first of the month, month first, as the database reads it.
    static std::string GetDateLiteral(std::int32_t month, std::int32_t year);
};

}  // namespace vlm
