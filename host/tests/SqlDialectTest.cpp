#include <algorithm>
#include <gtest/gtest.h>

#include "databases/ClinicSchema.h"
#include "databases/MasterSchema.h"
#include "databases/SqliteDialect.h"
#include "databases/TSqlDialect.h"

namespace vlm::host {
namespace {

/// The one statement that begins so.
std::string Of(const std::vector<std::string>& statements, const std::string& beginning) {
    std::string found;
    for (const std::string& each : statements)
        if (each.starts_with(beginning)) found += each;
    return found;
}

TEST(SqlDialect, TablesHaveTheirKeyAsTheEngineWantsIt) {
    const std::vector<std::string> lite = SqliteDialect().Tables(ClinicSchema());
    const std::vector<std::string> server = TSqlDialect().Tables(ClinicSchema());
    EXPECT_EQ(Of(lite, "CREATE TABLE Residenza "), R"(CREATE TABLE Residenza (
    IDResidenza INTEGER PRIMARY KEY,
    IDPaziente INT,
    IDTipoResidenza INT,
    IDComune INT,
    Indirizzo VARCHAR(100),
    Cap VARCHAR(5),
    Telefono VARCHAR(20)))");
    EXPECT_EQ(Of(server, "CREATE TABLE Residenza "), R"(CREATE TABLE Residenza (
    IDResidenza INT NOT NULL,
    IDPaziente INT NULL,
    IDTipoResidenza INT NULL,
    IDComune INT NULL,
    Indirizzo VARCHAR(100) NULL,
    Cap VARCHAR(5) NULL,
    Telefono VARCHAR(20) NULL,
    CONSTRAINT PK_Residenza PRIMARY KEY (IDResidenza)))");
    EXPECT_EQ(Of(lite, "CREATE TABLE Prestazione "), R"(CREATE TABLE Prestazione (
    IDParcella INT NOT NULL,
    Riga SMALLINT NOT NULL,
    CodicePrestazioneTariffario VARCHAR(10),
    CodicePrestazione VARCHAR(10),
    Quantita SMALLINT,
    TotaleEuro MONEY,
    PrestazioneCiclica BIT,
    PRIMARY KEY (IDParcella, Riga)) WITHOUT ROWID)");
    EXPECT_EQ(Of(server, "CREATE TABLE Prestazione "), R"(CREATE TABLE Prestazione (
    IDParcella INT NOT NULL,
    Riga SMALLINT NOT NULL,
    CodicePrestazioneTariffario VARCHAR(10) NULL,
    CodicePrestazione VARCHAR(10) NULL,
    Quantita SMALLINT NULL,
    TotaleEuro MONEY NULL,
    PrestazioneCiclica BIT NULL,
    CONSTRAINT PK_Prestazione PRIMARY KEY (IDParcella, Riga)))");
    EXPECT_EQ(Of(lite, "CREATE TABLE BloccoRecord "), R"(CREATE TABLE BloccoRecord (
    Tabella VARCHAR(50) NOT NULL,
    Chiave INT NOT NULL,
    Utente VARCHAR(50),
    Dal DATETIME,
    PRIMARY KEY (Tabella, Chiave)) WITHOUT ROWID)");
    EXPECT_EQ(Of(server, "CREATE TABLE BloccoRecord "), R"(CREATE TABLE BloccoRecord (
    Tabella VARCHAR(50) NOT NULL,
    Chiave INT NOT NULL,
    Utente VARCHAR(50) NULL,
    Dal DATETIME NULL,
    CONSTRAINT PK_BloccoRecord PRIMARY KEY (Tabella, Chiave)))");
}

std::string Without(std::string text, const std::string& part, const std::string& instead = {}) {
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + instead.size()))
        text.replace(at, part.size(), instead);
    return text;
}

TEST(SqlDialect, AnOrderedViewIsLimitedOnTheServer) {
    const std::string expected = R"(CREATE VIEW VwPrestazioniASLME AS
SELECT TOP (2147483647) Progetto.IDProgetto AS IDProgetto,
    Progetto.IDStatoProgetto AS IDStatoProgetto,
    vwstudi.NumeroASL AS NumeroASL,
    Specialista.CodiceRegionale AS CodiceRegionale,
    Progetto.Anno AS Anno,
    Progetto.Periodo AS Periodo,
    Progetto.Protocollo AS Protocollo,
    Paziente.Cognome AS Cognome,
    Paziente.Nome AS Nome,
    Paziente.CodiceFiscale AS CodiceFiscale,
    Paziente.Sesso AS Sesso,
    Paziente.DataNascita AS DataNascita,
    Progetto.CodiceISTAT AS CodiceISTAT,
    Paziente.NumeroASL AS NumeroAslPaziente,
    Progetto.CodiceIstatCittadinanza AS CodiceIstatCittadinanza,
    Progetto.ProvenienzaPaziente AS ProvenienzaPaziente,
    Paziente.DataScelta AS DataScelta,
    Progetto.Trattamento AS Trattamento,
    Progetto.CodicePatologia AS CodicePatologia,
    Progetto.NumeroAutorizzazione AS NumeroAutorizzazione,
    Progetto.DataAutorizzazione AS DataAutorizzazione,
    Progetto.NumPrestAutor AS NumPrestAutor,
    Progetto.DataRevoca AS DataRevoca,
    Progetto.TipoDimissione AS TipoDimissione,
    StatoProgetto.IDStatoPrestazioneErogata AS IDStatoPrestazioneErogata,
    StatoProgetto.NumeroAccessi AS NumeroAccessi,
    StatoProgetto.ImportoTotale AS ImportoTotale,
    Progetto.DataInizio AS DataInizio
FROM Progetto
    INNER JOIN StatoProgetto ON StatoProgetto.IDProgetto = Progetto.IDProgetto
    INNER JOIN Paziente ON Paziente.IDPaziente = Progetto.IDPaziente
    LEFT JOIN Specialista ON Specialista.IDSpecialista = Progetto.IDSpecialista
    LEFT JOIN vwstudi ON 1 = 1
ORDER BY Progetto.IDProgetto, StatoProgetto.IDStatoPrestazioneErogata)";
    const std::string view = "CREATE VIEW VwPrestazioniASLME ";
    EXPECT_EQ(Of(TSqlDialect().Tables(ClinicSchema()), view), expected);
    EXPECT_EQ(Of(SqliteDialect().Tables(ClinicSchema()), view),
              Without(Without(expected, " TOP (2147483647)"), "INNER JOIN", "CROSS JOIN"));
    EXPECT_EQ(Of(TSqlDialect().Tables(ClinicSchema()), "CREATE VIEW VwPrestazionePerASL ").find("TOP"),
              std::string::npos);
}

