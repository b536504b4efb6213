#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace vlm {

namespace files {
class LineReader;
}
class ASLExport;
class ViewGrid;

/// The export of one region: names its file, runs the export, shows a written file. An object lives for one call.
/// InitGrid and FillLine decode for the grid viewer; a region that shows its files otherwise leaves them empty.
class IRegionASLExport {
public:
    virtual ~IRegionASLExport() = default;

    /// Shows a written file readably. `kind` is a TipoTracciatoConsts. True when something was shown.
    virtual bool ViewAsDecoded(const std::string& fileName, std::int32_t kind) = 0;
    /// Runs the export with the component's filters into a folder (without "\" at its end). Errors are told to the
    /// user; the result is an ExportOutcome.
    virtual std::int32_t Export(ASLExport& component, const std::string& folder, std::int32_t kind,
                                bool simulation) = 0;
    /// The name, without folder, of the data file or of its anomaly report.
    virtual std::string GetFileName(std::int32_t kind, const std::string& numeroASL, std::int32_t period,
                                    std::int16_t year, const std::string& codiceRegionale, bool anomalies) = 0;
    /// Gives the grid its columns and sets its number of rows to `records`. Called once, before any line.
    virtual void InitGrid(ViewGrid& grid, std::int32_t records) = 0;
    /// Reads exactly one line from where the file stands and writes its fields into `row`, counted from 1. The file
    /// is not at its end.
    virtual void FillLine(files::LineReader& file, ViewGrid& grid, std::int32_t row) = 0;
};

/// The tariff region that has an export of its own; every other one exports as Sicily does.
inline constexpr std::int32_t kRegionePuglia = 13;

/// Makes the export of a tariff region. Filled by the composition root, so that no region is known here.
using RegionFactory = std::function<std::unique_ptr<IRegionASLExport>(std::int32_t idRegioneTariffario)>;

}  // namespace vlm
