#include "host/DatabaseSchema.h"

namespace vlm::host {

namespace {

constexpr std::string_view kMaster = R"sql(
CREATE TABLE Studi (IDStudio INTEGER PRIMARY KEY, IDASL INT, IDDistrettoASL INT, IDRegioneTariffario INT,
    RagioneSociale VARCHAR(100), Nome VARCHAR(100), IDEquipe INT);
CREATE TABLE ASL (IDASL INTEGER PRIMARY KEY, NumeroASL VARCHAR(3));
CREATE TABLE DistrettoASL (IDDistrettoASL INTEGER PRIMARY KEY, Codice VARCHAR(2));
CREATE TABLE Mese (IDMese INTEGER PRIMARY KEY, Mese VARCHAR(20));
CREATE TABLE TipoRevocaPaziente (IDTipoRevocaPaziente INTEGER PRIMARY KEY, TipoRevocaPaziente VARCHAR(50));
CREATE TABLE Comune (IDComune INTEGER PRIMARY KEY, Comune VARCHAR(100), CodiceISTAT VARCHAR(6),
    CodiceCatastale VARCHAR(4), Sigla VARCHAR(2), Cap VARCHAR(5));
CREATE TABLE Esenzione (IDEsenzione INTEGER PRIMARY KEY, IDTipoEsenzione INT);
CREATE TABLE TipoEsenzione (IDTipoEsenzione INTEGER PRIMARY KEY, TipoEsenzione VARCHAR(50), IDPosizioneTicket INT);
CREATE TABLE Patologia (IDPatologia INTEGER PRIMARY KEY, CodificaCompleta VARCHAR(10), Patologia VARCHAR(100));
CREATE INDEX IX_Comune_Nome ON Comune (Comune COLLATE NOCASE);
CREATE INDEX IX_Comune_CodiceCatastale ON Comune (rtrim(CodiceCatastale) COLLATE NOCASE);
)sql";

constexpr std::string_view kClinicPeople = R"sql(
CREATE TABLE Specialista (IDSpecialista INTEGER PRIMARY KEY, Cognome VARCHAR(50), Nome VARCHAR(50),
    CodiceRegionale VARCHAR(10));
CREATE TABLE BrancaPerStudio (IDBrancaPerStudio INTEGER PRIMARY KEY, BrancaPerStudio VARCHAR(50));
CREATE TABLE BrancaPerStudioPerSpecialista (IDBrancaPerStudio INT, IDSpecialista INT);
CREATE TABLE ParametroSpecialista (IDSpecialista INT, Nome VARCHAR(50), Valore VARCHAR(255));
CREATE TABLE MenuItem (IDMenuItem INTEGER PRIMARY KEY, IDTipoMenuItem INT);
CREATE TABLE Medico (IDMedico INTEGER PRIMARY KEY, Cognome VARCHAR(50), Nome VARCHAR(50), CodiceFiscale VARCHAR(16));
CREATE TABLE Paziente (IDPaziente INTEGER PRIMARY KEY, CodicePaziente VARCHAR(20), Cognome VARCHAR(50),
    Nome VARCHAR(50), DataNascita DATETIME, Sesso VARCHAR(1), CodiceFiscale VARCHAR(16),
    NumTesseraSanitaria VARCHAR(20), NumAssistito VARCHAR(20), DataScelta DATETIME, DataScadenza DATETIME,
    DataSospensione DATETIME, NonIscrittoASL SMALLINT, IDComuneNascita INT, Revocato SMALLINT, DataRevoca DATETIME,
    IDTipoRevocaPaziente INT, NoteRevoca VARCHAR(255), IDConsenso INT, CodRegMedicoFiducia VARCHAR(10),
    CodiceRegione VARCHAR(3), NumeroASL VARCHAR(3));
CREATE TABLE Residenza (IDResidenza INTEGER PRIMARY KEY, IDPaziente INT, IDTipoResidenza INT, IDComune INT,
    Indirizzo VARCHAR(100), Cap VARCHAR(5), Telefono VARCHAR(20));
CREATE TABLE EsenzionePerPaziente (IDEsenzionePerPaziente INTEGER PRIMARY KEY, IDEsenzione INT, IDPaziente INT,
    DataEsenzione DATETIME, Scadenza DATETIME);
CREATE TABLE vwPartecipazioneSpesa (IDEsenzione INTEGER PRIMARY KEY, CodiceIdentificativo VARCHAR(10),
    EtaMinEsenzione INT, EtaMaxEsenzione INT, IDCategoriaDiAppartenenza INT);
CREATE TABLE vwstudi (CodiceRegioneTariffario VARCHAR(3), NumeroASL VARCHAR(3));
CREATE TABLE BloccoRecord (Tabella VARCHAR(50), Chiave INT, Utente VARCHAR(50), Dal DATETIME);
)sql";

