#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "SiciliaColumns.h"
#include "frame/ExportTypes.h"

namespace vlm {

/// The record of the Sicily service export. For a detailed export (`ttM`) every ReadData takes one row of the services
/// and counts and sums the rows of the current billing document; a summary (`ttS`) is set through its fields. Either
/// gives its line, and reads a written line back into readable form.
class ASLLineSicilia {
public:
    explicit ASLLineSicilia(std::int32_t tipoTracciato) : TipoTracciato(tipoTracciato) {}

    const std::int32_t TipoTracciato;
    /// 222 or 60 characters; 0 for any other kind.
    int LineLenght() const noexcept;
    sicilia::Record& Fields() noexcept { return record_; }

    /// The row set to read from; null releases it. Its columns are bound here, a missing one throws.
    void SetRs(data::Recordset* rs);
    void ReadData();
    /// The record's line, valid until the next call; empty for a kind that has none.
    const std::string& GetFormattedLine();
    /// The anomalies of the current row, a line each; empty when there is none, and always for a summary.
    std::string GetErrors() const;
    /// The readable form of a written line: mode 1 the header, 2 the line, 3 the legend.
    std::string DecodedLine(std::string_view line, int mode);

    std::int16_t ProgressivoRicetta() const noexcept { return record_.ProgressivoRicetta; }
    /// Writing 0 starts a new document and clears its total.
    void SetProgressivoRicetta(std::int16_t value);
    std::int32_t IDParcella() const noexcept { return record_.IDParcella; }

private:
    std::string DecodedLineFlussoM(std::string_view line, int mode);
    std::string DecodedLineFlussoS(std::string_view line, int mode);

    sicilia::Record record_;
    data::Recordset* rs_ = nullptr;
    std::optional<BoundColumns<sicilia::kColumns>> columns_;
    std::string line_;
};

}  // namespace vlm
