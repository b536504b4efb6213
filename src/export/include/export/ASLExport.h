#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "export/IRegionASLExport.h"
#include "export/ServiceSelection.h"
#include "frame/ExportTypes.h"
#include "frame/Library.h"

namespace vlm {

/// The public component that exports the clinic's billed services of a month or a quarter to the file of its region.
/// The host calls ShowDialog, Connection, ViewAsDecoded and CHMObject; the rest is the library's own.
class ASLExport {
public:
    /// `regions` must outlive the component.
    ASLExport(Library& library, Regions regions) : library_(library), regions_(regions) {}

    // The host's members.
    void ShowDialog();
    const data::ConnectionPtr& Connection() const noexcept { return library_.Connection(); }
    void SetConnection(data::ConnectionPtr connection) { library_.SetConnection(std::move(connection)); }
    bool ViewAsDecoded(const std::string& fileName, std::int32_t kind = ttM);
    const std::shared_ptr<HelpObject>& CHMObject() const noexcept { return help_; }
    void SetCHMObject(std::shared_ptr<HelpObject> help) { help_ = std::move(help); }

    // The filters, from the dialog's confirmation to the next one.
    ServiceSelection Filter;      // `quarterly` is set by the run
    std::string CodiceRegionale;  // of the chosen specialist, or the one found for the branch
    bool Visualizza = false;      // show the file after the run

    /// The clinic's tariff region, looked up once for each component; a 0 is looked up again.
    std::int32_t IDRegioneTariffario();
    /// What the clinic's region says of itself; one that offers everything and makes nothing when there is none.
    const RegionDescription& Region();
    /// The export of the clinic's region, a new one for each call; null when there is none.
    std::unique_ptr<IRegionASLExport> GetRegion();
    /// Runs the region's export; an ExportOutcome, 0 also when there is no region.
    std::int32_t Export(std::string folder, std::int32_t kind, bool simulation);
    /// The region's name for a file; "" when there is no region.
    std::string GetFileName(std::int32_t kind, const std::string& numeroASL, std::int32_t period, std::int16_t year,
                            bool anomalies);
    /// Opens the selection on the library-wide connection, forward-only and read-only; the caller closes it.
    data::RecordsetPtr OpenPrestazioni(bool quarterly);
    std::string GetWhereSQL(bool quarterly, bool parcellaColumns) const;

    Library& Lib() const noexcept { return library_; }

private:
    ServiceSelection SelectionFor(bool quarterly) const;

    Library& library_;
    Regions regions_;
    std::shared_ptr<HelpObject> help_;
    std::int32_t idRegioneTariffario_ = 0;
};

}  // namespace vlm
