#include "databases/DatabaseSchema.h"

namespace vlm::host {

namespace {

std::vector<Table> People() {
    return {
        {"Specialista", {Key("IDSpecialista"), Text("Cognome", 50), Text("Nome", 50), Text("CodiceRegionale", 10)}},
        {"BrancaPerStudio", {Key("IDBrancaPerStudio"), Text("BrancaPerStudio", 50)}},
        {"BrancaPerStudioPerSpecialista", {Int("IDBrancaPerStudio"), Int("IDSpecialista")}},
        {"ParametroSpecialista", {Int("IDSpecialista"), Text("Nome", 50), Text("Valore", 255)}},
        {"MenuItem", {Key("IDMenuItem"), Int("IDTipoMenuItem")}},
        {"Medico", {Key("IDMedico"), Text("Cognome", 50), Text("Nome", 50), Text("CodiceFiscale", 16)}},
        {"Paziente", {Key("IDPaziente"),          Text("CodicePaziente", 20),      Text("Cognome", 50),
                      Text("Nome", 50),           Moment("DataNascita"),           Text("Sesso", 1),
                      Text("CodiceFiscale", 16),  Text("NumTesseraSanitaria", 20), Text("NumAssistito", 20),
                      Moment("DataScelta"),       Moment("DataScadenza"),          Moment("DataSospensione"),
                      SmallInt("NonIscrittoASL"), Int("IDComuneNascita"),          SmallInt("Revocato"),
                      Moment("DataRevoca"),       Int("IDTipoRevocaPaziente"),     Text("NoteRevoca", 255),
                      Int("IDConsenso"),          Text("CodRegMedicoFiducia", 10), Text("CodiceRegione", 3),
                      Text("NumeroASL", 3)}},
        {"Residenza",
         {Key("IDResidenza"), Int("IDPaziente"), Int("IDTipoResidenza"), Int("IDComune"), Text("Indirizzo", 100),
          Text("Cap", 5), Text("Telefono", 20)}},
        {"EsenzionePerPaziente",
         {Key("IDEsenzionePerPaziente"), Int("IDEsenzione"), Int("IDPaziente"), Moment("DataEsenzione"),
          Moment("Scadenza")}},
        {"vwPartecipazioneSpesa",
         {Key("IDEsenzione"), Text("CodiceIdentificativo", 10), Int("EtaMinEsenzione"), Int("EtaMaxEsenzione"),
          Int("IDCategoriaDiAppartenenza")}},
        {"vwstudi", {Text("CodiceRegioneTariffario", 3), Text("NumeroASL", 3)}},
        {"BloccoRecord", {TextKey("Tabella", 50), Key("Chiave"), Text("Utente", 50), Moment("Dal")}},
    };
}

/// The services of a document lie side by side in document order, so that an export reads them without jumping.
std::vector<Table> Documents() {
    return {
        {"Parcella",
         {Key("IDParcella"),
          Moment("DataAiFiniConvenzione"),
          Bit("ElaborataASL"),
          Int("IDPosizioneContabile"),
          Int("IDTipoOperazione"),
          Int("IDSpecialista"),
          Int("IDBrancaPerStudio"),
          SmallInt("ProgressivoRicetta"),
          SmallInt("CodiceBranca"),
          Int("IDPaziente"),
          Int("IDMedico"),
          Int("IDPartecipazioneSpesa"),
          Int("IDTipoDocumento"),
          Text("PrefissoNumerazione", 10),
          Int("NumeroDocumento"),
          Moment("DataDocumento"),
          Text("NumRicetta1", 7),
          Text("NumRicetta2", 9),
          Moment("DataRilascioRicetta"),
          Int("IDPrioritaRicetta"),
          Int("IDTipoAccesso"),
          Int("IDTipoRichiesta"),
          Bit("PrescrizioneGarantita"),
          Moment("DataPrenotazione"),
          Moment("DataContatto"),
          Moment("DataPrimaDisponibilita"),
          Moment("DataAssegnata"),
          Moment("DataRefertazione"),
          Moment("DataInizioCiclo"),
          Money("TotTicketEuro"),
          Money("TotQuotaPazienteTicketEuro"),
          Money("QuotaRicettaEuro")}},
        {"Prestazione",
         {Key("IDParcella"), Key("Riga", ColumnType::SmallInt), Text("CodicePrestazioneTariffario", 10),
          Text("CodicePrestazione", 10), SmallInt("Quantita"), Money("TotaleEuro"), Bit("PrestazioneCiclica")}},
    };
}

std::vector<Table> PrescriptionsAndProjects() {
    return {
        {"RicettaFarmaci",
         {Key("IDRicettaFarmaci"), Int("IDBrancaPerStudio"), Int("IDSpecialista"), Moment("DataRicetta"),
          Int("IDPaziente"), Int("NumRicetta"), Int("IDTipoRichiesta"), Text("CodiceAIC_1", 10), Int("IDPatologia_1"),
          SmallInt("Quantita_1"), Text("CodiceAIC_2", 10), Int("IDPatologia_2"), SmallInt("Quantita_2"),
          Bit("PrescrivibileSSN")}},
        {"Progetto",
         {Key("IDProgetto"), Int("IDPaziente"), Int("IDSpecialista"), SmallInt("Anno"), SmallInt("Periodo"),
          Int("Protocollo"), Text("CodiceISTAT", 6), Int("CodiceIstatCittadinanza"), Int("ProvenienzaPaziente"),
          Int("Trattamento"), Text("CodicePatologia", 5), Text("NumeroAutorizzazione", 6), Moment("DataAutorizzazione"),
          Int("NumPrestAutor"), Moment("DataInizio"), Moment("DataRevoca"), Int("TipoDimissione"),
          Int("IDStatoProgetto")}},
        {"StatoProgetto",
         {Key("IDProgetto"), Key("IDStatoPrestazioneErogata"), Int("NumeroAccessi"), Money("ImportoTotale")}},
    };
}

std::vector<Table> Tables() {
    std::vector<Table> tables = People();
    for (std::vector<Table>& more : std::vector{Documents(), PrescriptionsAndProjects()})
        tables.insert(tables.end(), more.begin(), more.end());
    return tables;
}

/// The first index is the order in which a region wants its services: by branch, moment and document. The second
/// answers the patient's town from the index alone. Those of Paziente find the patient of a list's line.
std::vector<Index> Indices() {
    return {
        {"IX_Parcella_Esportazione",
         "Parcella",
         {{"CodiceBranca"}, {"DataAiFiniConvenzione", IndexUse::Moment}, {"IDParcella"}}},
        {"IX_Residenza_Paziente", "Residenza", {{"IDPaziente"}, {"IDTipoResidenza"}, {"IDComune"}}},
        {"IX_EsenzionePerPaziente_Paziente", "EsenzionePerPaziente", {{"IDPaziente"}, {"IDEsenzione"}}},
        {"IX_Paziente_NumTesseraSanitaria", "Paziente", {{"NumTesseraSanitaria", IndexUse::CodeText}}},
        {"IX_Paziente_NumAssistito", "Paziente", {{"NumAssistito", IndexUse::CodeText}}},
        {"IX_Paziente_CodiceFiscale", "Paziente", {{"CodiceFiscale", IndexUse::CodeText}}},
        {"IX_RicettaFarmaci_Data", "RicettaFarmaci", {{"IDBrancaPerStudio"}, {"IDSpecialista"}, {"DataRicetta"}}},
    };
}

/// What belongs to the document is looked up once a document, and the services come last.
Query Services() {
    return {{{"Parcella", "IDParcella"},
             {"Parcella", "IDPaziente"},
             {"Parcella", "IDPartecipazioneSpesa"},
             {"Parcella", "IDSpecialista", "IDSpecialista_Parcella"},
             {"Parcella", "IDBrancaPerStudio", "IDBrancaPerStudio_Parcella"},
             {"Parcella", "CodiceBranca"},
             {"Parcella", "DataAiFiniConvenzione"},
             {"Parcella", "ElaborataASL"},
             {"Parcella", "IDPosizioneContabile"},
             {"Parcella", "IDTipoOperazione"},
             {"Parcella", "ProgressivoRicetta"},
             {"Parcella", "IDTipoDocumento"},
             {"Parcella", "PrefissoNumerazione", "NP_PrefissoNumerazione"},
             {"Parcella", "NumeroDocumento"},
             {"Parcella", "DataDocumento"},
             {"Parcella", "NumRicetta1"},
             {"Parcella", "NumRicetta2"},
             {"Parcella", "DataRilascioRicetta"},
             {"Parcella", "IDPrioritaRicetta"},
             {"Parcella", "IDTipoAccesso"},
             {"Parcella", "IDTipoRichiesta"},
             {"Parcella", "PrescrizioneGarantita"},
             {"Parcella", "DataPrenotazione"},
             {"Parcella", "DataContatto"},
             {"Parcella", "DataPrimaDisponibilita"},
             {"Parcella", "DataAssegnata"},
             {"Parcella", "DataRefertazione"},
             {"Parcella", "DataInizioCiclo"},
             {"Parcella", "TotTicketEuro"},
             {"Parcella", "TotQuotaPazienteTicketEuro"},
             {"Parcella", "QuotaRicettaEuro"},
             {"Specialista", "CodiceRegionale"},
             {"Medico", "CodiceFiscale", "MED_CodiceFiscale"},
             {"Paziente", "Cognome", "PAZ_Cognome"},
             {"Paziente", "Nome", "PAZ_Nome"},
             {"Paziente", "CodiceFiscale", "PAZ_CodiceFiscale"},
             {"Paziente", "Sesso", "PAZ_Sesso"},
             {"Paziente", "DataNascita", "PAZ_DataNascita"},
             {"Paziente", "NumTesseraSanitaria"},
             {"Paziente", "NumAssistito"},
             {"Paziente", "CodRegMedicoFiducia"},
             {"Paziente", "CodiceRegione"},
             {"Paziente", "NumeroASL"},
             {"Paziente", "IDConsenso"},
             {"vwPartecipazioneSpesa", "CodiceIdentificativo", "PS_CodiceIdentificativo"},
             {"vwPartecipazioneSpesa", "IDCategoriaDiAppartenenza", "PS_IDCategoriaDiAppartenenza"},
             {"Prestazione", "CodicePrestazioneTariffario"},
             {"Prestazione", "CodicePrestazione"},
             {"Prestazione", "Quantita"},
             {"Prestazione", "TotaleEuro"},
             {"Prestazione", "PrestazioneCiclica"}},
            "Parcella",
            {{JoinKind::Ordered, "Paziente", "Paziente.IDPaziente = Parcella.IDPaziente"},
             {JoinKind::Left, "Specialista", "Specialista.IDSpecialista = Parcella.IDSpecialista"},
             {JoinKind::Left, "Medico", "Medico.IDMedico = Parcella.IDMedico"},
             {JoinKind::Left, "vwPartecipazioneSpesa",
              "vwPartecipazioneSpesa.IDEsenzione = Parcella.IDPartecipazioneSpesa"},
             {JoinKind::Ordered, "Prestazione", "Prestazione.IDParcella = Parcella.IDParcella"}}};
}

/// A project's states follow one another: the export joins consecutive rows into one line.
Query ProjectStates() {
    return {{{"Progetto", "IDProgetto"},
             {"Progetto", "IDStatoProgetto"},
             {"vwstudi", "NumeroASL"},
             {"Specialista", "CodiceRegionale"},
             {"Progetto", "Anno"},
             {"Progetto", "Periodo"},
             {"Progetto", "Protocollo"},
             {"Paziente", "Cognome"},
             {"Paziente", "Nome"},
             {"Paziente", "CodiceFiscale"},
             {"Paziente", "Sesso"},
             {"Paziente", "DataNascita"},
             {"Progetto", "CodiceISTAT"},
             {"Paziente", "NumeroASL", "NumeroAslPaziente"},
             {"Progetto", "CodiceIstatCittadinanza"},
             {"Progetto", "ProvenienzaPaziente"},
             {"Paziente", "DataScelta"},
             {"Progetto", "Trattamento"},
             {"Progetto", "CodicePatologia"},
             {"Progetto", "NumeroAutorizzazione"},
             {"Progetto", "DataAutorizzazione"},
             {"Progetto", "NumPrestAutor"},
             {"Progetto", "DataRevoca"},
             {"Progetto", "TipoDimissione"},
             {"StatoProgetto", "IDStatoPrestazioneErogata"},
             {"StatoProgetto", "NumeroAccessi"},
             {"StatoProgetto", "ImportoTotale"},
             {"Progetto", "DataInizio"}},
            "Progetto",
            {{JoinKind::Ordered, "StatoProgetto", "StatoProgetto.IDProgetto = Progetto.IDProgetto"},
             {JoinKind::Ordered, "Paziente", "Paziente.IDPaziente = Progetto.IDPaziente"},
             {JoinKind::Left, "Specialista", "Specialista.IDSpecialista = Progetto.IDSpecialista"},
             {JoinKind::Left, "vwstudi", "1 = 1"}},
            {"Progetto.IDProgetto", "StatoProgetto.IDStatoPrestazioneErogata"}};
}

Query Prescription() {
    return {{{"RicettaFarmaci", "IDRicettaFarmaci"},
             {"RicettaFarmaci", "NumRicetta"},
             {"RicettaFarmaci", "DataRicetta"},
             {"Specialista", "CodiceRegionale"},
             {"Paziente", "CodiceFiscale", "PAZ_CodiceFiscale"},
             {"RicettaFarmaci", "IDTipoRichiesta"},
             {"RicettaFarmaci", "CodiceAIC_1"},
             {"RicettaFarmaci", "IDPatologia_1"},
             {"RicettaFarmaci", "Quantita_1"},
             {"RicettaFarmaci", "CodiceAIC_2"},
             {"RicettaFarmaci", "IDPatologia_2"},
             {"RicettaFarmaci", "Quantita_2"},
             {"RicettaFarmaci", "PrescrivibileSSN"}},
            "RicettaFarmaci",
            {{JoinKind::Inner, "Specialista", "Specialista.IDSpecialista = RicettaFarmaci.IDSpecialista"},
             {JoinKind::Inner, "Paziente", "Paziente.IDPaziente = RicettaFarmaci.IDPaziente"}}};
}

/// The services as they are billed, and the states of the projects.
std::vector<View> Views() { return {{"VwPrestazionePerASL", Services()}, {"VwPrestazioniASLME", ProjectStates()}}; }

/// One drug prescription.
std::vector<Procedure> Procedures() {
    return {{"SP_RicettaFarmaci2005", "IDRicetta", "RicettaFarmaci.IDRicettaFarmaci", Prescription()}};
}

}  // namespace

const DatabaseSchema& MasterSchema() {
    static const DatabaseSchema schema{
        {
            {"Studi",
             {Key("IDStudio"), Int("IDASL"), Int("IDDistrettoASL"), Int("IDRegioneTariffario"),
              Text("RagioneSociale", 100), Text("Nome", 100), Int("IDEquipe")}},
            {"ASL", {Key("IDASL"), Text("NumeroASL", 3)}},
            {"DistrettoASL", {Key("IDDistrettoASL"), Text("Codice", 2)}},
            {"Mese", {Key("IDMese"), Text("Mese", 20)}},
            {"TipoRevocaPaziente", {Key("IDTipoRevocaPaziente"), Text("TipoRevocaPaziente", 50)}},
            {"Comune",
             {Key("IDComune"), Text("Comune", 100), Text("CodiceISTAT", 6), Text("CodiceCatastale", 4),
              Text("Sigla", 2), Text("Cap", 5)}},
            {"Esenzione", {Key("IDEsenzione"), Int("IDTipoEsenzione")}},
            {"TipoEsenzione", {Key("IDTipoEsenzione"), Text("TipoEsenzione", 50), Int("IDPosizioneTicket")}},
            {"Patologia", {Key("IDPatologia"), Text("CodificaCompleta", 10), Text("Patologia", 100)}},
        },
        {
            {"IX_Comune_Nome", "Comune", {{"Comune", IndexUse::NameText}}},
            {"IX_Comune_CodiceCatastale", "Comune", {{"CodiceCatastale", IndexUse::CodeText}}},
        }};
    return schema;
}

const DatabaseSchema& ClinicSchema() {
    static const DatabaseSchema schema{Tables(), Indices(), Views(), Procedures()};
    return schema;
}

}  // namespace vlm::host
