#include <gtest/gtest.h>
#include <map>

#include "DemoDatabase.h"
#include "demo/DemoClinic.h"
#include "support/TempFolder.h"

namespace vlm::host {
namespace {

class DemoSchema : public testing::Test {
protected:
    static void SetUpTestSuite() {
        temp_ = new test::TempFolder;
        CreateDemo(temp_->Path(), *Date::FromYmd(2011, 4, 15));
    }
    static void TearDownTestSuite() { delete temp_; }

    DemoDatabase clinic_{temp_->Path(), "Studio0012"};

private:
    static inline test::TempFolder* temp_ = nullptr;
};

using Types = std::map<std::string, std::vector<std::string>>;

void ExpectTypes(DemoDatabase& clinic, const std::string& view, const Types& expected) {
    std::map<std::string, std::string> actual;
    for (const auto& [name, type] : clinic.Columns("SELECT * FROM " + view)) {
        EXPECT_NE(type, "") << view << "." << name << " has no declared type";
        EXPECT_TRUE(actual.emplace(name, type.substr(0, type.find('('))).second) << name << " twice";
    }
    for (const auto& [type, names] : expected)
        for (const std::string& name : names) EXPECT_EQ(actual[name], type) << view << "." << name;
}

TEST_F(DemoSchema, ViewsDeliverTheirColumnsWithDeclaredTypes) {
    ExpectTypes(
        clinic_, "VwPrestazionePerASL",
        {{"INT",
          {"IDPaziente", "IDPartecipazioneSpesa", "IDSpecialista_Parcella", "IDBrancaPerStudio_Parcella",
           "IDPosizioneContabile", "IDTipoOperazione", "NumeroDocumento", "IDTipoDocumento", "IDConsenso",
           "IDPrioritaRicetta", "IDTipoAccesso", "IDTipoRichiesta", "PS_IDCategoriaDiAppartenenza"}},
         {"INTEGER", {"IDParcella"}},
         {"SMALLINT", {"CodiceBranca", "ProgressivoRicetta", "Quantita"}},
         {"BIT", {"ElaborataASL", "PrestazioneCiclica", "PrescrizioneGarantita"}},
         {"MONEY", {"TotaleEuro", "TotTicketEuro", "TotQuotaPazienteTicketEuro", "QuotaRicettaEuro"}},
         {"DATETIME",
          {"DataAiFiniConvenzione", "DataDocumento", "DataPrenotazione", "PAZ_DataNascita", "DataRilascioRicetta",
           "DataContatto", "DataPrimaDisponibilita", "DataAssegnata", "DataRefertazione", "DataInizioCiclo"}},
         {"VARCHAR",
          {"CodiceRegione", "CodiceRegionale", "MED_CodiceFiscale", "CodRegMedicoFiducia", "PAZ_Cognome", "PAZ_Nome",
           "PAZ_CodiceFiscale", "PAZ_Sesso", "NumeroASL", "NumRicetta1", "NumRicetta2", "CodicePrestazioneTariffario",
           "CodicePrestazione", "PS_CodiceIdentificativo", "NP_PrefissoNumerazione", "NumAssistito",
           "NumTesseraSanitaria"}}});
    ExpectTypes(clinic_, "VwPrestazioniASLME",
                {{"INT",
                  {"Protocollo", "CodiceIstatCittadinanza", "ProvenienzaPaziente", "Trattamento", "NumPrestAutor",
                   "TipoDimissione", "IDStatoPrestazioneErogata", "NumeroAccessi", "IDStatoProgetto"}},
                 {"SMALLINT", {"Anno", "Periodo"}},
                 {"MONEY", {"ImportoTotale"}},
                 {"DATETIME", {"DataNascita", "DataScelta", "DataAutorizzazione", "DataRevoca", "DataInizio"}},
                 {"VARCHAR",
                  {"NumeroASL", "CodiceRegionale", "Cognome", "Nome", "CodiceFiscale", "Sesso", "CodiceISTAT",
                   "NumeroAslPaziente", "CodicePatologia", "NumeroAutorizzazione"}}});
}

/// The order of a region's file has to come from an index: sorting a million services first costs more than the rest.
TEST_F(DemoSchema, ServicesComeInTheirOrderWithoutSorting) {
    const std::string selection =
        "SELECT VwPrestazionePerASL.*, Aldra.Comune.CodiceISTAT, Aldra.TipoEsenzione.IDPosizioneTicket"
        " FROM VwPrestazionePerASL LEFT JOIN Residenza ON (VwPrestazionePerASL.IDPaziente = Residenza.IDPaziente"
        " AND Residenza.IDTipoResidenza = 1) LEFT JOIN Aldra.Comune ON Residenza.IDComune = Aldra.Comune.IDComune"
        " LEFT JOIN Aldra.Esenzione ON VwPrestazionePerASL.IDPartecipazioneSpesa = Aldra.Esenzione.IDEsenzione"
        " LEFT JOIN Aldra.TipoEsenzione ON Aldra.Esenzione.IDTipoEsenzione = Aldra.TipoEsenzione.IDTipoEsenzione"
        " WHERE ((CAST(substr(DataAiFiniConvenzione,1,4) AS INTEGER) = 2011 AND"
        " CAST(substr(DataAiFiniConvenzione,6,2) AS INTEGER) = 3 AND (ElaborataASL = 0 OR ElaborataASL IS NULL)) OR"
        " (DataAiFiniConvenzione < '2011-03-01' AND IDPosizioneContabile <> 1 AND"
        " (ElaborataASL IS NULL OR ElaborataASL = 0)))";
    for (const char* filter : {"", " AND IDBrancaPerStudio_Parcella = 1", " AND IDSpecialista_Parcella = 2"}) {
        for (const auto& step : clinic_.Rows("EXPLAIN QUERY PLAN " + selection + filter +
                                             " ORDER BY CodiceBranca, datetime(DataAiFiniConvenzione), IDParcella")) {
            EXPECT_EQ(step[3].find("TEMP B-TREE"), std::string::npos) << step[3];
            EXPECT_EQ(step[3].find("AUTOMATIC"), std::string::npos) << step[3];
            const bool whole = step[3].starts_with("SCAN");
            EXPECT_TRUE(!whole || step[3].find("Parcella USING INDEX") != std::string::npos) << step[3];
        }
    }
}

TEST_F(DemoSchema, ThePrescriptionProcedureGivesOneCompleteRow) {
    const auto body = clinic_.Rows("SELECT Body FROM StoredProcedure WHERE Name = 'SP_RicettaFarmaci2005'");
    ASSERT_EQ(body.size(), 1u);
    std::map<std::string, std::size_t> ordinal;
    for (const auto& [name, type] : clinic_.Columns(body[0][0])) {
        EXPECT_NE(type, "") << name;
        ordinal.emplace(name, ordinal.size());
    }
    const auto keys = clinic_.Rows("SELECT IDRicettaFarmaci FROM RicettaFarmaci WHERE IDRicettaFarmaci % 20 = 0");
    ASSERT_FALSE(keys.empty());
    for (const auto& key : keys) {
        const auto rows = clinic_.Rows(body[0][0], std::stoi(key[0]));
        ASSERT_EQ(rows.size(), 1u);
        for (const char* name : {"CodiceRegionale", "PAZ_CodiceFiscale", "DataRicetta", "Quantita_1", "Quantita_2",
                                 "NumRicetta", "PrescrivibileSSN", "IDTipoRichiesta", "CodiceAIC_1"})
            EXPECT_NE(rows[0].at(ordinal.at(name)), "NULL") << name << " of " << key[0];
        EXPECT_TRUE(ordinal.contains("IDPatologia_1") && ordinal.contains("IDPatologia_2"));
    }
    for (const char* left : {"PrescrivibileSSN = 0", "NumRicetta = 0"})
        EXPECT_GT(clinic_.Number(std::string("SELECT COUNT(*) FROM RicettaFarmaci WHERE ") + left), 0) << left;
}

TEST_F(DemoSchema, TheStatesOfAProjectFollowOneAnother) {
    std::string previous;
    int groups = 0;
    for (const auto& row : clinic_.Rows("SELECT NumeroAutorizzazione FROM VwPrestazioniASLME WHERE Periodo > 0")) {
        if (row[0] != previous) ++groups;
        previous = row[0];
    }
    EXPECT_EQ(groups, clinic_.Number("SELECT COUNT(*) FROM Progetto"));
    EXPECT_GT(clinic_.Number("SELECT COUNT(*) FROM StatoProgetto"), groups);
}

/// Other tools fill and change the host's tables too.
TEST_F(DemoSchema, RowsCanBeAddedAndChangedFromOutside) {
    clinic_.Rows(
        "INSERT INTO Parcella (IDParcella, DataAiFiniConvenzione, IDPaziente, CodiceBranca)"
        " VALUES (900001, '2011-03-31 10:00:00', 1, 2)");
    clinic_.Rows("INSERT INTO Prestazione (IDParcella, Riga, TotaleEuro) VALUES (900001, 1, 12.5)");
    clinic_.Rows(
        "UPDATE Parcella SET ElaborataASL = 1, DataAiFiniConvenzione = '2011-03-30' WHERE IDParcella = 900001");
    EXPECT_EQ(clinic_.Rows("SELECT DataAiFiniConvenzione, ElaborataASL, TotaleEuro FROM VwPrestazionePerASL WHERE"
                           " IDParcella = 900001"),
              (std::vector<std::vector<std::string>>{{"2011-03-30", "1", "12.5"}}));
    EXPECT_EQ(clinic_.Rows("PRAGMA main.integrity_check")[0][0], "ok");
    clinic_.Rows("DELETE FROM Prestazione WHERE IDParcella = 900001");
    clinic_.Rows("DELETE FROM Parcella WHERE IDParcella = 900001");
}

}  // namespace
}  // namespace vlm::host
