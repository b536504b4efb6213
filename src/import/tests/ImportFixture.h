#pragma once

#include <gtest/gtest.h>
#include <set>
#include <string>
#include <vector>

#include "import/ASLImportPatient.h"
#include "support/ArchiveHost.h"
#include "support/Caught.h"
#include "support/Words.h"
#include "values/CodePage1252.h"

namespace vlm::test {

/// The fixed entries of the import dialog's list, each with a comma behind it.
inline constexpr const char* kAuthorityNames =
    "ABRUZZO,BASILICATA,BOLZANO,CALABRIA,CAMPANIA,EMILIA ROMAGNA,FRIULI VENEZIA GIULIA,LAZIO,LIGURIA,LOMBARDIA,MARCHE,"
    "MOLISE,PIEMONTE,PUGLIA,SARDEGNA,SICILIA,TOSCANA,TRENTINO ALTO ADIGE,TRENTO,UMBRIA,VALLE D'AOSTA,VENETO,Catania,"
    "Caltanissetta,Savona,Palermo,Ragusa,Sassari,Enna,Napoli,";

/// The import component over an archive of a few patients. Comuni are those of ArchiveHost.
class ImportTest : public ::testing::Test {
protected:
    static constexpr const char* kPatients =
        "INSERT INTO Paziente (IDPaziente, Cognome, NumTesseraSanitaria, NumAssistito, CodiceFiscale) VALUES"
        " (7, 'Conti', 'T7', 'A7', 'CNTNNA70A41B639Q'), (3, 'Doppio', 'T3', NULL, 'DPPDPP70A01H501X'),"
        " (9, 'Doppia', 't3 ', 'T7', 'dppdpp70a01h501x'), (5, 'Senza', '', '', NULL);";

    explicit ImportTest(const std::string& clinicSql = kPatients) : host(clinicSql) {
        component.SetConnection(host.connection);
        component.ReadingFile = [this](std::int32_t percent) { progress.push_back(percent); };
    }

    /// A source in the folder of the test, from UTF-8 as Windows ANSI.
    std::string Source(const std::string& text, const std::string& name = "elenco.txt") const {
        return Bytes(text::ToAnsi(text), name);
    }
    std::string Bytes(const std::string& bytes, const std::string& name = "elenco.txt") const {
        WriteBytes(host.folder / name, bytes);
        return host.folder / name;
    }

    /// For each element its cells that are not Null, by their names: "Selezionato=True|Codice=T7|..."; all columns or
    /// those wanted.
    static Lines ElementsOf(const ElementListPtr& elements, const std::set<std::string_view>& wanted = {}) {
        Lines shown;
        if (!elements) return {"<nothing>"};
        for (elements->MoveFirst(); !elements->AtEnd(); elements->MoveNext()) {
            std::string& row = shown.emplace_back();
            for (int column = 0; column < elements->FieldCount(); ++column) {
                const bool isWanted = wanted.empty() || wanted.count(elements->FieldName(column)) != 0;
                if (!isWanted || elements->IsNull(column)) continue;
                row.append(row.empty() ? "" : "|").append(elements->FieldName(column)).append("=");
                row.append(elements->TextOf(column));
            }
        }
        return shown;
    }

    /// What was told since the last time.
    std::string Progress() {
        std::string all;
        for (const std::int32_t percent : std::exchange(progress, {})) all += std::to_string(percent) + " ";
        return all;
    }

    ArchiveHost host;
    Library library{host.Services()};
    ASLImportPatient component{library};
    std::vector<std::int32_t> progress;
};

}  // namespace vlm::test
