#pragma once

#include <string>

#include "export/IRegionASLExport.h"
#include "frame/Library.h"

namespace vlm {

/// The Sicily export: monthly detailed file "M", quarterly summary file "S", both shown as a readable text copy.
class ASLExportSicilia : public IRegionASLExport {
public:
    static constexpr const char* kCompleted = "Elaborazione terminata con successo";

    explicit ASLExportSicilia(const Library& library) : library_(library) {}

    bool ViewAsDecoded(const std::string& fileName, std::int32_t kind) override;
    std::int32_t Export(ASLExport& component, const std::string& folder, std::int32_t kind, bool simulation) override;
    std::string GetFileName(std::int32_t kind, const std::string& numeroASL, std::int32_t period, std::int16_t year,
                            const std::string& codiceRegionale, bool anomalies) override;
    void InitGrid(ViewGrid&, std::int32_t) override {}
    void FillLine(files::LineReader&, ViewGrid&, std::int32_t) override {}

    /// Health authority "000", period "00", two digits of the year, "M" or "S", "Err" for the report: 2010303M.txt.
    static std::string NameOf(std::int32_t kind, const std::string& numeroASL, std::int32_t period, std::int16_t year,
                              bool anomalies);

private:
    const Library& library_;
};

/// Every region without a description of its own exports as Sicily does.
inline constexpr RegionDescription kSicilia{.title = "Sicilia", .make = MakeRegion<ASLExportSicilia>};

}  // namespace vlm
