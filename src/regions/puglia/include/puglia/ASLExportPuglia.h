#pragma once

#include <string>

#include "export/IRegionASLExport.h"
#include "frame/Library.h"

namespace vlm {

/// The Puglia export: one monthly file, shown in the grid viewer, a row for each prescription.
class ASLExportPuglia : public IRegionASLExport {
public:
    explicit ASLExportPuglia(const Library& library) : library_(library) {}

    /// False, and nothing is shown, for a file that is not there or is empty. Errors throw.
    bool ViewAsDecoded(const std::string& fileName, std::int32_t kind) override;
    /// Any other kind than the monthly one does nothing and gives 0.
    std::int32_t Export(ASLExport& component, const std::string& folder, std::int32_t kind, bool simulation) override;
    std::string GetFileName(std::int32_t kind, const std::string& numeroASL, std::int32_t period, std::int16_t year,
                            const std::string& codiceRegionale, bool anomalies) override;
    void InitGrid(ViewGrid& grid, std::int32_t records) override;
    void FillLine(files::LineReader& file, ViewGrid& grid, std::int32_t row) override;

    /// "C", six characters of the specialist's regional code, "Err" for the report: C123456.txt.
    static std::string NameOf(const std::string& codiceRegionale, bool anomalies);

private:
    const Library& library_;
};

/// Months only, each for itself, of one branch or of all.
inline constexpr RegionDescription kPuglia{.idRegioneTariffario = 13,
                                           .title = "Puglia",
                                           .make = MakeRegion<ASLExportPuglia>,
                                           .quarterly = false,
                                           .earlierPeriods = false,
                                           .needsBranch = false};

}  // namespace vlm