// The services of a document lie side by side in document order, so that an export reads them without jumping.
constexpr std::string_view kClinicDocuments = R"sql(
CREATE TABLE Parcella (IDParcella INTEGER PRIMARY KEY, DataAiFiniConvenzione DATETIME, ElaborataASL BIT,
    IDPosizioneContabile INT, IDTipoOperazione INT, IDSpecialista INT, IDBrancaPerStudio INT,
    ProgressivoRicetta SMALLINT, CodiceBranca SMALLINT, IDPaziente INT, IDMedico INT, IDPartecipazioneSpesa INT,
    IDTipoDocumento INT, PrefissoNumerazione VARCHAR(10), NumeroDocumento INT, DataDocumento DATETIME,
    NumRicetta1 VARCHAR(7), NumRicetta2 VARCHAR(9), DataRilascioRicetta DATETIME, IDPrioritaRicetta INT,
    IDTipoAccesso INT, IDTipoRichiesta INT, PrescrizioneGarantita BIT, DataPrenotazione DATETIME,
    DataContatto DATETIME, DataPrimaDisponibilita DATETIME, DataAssegnata DATETIME, DataRefertazione DATETIME,
    DataInizioCiclo DATETIME, TotTicketEuro MONEY, TotQuotaPazienteTicketEuro MONEY, QuotaRicettaEuro MONEY);
CREATE TABLE Prestazione (IDParcella INT NOT NULL, Riga SMALLINT NOT NULL, CodicePrestazioneTariffario VARCHAR(10),
    CodicePrestazione VARCHAR(10), Quantita SMALLINT, TotaleEuro MONEY, PrestazioneCiclica BIT,
    PRIMARY KEY (IDParcella, Riga)) WITHOUT ROWID;
)sql";

// Plain columns only: an expression would lose its declared type. The order of the joins is pinned (CROSS JOIN) so
// that what belongs to the document is looked up once a document and the services come last.
constexpr std::string_view kServicesView = R"sql(
CREATE VIEW VwPrestazionePerASL AS
SELECT Parcella.IDParcella AS IDParcella, Parcella.IDPaziente AS IDPaziente,
    Parcella.IDPartecipazioneSpesa AS IDPartecipazioneSpesa, Parcella.IDSpecialista AS IDSpecialista_Parcella,
    Parcella.IDBrancaPerStudio AS IDBrancaPerStudio_Parcella, Parcella.CodiceBranca AS CodiceBranca,
    Parcella.DataAiFiniConvenzione AS DataAiFiniConvenzione, Parcella.ElaborataASL AS ElaborataASL,
    Parcella.IDPosizioneContabile AS IDPosizioneContabile, Parcella.IDTipoOperazione AS IDTipoOperazione,
    Parcella.ProgressivoRicetta AS ProgressivoRicetta, Parcella.IDTipoDocumento AS IDTipoDocumento,
    Parcella.PrefissoNumerazione AS NP_PrefissoNumerazione, Parcella.NumeroDocumento AS NumeroDocumento,
    Parcella.DataDocumento AS DataDocumento, Parcella.NumRicetta1 AS NumRicetta1, Parcella.NumRicetta2 AS NumRicetta2,
    Parcella.DataRilascioRicetta AS DataRilascioRicetta, Parcella.IDPrioritaRicetta AS IDPrioritaRicetta,
    Parcella.IDTipoAccesso AS IDTipoAccesso, Parcella.IDTipoRichiesta AS IDTipoRichiesta,
    Parcella.PrescrizioneGarantita AS PrescrizioneGarantita, Parcella.DataPrenotazione AS DataPrenotazione,
    Parcella.DataContatto AS DataContatto, Parcella.DataPrimaDisponibilita AS DataPrimaDisponibilita,
    Parcella.DataAssegnata AS DataAssegnata, Parcella.DataRefertazione AS DataRefertazione,
    Parcella.DataInizioCiclo AS DataInizioCiclo, Parcella.TotTicketEuro AS TotTicketEuro,
    Parcella.TotQuotaPazienteTicketEuro AS TotQuotaPazienteTicketEuro, Parcella.QuotaRicettaEuro AS QuotaRicettaEuro,
    Specialista.CodiceRegionale AS CodiceRegionale, Medico.CodiceFiscale AS MED_CodiceFiscale,
    Paziente.Cognome AS PAZ_Cognome, Paziente.Nome AS PAZ_Nome, Paziente.CodiceFiscale AS PAZ_CodiceFiscale,
    Paziente.Sesso AS PAZ_Sesso, Paziente.DataNascita AS PAZ_DataNascita,
    Paziente.NumTesseraSanitaria AS NumTesseraSanitaria, Paziente.NumAssistito AS NumAssistito,
    Paziente.CodRegMedicoFiducia AS CodRegMedicoFiducia, Paziente.CodiceRegione AS CodiceRegione,
    Paziente.NumeroASL AS NumeroASL, Paziente.IDConsenso AS IDConsenso,
    vwPartecipazioneSpesa.CodiceIdentificativo AS PS_CodiceIdentificativo,
    vwPartecipazioneSpesa.IDCategoriaDiAppartenenza AS PS_IDCategoriaDiAppartenenza,
    Prestazione.CodicePrestazioneTariffario AS CodicePrestazioneTariffario,
    Prestazione.CodicePrestazione AS CodicePrestazione, Prestazione.Quantita AS Quantita,
    Prestazione.TotaleEuro AS TotaleEuro, Prestazione.PrestazioneCiclica AS PrestazioneCiclica
