#include "support/ServiceClinic.h"

#include <sstream>

#include "databases/DatabaseSchema.h"
#include "databases/SqliteWriter.h"
#include "host/AslHost.h"
#include "sqlite/SqliteConnection.h"
#include "support/RowText.h"
#include "support/Words.h"
#include "values/Number.h"

namespace vlm::test {

namespace {

/// The services view as a table: what the records read and the selection names.
constexpr const char* kServices = R"sql(
CREATE TABLE VwPrestazionePerASL (
    IDPaziente INT DEFAULT 1, IDParcella INT DEFAULT 1, IDPartecipazioneSpesa INT DEFAULT 5,
    IDSpecialista_Parcella INT DEFAULT 7, IDBrancaPerStudio_Parcella INT DEFAULT 1,
    DataAiFiniConvenzione DATETIME DEFAULT '2011-03-15', ElaborataASL BIT DEFAULT 0,
    IDPosizioneContabile INT DEFAULT 2, IDTipoOperazione INT DEFAULT 1, CodiceRegione VARCHAR(3) DEFAULT '190',
    CodiceRegionale VARCHAR(10) DEFAULT '123456', CodiceBranca VARCHAR(3) DEFAULT '08',
    MED_CodiceFiscale VARCHAR(16) DEFAULT 'MDCFSC60A01F205X', CodRegMedicoFiducia VARCHAR(10) DEFAULT '77001',
    PAZ_Cognome VARCHAR(50) DEFAULT 'Nicolò', PAZ_Nome VARCHAR(50) DEFAULT 'Maria Grazia',
    PAZ_CodiceFiscale VARCHAR(16) DEFAULT 'NCLMGR70E41G273K', PAZ_Sesso VARCHAR(1) DEFAULT 'F',
    PAZ_DataNascita DATETIME DEFAULT '1970-05-01', NumeroASL VARCHAR(3) DEFAULT '206',
    NumRicetta1 VARCHAR(10) DEFAULT '1234567', NumRicetta2 VARCHAR(10) DEFAULT '890123456',
    CodicePrestazioneTariffario VARCHAR(10) DEFAULT '89.7', CodicePrestazione VARCHAR(10) DEFAULT 'V100',
    Quantita SMALLINT DEFAULT 2, PS_CodiceIdentificativo VARCHAR(10) DEFAULT 'E02',
    TotQuotaPazienteTicketEuro MONEY DEFAULT 3, QuotaRicettaEuro MONEY DEFAULT 0.5, TotaleEuro MONEY DEFAULT 20.66,
    NumeroDocumento INT DEFAULT 125, DataDocumento DATETIME DEFAULT '2011-03-16 10:20:00', IDConsenso INT DEFAULT 2,
    IDTipoDocumento INT DEFAULT 1, NP_PrefissoNumerazione VARCHAR(10) DEFAULT 'A',
    DataPrenotazione DATETIME DEFAULT '2011-02-28', NumAssistito VARCHAR(20) DEFAULT 'ass-4711',
    NumTesseraSanitaria VARCHAR(20) DEFAULT '80380001234567890123', DataRilascioRicetta DATETIME DEFAULT '2011-02-27',
    ProgressivoRicetta SMALLINT DEFAULT NULL, TotTicketEuro MONEY DEFAULT 41.32,
    PS_IDCategoriaDiAppartenenza INT DEFAULT 1, IDPrioritaRicetta INT DEFAULT 2, IDTipoAccesso INT DEFAULT 1,
    IDTipoRichiesta INT DEFAULT 3, PrescrizioneGarantita BIT DEFAULT 1, DataContatto DATETIME DEFAULT '2011-03-01',
    DataPrimaDisponibilita DATETIME DEFAULT '2011-03-10', DataAssegnata DATETIME DEFAULT '2011-03-14',
    DataRefertazione DATETIME DEFAULT '2011-03-16', DataInizioCiclo DATETIME DEFAULT '2011-03-02',
    PrestazioneCiclica BIT DEFAULT 1);
)sql";

constexpr const char* kMaster = R"sql(
INSERT INTO Mese (IDMese, Mese) VALUES (1,'gennaio'),(2,'febbraio'),(3,'marzo'),(4,'aprile'),(5,'maggio'),
    (6,'giugno'),(7,'luglio'),(8,'agosto'),(9,'settembre'),(10,'ottobre'),(11,'novembre'),(12,'dicembre');
INSERT INTO Comune (IDComune, Comune, CodiceISTAT) VALUES (9, 'Palermo', '082053');
INSERT INTO Esenzione VALUES (5, 2);
INSERT INTO TipoEsenzione (IDTipoEsenzione, IDPosizioneTicket) VALUES (2, 3);
)sql";

