#include "BareLoop.h"

#include <sqlite3.h>
#include <stdexcept>
#include <vector>

namespace vlm::bench {

namespace {

/// The monthly selection with earlier periods, in the engine's own words.
constexpr const char* kSelection = R"sql(
SELECT VwPrestazionePerASL.*, Aldra.Comune.CodiceISTAT, Aldra.TipoEsenzione.IDPosizioneTicket
FROM VwPrestazionePerASL
LEFT JOIN Residenza ON (VwPrestazionePerASL.IDPaziente = Residenza.IDPaziente AND Residenza.IDTipoResidenza = 1)
LEFT JOIN Aldra.Comune ON Residenza.IDComune = Aldra.Comune.IDComune
LEFT JOIN Aldra.Esenzione ON VwPrestazionePerASL.IDPartecipazioneSpesa = Aldra.Esenzione.IDEsenzione
LEFT JOIN Aldra.TipoEsenzione ON Aldra.Esenzione.IDTipoEsenzione = Aldra.TipoEsenzione.IDTipoEsenzione
WHERE ((CAST(substr(DataAiFiniConvenzione, 1, 4) AS INTEGER) = 2011
        AND CAST(substr(DataAiFiniConvenzione, 6, 2) AS INTEGER) = 3 AND (ElaborataASL = 0 OR ElaborataASL IS NULL))
    OR (DataAiFiniConvenzione < '2011-03-01' AND IDPosizioneContabile <> 1
        AND (ElaborataASL IS NULL OR ElaborataASL = 0)))
ORDER BY CodiceBranca, datetime(DataAiFiniConvenzione), IDParcella)sql";

constexpr const char* kTexts[] = {"CodiceRegione",
                                  "CodiceRegionale",
                                  "MED_CodiceFiscale",
                                  "CodRegMedicoFiducia",
                                  "PAZ_Cognome",
                                  "PAZ_Nome",
                                  "PAZ_CodiceFiscale",
                                  "PAZ_Sesso",
                                  "PAZ_DataNascita",
                                  "CodiceISTAT",
                                  "NumeroASL",
                                  "NumRicetta1",
                                  "NumRicetta2",
                                  "CodicePrestazioneTariffario",
                                  "DataAiFiniConvenzione",
                                  "PS_CodiceIdentificativo",
                                  "DataDocumento",
                                  "NP_PrefissoNumerazione",
                                  "DataPrenotazione"};
constexpr const char* kIntegers[] = {"CodiceBranca", "Quantita",        "IDPosizioneTicket", "IDPosizioneContabile",
                                     "IDParcella",   "NumeroDocumento", "IDConsenso",        "IDTipoDocumento"};
constexpr const char* kAmounts[] = {"TotQuotaPazienteTicketEuro", "QuotaRicettaEuro", "TotaleEuro"};

void Check(int result, sqlite3* database) {
    if (result != SQLITE_OK) throw std::runtime_error(sqlite3_errmsg(database));
}

template <std::size_t N>
std::vector<int> Bind(sqlite3_stmt* statement, const char* const (&names)[N]) {
    std::vector<int> ordinals;
    for (const char* const name : names) {
        int at = 0;
        while (at < sqlite3_column_count(statement) && std::string(sqlite3_column_name(statement, at)) != name) ++at;
        if (at == sqlite3_column_count(statement)) throw std::runtime_error(std::string("no column ") + name);
        ordinals.push_back(at);
    }
    return ordinals;
}

}  // namespace

std::int64_t StepServices(const std::string& folder, bool tuned) {
    sqlite3* database = nullptr;
    const int flags = SQLITE_OPEN_READWRITE | (tuned ? SQLITE_OPEN_NOMUTEX : 0);
    Check(sqlite3_open_v2((folder + "/Studio0012.sqlite").c_str(), &database, flags, nullptr), database);
    Check(sqlite3_exec(database, ("ATTACH '" + folder + "/Aldra.sqlite' AS Aldra").c_str(), nullptr, nullptr, nullptr),
          database);
    if (tuned) {
        Check(sqlite3_exec(database, "PRAGMA main.cache_size=-6144; PRAGMA Aldra.cache_size=-1024", nullptr, nullptr,
                           nullptr),
              database);
    }
    sqlite3_stmt* statement = nullptr;
    Check(sqlite3_prepare_v2(database, kSelection, -1, &statement, nullptr), database);
    const std::vector<int> texts = Bind(statement, kTexts);
    const std::vector<int> integers = Bind(statement, kIntegers);
    const std::vector<int> amounts = Bind(statement, kAmounts);
    std::int64_t rows = 0;
    std::int64_t sum = 0;  // so that nothing is optimised away
    double money = 0;
    while (sqlite3_step(statement) == SQLITE_ROW) {
        ++rows;
        for (const int at : texts) {
            const unsigned char* const text = sqlite3_column_text(statement, at);
            sum += text != nullptr ? text[0] + sqlite3_column_bytes(statement, at) : 0;
        }
        for (const int at : integers) sum += sqlite3_column_int64(statement, at);
        for (const int at : amounts) money += sqlite3_column_double(statement, at);
    }
    sqlite3_finalize(statement);
    sqlite3_close(database);
    return sum + static_cast<std::int64_t>(money) == 0 ? 0 : rows;
}

}  // namespace vlm::bench
