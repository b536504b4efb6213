#include "ClinicQueries.h"

namespace vlm::host {

namespace {

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

}  // namespace

std::vector<View> ClinicViews() {
    return {{"VwPrestazionePerASL", Services()}, {"VwPrestazioniASLME", ProjectStates()}};
}

std::vector<Procedure> ClinicProcedures() {
    return {{"SP_RicettaFarmaci2005", "IDRicetta", "RicettaFarmaci.IDRicettaFarmaci", Prescription()}};
}

}  // namespace vlm::host
