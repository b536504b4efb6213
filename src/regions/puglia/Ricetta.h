#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

#include "values/Currency.h"

namespace vlm::puglia {

/// How many services a prescription holds: the region's line has no room for more.
inline constexpr std::size_t kMostPrestazioni = 8;

/// A service of a prescription; an empty slot has no code.
struct Prestazione {
    std::string Codice;
    std::int32_t Quantita = 0;
    bool Ciclica = false;
};

/// What one line of the file says: a prescription with its services. Dates are "ddmmyyyy", "" for none.
struct Ricetta {
    std::string CodiceRegionale;  // of the structure
    std::string MedicoPrescrittore;
    std::string Cognome;
    std::string Nome;
    std::string CodiceAssistito;
    std::string CodiceFiscale;
    std::string Sesso;  // "1" male, "2" female, "0" unknown
    std::string DataNascita;
    std::int32_t ComuneISTAT = 0;
    std::int32_t CodiceRegione = 0;
    std::int32_t ASLResidenza = 0;
    std::string Identificativo;    // the prescription's number, or the one that the structure gives it
    std::string DataPrescrizione;  // of issue, or of dispatch
    std::string DataSpedizione;
    std::int32_t ProgressivoRicettaExport = 0;
    std::int32_t BrancaSpecialistica = 0;
    std::array<Prestazione, kMostPrestazioni> Prestazioni;
    Currency TotalePrestazioni;
    Currency TotaleTicket;
    std::string Valuta = "E";  // euro
    std::string Esenzione;
    std::string ClassePriorita;
    std::int32_t TipoAccesso = 0;
    std::string DataContatto;
    std::string DataPrimaDisponibilita;
    std::string DataAssegnata;
    std::string DataRefertazione;
    std::string DataInizioCiclo;
    std::string Garantita;
    std::string Suggerita;
};

}  // namespace vlm::puglia
