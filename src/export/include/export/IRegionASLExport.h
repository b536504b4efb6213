#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>

namespace vlm {

namespace files {
class LineReader;
}
class ASLExport;
class Library;
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

/// What a tariff region says of itself. The export dialog and the component go by it and know no region by name.
struct RegionDescription {
    using Factory = std::unique_ptr<IRegionASLExport> (*)(const Library&);

    std::int32_t idRegioneTariffario = kEveryOther;
    const char* title = "";
    Factory make = nullptr;  // null: no region
    // What the dialog offers. A field without use stands there disabled; with one kind alone, that kind is chosen.
    bool monthly = true;         // the record of kind ttM
    bool quarterly = true;       // the record of kind ttS
    bool earlierPeriods = true;  // months may take along what earlier ones left
    bool operationTypes = true;  // services may be narrowed to types of operation
    bool needsBranch = true;     // the first branch is proposed, and a run without one refused

    /// Serves the regions that have no description of their own.
    static constexpr std::int32_t kEveryOther = 0;
};

/// The factory of a region's class.
template <class Region>
std::unique_ptr<IRegionASLExport> MakeRegion(const Library& library) {
    return std::make_unique<Region>(library);
}

/// The regions that a library knows, handed in where the program is put together. Outlives who looks into it.
using Regions = std::span<const RegionDescription>;

}  // namespace vlm