FROM Parcella
    CROSS JOIN Paziente ON Paziente.IDPaziente = Parcella.IDPaziente
    LEFT JOIN Specialista ON Specialista.IDSpecialista = Parcella.IDSpecialista
    LEFT JOIN Medico ON Medico.IDMedico = Parcella.IDMedico
    LEFT JOIN vwPartecipazioneSpesa ON vwPartecipazioneSpesa.IDEsenzione = Parcella.IDPartecipazioneSpesa
    CROSS JOIN Prestazione ON Prestazione.IDParcella = Parcella.IDParcella;
)sql";

constexpr std::string_view kClinicPrescriptions = R"sql(
CREATE TABLE RicettaFarmaci (IDRicettaFarmaci INTEGER PRIMARY KEY, IDBrancaPerStudio INT, IDSpecialista INT,
    DataRicetta DATETIME, IDPaziente INT, NumRicetta INT, IDTipoRichiesta INT, CodiceAIC_1 VARCHAR(10),
    IDPatologia_1 INT, Quantita_1 SMALLINT, CodiceAIC_2 VARCHAR(10), IDPatologia_2 INT, Quantita_2 SMALLINT,
    PrescrivibileSSN BIT);
CREATE TABLE StoredProcedure (Name VARCHAR(128), Ordinal INT, Body TEXT);
INSERT INTO StoredProcedure (Name, Ordinal, Body) VALUES ('SP_RicettaFarmaci2005', 1,
'SELECT RicettaFarmaci.IDRicettaFarmaci, RicettaFarmaci.NumRicetta, RicettaFarmaci.DataRicetta,
    Specialista.CodiceRegionale, Paziente.CodiceFiscale AS PAZ_CodiceFiscale, RicettaFarmaci.IDTipoRichiesta,
    RicettaFarmaci.CodiceAIC_1, RicettaFarmaci.IDPatologia_1, RicettaFarmaci.Quantita_1,
    RicettaFarmaci.CodiceAIC_2, RicettaFarmaci.IDPatologia_2, RicettaFarmaci.Quantita_2,
    RicettaFarmaci.PrescrivibileSSN
FROM RicettaFarmaci
    INNER JOIN Specialista ON Specialista.IDSpecialista = RicettaFarmaci.IDSpecialista
    INNER JOIN Paziente ON Paziente.IDPaziente = RicettaFarmaci.IDPaziente
WHERE RicettaFarmaci.IDRicettaFarmaci = ?1');
)sql";

// A project's states follow one another in the view: the export joins consecutive rows into one line.
constexpr std::string_view kClinicProjects = R"sql(
CREATE TABLE Progetto (IDProgetto INTEGER PRIMARY KEY, IDPaziente INT, IDSpecialista INT, Anno SMALLINT,
    Periodo SMALLINT, Protocollo INT, CodiceISTAT VARCHAR(6), CodiceIstatCittadinanza INT, ProvenienzaPaziente INT,
    Trattamento INT, CodicePatologia VARCHAR(5), NumeroAutorizzazione VARCHAR(6), DataAutorizzazione DATETIME,
    NumPrestAutor INT, DataInizio DATETIME, DataRevoca DATETIME, TipoDimissione INT, IDStatoProgetto INT);