constexpr const char* kClinic = R"sql(
CREATE TABLE Specialista (IDSpecialista INTEGER PRIMARY KEY, Cognome VARCHAR, Nome VARCHAR, CodiceRegionale VARCHAR);
CREATE TABLE BrancaPerStudio (IDBrancaPerStudio INTEGER PRIMARY KEY, BrancaPerStudio VARCHAR);
CREATE TABLE BrancaPerStudioPerSpecialista (IDBrancaPerStudio INT, IDSpecialista INT);
CREATE TABLE Residenza (IDResidenza INTEGER PRIMARY KEY, IDPaziente INT, IDTipoResidenza INT, IDComune INT);
CREATE TABLE Parcella (IDParcella INTEGER PRIMARY KEY, DataAiFiniConvenzione DATETIME, ElaborataASL BIT,
    IDPosizioneContabile INT, IDTipoOperazione INT, IDSpecialista INT, IDBrancaPerStudio INT,
    ProgressivoRicetta SMALLINT);
INSERT INTO BrancaPerStudio VALUES (1, 'Cardiologia'), (2, 'Oculistica');
INSERT INTO Specialista VALUES (7, 'Rossi', 'Anna', '700007'), (8, 'Bianchi', 'Ugo', '800008'),
    (9, 'Verdi', 'Pia', '900009');
INSERT INTO BrancaPerStudioPerSpecialista VALUES (1, 7), (1, 8), (2, 9);
INSERT INTO Residenza VALUES (1, 1, 2, 8), (2, 1, 1, 9);
)sql";

std::string DatabaseOf(int clinic) { return std::string("Studio").append(text::FormatZeros(clinic, 4)); }

}  // namespace

Lines HostRun::Of(const std::string& kind) const {
    Lines found;
    for (const std::string& event : events) {
        if (event.rfind("{\"event\":\"" + kind + "\"", 0) == 0) found.push_back(event);
    }
    return found;
}

ServiceClinic::ServiceClinic()
    : data(folder.Folder("data")),
      work(folder.Folder("work")),
      out(folder.Folder("out")),
      settings(folder / "set.ini") {}

void ServiceClinic::Create(const std::vector<SqlRow>& services) {
    host::SqliteWriter master(data + "/Aldra.sqlite");
    master.CreateTables(host::MasterSchema());
    master.CreateIndices(host::MasterSchema());
    master.Execute(kMaster);
    master.Execute("INSERT INTO Studi (IDStudio, IDASL, IDDistrettoASL, IDRegioneTariffario) VALUES (" +
                   std::to_string(clinic) + ", 1, 2, " + std::to_string(idRegioneTariffario) +
                   "); INSERT INTO ASL VALUES (1, " + numeroASL + "); INSERT INTO DistrettoASL VALUES (2, " +
                   codiceDistretto + ");");
    if (!masterSql.empty()) master.Execute(masterSql);
    master.Commit();

    host::SqliteWriter database(data + "/" + DatabaseOf(clinic) + ".sqlite");
    database.Execute(kClinic);
    database.Execute(kServices);
    for (const SqlRow& service : services) database.Execute(InsertionInto("VwPrestazionePerASL", service));
    database.Execute(
        "INSERT OR IGNORE INTO Parcella SELECT IDParcella, DataAiFiniConvenzione, ElaborataASL, IDPosizioneContabile,"
        " IDTipoOperazione, IDSpecialista_Parcella, IDBrancaPerStudio_Parcella, NULL FROM VwPrestazionePerASL;");
    // The view of a real clinic shows what is marked in the document.
    database.Execute(
        "CREATE TRIGGER Mostra AFTER UPDATE OF ElaborataASL ON Parcella BEGIN UPDATE VwPrestazionePerASL SET"
        " ElaborataASL = NEW.ElaborataASL WHERE IDParcella = NEW.IDParcella; END;");
    if (!extraSql.empty()) database.Execute(extraSql);
    database.Commit();
}

Lines ServiceClinic::Arguments(const std::string& component) const {
    return {
        "--data", data, "--clinic", std::to_string(clinic), "--work", work, "--settings", settings, "--today", today,
        "--wait", "0",  component};
}

HostRun RunReferenceHost(const Lines& arguments) {
    std::ostringstream output;
    std::ostringstream errors;
    const int status = host::RunHost(arguments, output, errors, false);
    return {status, LinesOf(output.str()), errors.str()};
}

HostRun ServiceClinic::Run(const Lines& steps, const std::string& component) const {
    return RunReferenceHost(Arguments(component) + steps);
}

void ServiceClinic::CreateDatabase(int number, const std::string& sql) const {
    host::SqliteWriter database(data + "/" + DatabaseOf(number) + ".sqlite");
    database.Execute(sql);
    database.Commit();
}

vlm::data::ConnectionPtr ServiceClinic::Connect() const {
    return vlm::data::SqliteConnection::Connect("Provider=SQLite;Data Source=" + data +
                                                ";Initial Catalog=" + DatabaseOf(clinic));
}

Lines ServiceClinic::Query(const std::string& sql) const { return data::testing::RowTexts(*Connect()->Open(sql)); }

}  // namespace vlm::test