TEST(SqlDialect, TheProcedureIsARowOrAProcedure) {
    const std::string select = R"(SELECT RicettaFarmaci.IDRicettaFarmaci AS IDRicettaFarmaci,
    RicettaFarmaci.NumRicetta AS NumRicetta,
    RicettaFarmaci.DataRicetta AS DataRicetta,
    Specialista.CodiceRegionale AS CodiceRegionale,
    Paziente.CodiceFiscale AS PAZ_CodiceFiscale,
    RicettaFarmaci.IDTipoRichiesta AS IDTipoRichiesta,
    RicettaFarmaci.CodiceAIC_1 AS CodiceAIC_1,
    RicettaFarmaci.IDPatologia_1 AS IDPatologia_1,
    RicettaFarmaci.Quantita_1 AS Quantita_1,
    RicettaFarmaci.CodiceAIC_2 AS CodiceAIC_2,
    RicettaFarmaci.IDPatologia_2 AS IDPatologia_2,
    RicettaFarmaci.Quantita_2 AS Quantita_2,
    RicettaFarmaci.PrescrivibileSSN AS PrescrivibileSSN
FROM RicettaFarmaci
    INNER JOIN Specialista ON Specialista.IDSpecialista = RicettaFarmaci.IDSpecialista
    INNER JOIN Paziente ON Paziente.IDPaziente = RicettaFarmaci.IDPaziente
WHERE RicettaFarmaci.IDRicettaFarmaci = )";
    EXPECT_EQ(TSqlDialect().Tables(ClinicSchema()).back(),
              "CREATE PROCEDURE SP_RicettaFarmaci2005 @IDRicetta INT AS\n" + select + "@IDRicetta");
    EXPECT_EQ(
        SqliteDialect().Tables(ClinicSchema()).back(),
        "INSERT INTO StoredProcedure (Name, Ordinal, Body) VALUES ('SP_RicettaFarmaci2005', 1, '" + select + "?1')");
    EXPECT_EQ(Of(TSqlDialect().Tables(ClinicSchema()), "CREATE TABLE StoredProcedure"), "");
    EXPECT_EQ(Of(SqliteDialect().Tables(MasterSchema()), "CREATE TABLE StoredProcedure"), "");
}

TEST(SqlDialect, IndicesAnswerTheComparisonsOfTheirEngine) {
    const struct {
        const char* index;
        const char* lite;
        const char* server;
    } cases[] = {
        {"IX_Comune_Nome ON Comune (", "Comune COLLATE NOCASE)", "Comune)"},
        {"IX_Comune_CodiceCatastale ON Comune (", "rtrim(CodiceCatastale) COLLATE NOCASE)", "CodiceCatastale)"},
        {"IX_Parcella_Esportazione ON Parcella (", "CodiceBranca, datetime(DataAiFiniConvenzione), IDParcella)",
         "CodiceBranca, DataAiFiniConvenzione, IDParcella)"},
        {"IX_Residenza_Paziente ON Residenza (", "IDPaziente, IDTipoResidenza, IDComune)",
         "IDPaziente, IDTipoResidenza, IDComune)"},
        {"IX_Paziente_CodiceFiscale ON Paziente (", "rtrim(CodiceFiscale) COLLATE NOCASE)", "CodiceFiscale)"},
        {"IX_RicettaFarmaci_Data ON RicettaFarmaci (", "IDBrancaPerStudio, IDSpecialista, DataRicetta)",
         "IDBrancaPerStudio, IDSpecialista, DataRicetta)"},
    };
    for (const auto& each : cases) {
        const std::string beginning = std::string("CREATE INDEX ") + each.index;
        for (const bool server : {false, true}) {
            std::vector<std::string> all;
            for (const DatabaseSchema* schema : {&MasterSchema(), &ClinicSchema()})
                for (const std::string& one :
                     server ? TSqlDialect().Indices(*schema) : SqliteDialect().Indices(*schema))
                    all.push_back(one);
            EXPECT_EQ(Of(all, beginning), beginning + (server ? each.server : each.lite));
            EXPECT_EQ(all.size(), 9u);
        }
    }
}

}  // namespace
}  // namespace vlm::host