CREATE TABLE StatoProgetto (IDProgetto INT NOT NULL, IDStatoPrestazioneErogata INT NOT NULL, NumeroAccessi INT,
    ImportoTotale MONEY, PRIMARY KEY (IDProgetto, IDStatoPrestazioneErogata)) WITHOUT ROWID;
CREATE VIEW VwPrestazioniASLME AS
SELECT Progetto.IDProgetto AS IDProgetto, Progetto.IDStatoProgetto AS IDStatoProgetto,
    vwstudi.NumeroASL AS NumeroASL, Specialista.CodiceRegionale AS CodiceRegionale, Progetto.Anno AS Anno,
    Progetto.Periodo AS Periodo, Progetto.Protocollo AS Protocollo, Paziente.Cognome AS Cognome,
    Paziente.Nome AS Nome, Paziente.CodiceFiscale AS CodiceFiscale, Paziente.Sesso AS Sesso,
    Paziente.DataNascita AS DataNascita, Progetto.CodiceISTAT AS CodiceISTAT,
    Paziente.NumeroASL AS NumeroAslPaziente, Progetto.CodiceIstatCittadinanza AS CodiceIstatCittadinanza,
    Progetto.ProvenienzaPaziente AS ProvenienzaPaziente, Paziente.DataScelta AS DataScelta,
    Progetto.Trattamento AS Trattamento, Progetto.CodicePatologia AS CodicePatologia,
    Progetto.NumeroAutorizzazione AS NumeroAutorizzazione, Progetto.DataAutorizzazione AS DataAutorizzazione,
    Progetto.NumPrestAutor AS NumPrestAutor, Progetto.DataRevoca AS DataRevoca,
    Progetto.TipoDimissione AS TipoDimissione, StatoProgetto.IDStatoPrestazioneErogata AS IDStatoPrestazioneErogata,
    StatoProgetto.NumeroAccessi AS NumeroAccessi, StatoProgetto.ImportoTotale AS ImportoTotale,
    Progetto.DataInizio AS DataInizio
FROM Progetto
    CROSS JOIN StatoProgetto ON StatoProgetto.IDProgetto = Progetto.IDProgetto
    CROSS JOIN Paziente ON Paziente.IDPaziente = Progetto.IDPaziente
    LEFT JOIN Specialista ON Specialista.IDSpecialista = Progetto.IDSpecialista
    LEFT JOIN vwstudi
ORDER BY Progetto.IDProgetto, StatoProgetto.IDStatoPrestazioneErogata;
)sql";

// The first index is the order in which a region wants its services: by branch, moment and document. The moment is
// compared as a date because the column holds days with and without a time. The second answers the patient's town
// from the index alone. Those of Paziente find the patient of a list's line: codes compare without regard to case and
// to blanks at their end.
constexpr std::string_view kClinicIndices = R"sql(
CREATE INDEX IX_Parcella_Esportazione ON Parcella (CodiceBranca, datetime(DataAiFiniConvenzione), IDParcella);
CREATE INDEX IX_Residenza_Paziente ON Residenza (IDPaziente, IDTipoResidenza, IDComune);
CREATE INDEX IX_EsenzionePerPaziente_Paziente ON EsenzionePerPaziente (IDPaziente, IDEsenzione);
CREATE INDEX IX_Paziente_NumTesseraSanitaria ON Paziente (rtrim(NumTesseraSanitaria) COLLATE NOCASE);
CREATE INDEX IX_Paziente_NumAssistito ON Paziente (rtrim(NumAssistito) COLLATE NOCASE);
CREATE INDEX IX_Paziente_CodiceFiscale ON Paziente (rtrim(CodiceFiscale) COLLATE NOCASE);
CREATE INDEX IX_RicettaFarmaci_Data ON RicettaFarmaci (IDBrancaPerStudio, IDSpecialista, DataRicetta);
)sql";

}  // namespace

std::string_view MasterSchema() { return kMaster; }

std::string ClinicSchema() {
    std::string script;
    for (std::string_view part :
         {kClinicPeople, kClinicDocuments, kServicesView, kClinicPrescriptions, kClinicProjects})
        script += part;
    return script;
}

std::string_view ClinicIndices() { return kClinicIndices; }

}  // namespace vlm::host
