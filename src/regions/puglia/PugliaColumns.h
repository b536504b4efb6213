#pragma once

#include "database/Recordset.h"

namespace vlm::puglia {

/// The ordinals of the columns that the Puglia record reads. Binding throws an error that names a missing column.
struct PugliaColumns {
    explicit PugliaColumns(const data::Recordset& rows);

    // Structure and patient.
    int codiceRegionale, medicoFiducia, cognome, nome, numAssistito, numTesseraSanitaria, codiceFiscale, sesso,
        dataNascita, codiceISTAT, codiceRegione, numeroASL;
    // Prescription.
    int numRicetta1, numRicetta2, dataRilascio, dataSpedizione, progressivoRicetta, codiceBranca, totTicket,
        quotaTicket, esenzione, categoria, priorita, tipoAccesso, dataContatto, dataPrimaDisponibilita, dataAssegnata,
        dataRefertazione, dataInizioCiclo, garantita, tipoRichiesta;
    // Billing document.
    int idParcella, numeroDocumento, idConsenso, idTipoDocumento, dataDocumento, prefisso, dataPrenotazione;
    // Service.
    int prestazioneTariffario, prestazione, quantita, ciclica;
};

}  // namespace vlm::puglia
