#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "PugliaColumns.h"
#include "Ricetta.h"
#include "database/Recordset.h"
#include "frame/ExportTypes.h"
#include "record/FieldFormat.h"

namespace vlm {

/// The record of the Puglia service export: the prescription of one billing document. Every ReadData takes one row, a
/// service, into the next slot; what else the row says is the prescription's, so that the last row's values count.
///
/// Every column is read with nulls as empty text and 0; a document number, date or amount that cannot be read throws,
/// and so does a ninth service.
class ASLLInePuglia {
public:
    /// The error number of a service that has no slot.
    static constexpr long kSubscriptError = 9;

    explicit ASLLInePuglia(std::int32_t tipoTracciato) : TipoTracciato(tipoTracciato) {}

    const std::int32_t TipoTracciato;
    /// Year of the run: its last digit is part of the identifier that a structure gives a prescription.
    std::int16_t Anno = 0;

    /// 341 characters; 0 for another kind than `ttM`.
    int LineLenght() const noexcept;
    /// The row set to read from; null releases it. Its columns are bound here, a missing one throws.
    void SetRs(data::Recordset* rs);
    void ReadData();
    /// Empties all slots. The rest of the prescription stays until the next row.
    void ClearPrestazioni();
    /// The prescription's line, valid until the next call; empty for another kind than `ttM`.
    const std::string& GetFormattedLine();
    /// The anomalies of the document as read so far, a line each; empty when there is none.
    std::string GetErrors() const;

    /// Services read for the current document.
    std::int16_t ProgressivoRicetta() const noexcept { return progressivoRicetta_; }
    void SetProgressivoRicetta(std::int16_t value) noexcept { progressivoRicetta_ = value; }
    /// The prescription's number in the file.
    void SetProgressivoRicettaExport(std::int16_t value) noexcept { ricetta_.ProgressivoRicettaExport = value; }
    std::int32_t IDParcella() const noexcept { return idParcella_; }

private:
    friend struct PugliaChecks;

    void ReadPatient();
    void ReadPrescription();
    void ReadDates();
    void ReadDocument();
    void ReadService();
    void PrepareLine();
    void PrepareMedico();
    std::string IdentifierOfStructure() const;
    std::string Label() const;

    FieldFormat format_{kPugliaFields};
    data::Recordset* rs_ = nullptr;
    std::optional<puglia::PugliaColumns> columns_;
    std::string line_;

    puglia::Ricetta ricetta_;
    std::int16_t progressivoRicetta_ = 0;
    // What the line carries only for some types of access.
    std::string numeroRicetta_;
    std::string dataRilascio_;
    std::string dataContatto_;
    std::string dataPrimaDisponibilita_;
    std::string dataAssegnata_;
    // The billing document.
    std::int32_t idParcella_ = 0;
    std::int32_t numeroDocumento_ = 0;
    std::int32_t idConsenso_ = 0;
    std::int32_t idTipoDocumento_ = 0;
    Date dataDocumento_;
    std::string prefissoNumerazione_;
    std::string dataPrenotazione_;
};

}  // namespace vlm
