#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "PugliaColumns.h"
#include "frame/ExportTypes.h"

namespace vlm {

/// The record of the Puglia service export: the prescription of one billing document. Every ReadData takes one row, a
/// service, into the next slot; what else the row says is the prescription's, so that the last row's values count.
class ASLLInePuglia {
public:
    explicit ASLLInePuglia(std::int32_t tipoTracciato) : TipoTracciato(tipoTracciato) {}

    const std::int32_t TipoTracciato;
    puglia::Ricetta& Fields() noexcept { return ricetta_; }

    /// 341 characters; 0 for another kind than `ttM`.
    int LineLenght() const noexcept { return TipoTracciato == ttM ? puglia::kLayout.length : 0; }
    /// The row set to read from; null releases it. Its columns are bound here, a missing one throws.
    void SetRs(data::Recordset* rs);
    void ReadData();
    /// Empties all slots. The rest of the prescription stays until the next row.
    void ClearPrestazioni() { ricetta_.Prestazioni.fill({}); }
    /// The prescription's line, valid until the next call; empty for another kind than `ttM`.
    const std::string& GetFormattedLine();
    /// The anomalies of the document as read so far, a line each; empty when there is none.
    std::string GetErrors() const;

    std::int16_t ProgressivoRicetta() const noexcept { return ricetta_.ProgressivoRicetta; }
    void SetProgressivoRicetta(std::int16_t value) noexcept { ricetta_.ProgressivoRicetta = value; }
    /// The prescription's number in the file.
    void SetProgressivoRicettaExport(std::int16_t value) noexcept { ricetta_.ProgressivoRicettaExport = value; }
    std::int32_t IDParcella() const noexcept { return ricetta_.IDParcella; }

private:
    puglia::Ricetta ricetta_;
    data::Recordset* rs_ = nullptr;
    std::optional<BoundColumns<puglia::kColumns>> columns_;
    std::string line_;
};

}  // namespace vlm
