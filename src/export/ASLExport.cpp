#include "export/ASLExport.h"

#include "frame/Messages.h"
#include "frame/ModGeneral.h"
#include "frmASLExport.h"

namespace vlm {

void ASLExport::ShowDialog() { ShowForm<frmASLExport>(*this); }

bool ASLExport::ViewAsDecoded(const std::string& fileName, std::int32_t kind) {
    try {
        const auto region = GetRegion();
        return region && region->ViewAsDecoded(fileName, kind);
    } catch (const std::exception& error) {
        messages::ShowGenerationError(library_.Toolkit(), error.what());
        return false;
    }
}

std::int32_t ASLExport::IDRegioneTariffario() {
    if (idRegioneTariffario_ == 0) {
        idRegioneTariffario_ = GetIDRegioneTariffario(library_, library_.RequireConnection(), 0);
    }
    return idRegioneTariffario_;
}

const RegionDescription& ASLExport::Region() {
    static constexpr RegionDescription kNone;
    const std::int32_t wanted = IDRegioneTariffario();
    const RegionDescription* found = &kNone;
    for (const RegionDescription& region : regions_) {
        if (region.idRegioneTariffario == wanted) return region;
        if (region.idRegioneTariffario == RegionDescription::kEveryOther) found = &region;
    }
    return *found;
}

std::unique_ptr<IRegionASLExport> ASLExport::GetRegion() {
    const RegionDescription& region = Region();
    return region.make != nullptr ? region.make(library_) : nullptr;
}

std::int32_t ASLExport::Export(std::string folder, std::int32_t kind, bool simulation) {
    if (!folder.empty() && folder.back() == '\\') folder.pop_back();
    try {
        const auto region = GetRegion();
        return region ? region->Export(*this, folder, kind, simulation) : 0;
    } catch (const std::exception& error) {
        messages::ShowGenerationError(library_.Toolkit(), error.what());
        return static_cast<std::int32_t>(ExportOutcome::Failed);
    }
}

std::string ASLExport::GetFileName(std::int32_t kind, const std::string& numeroASL, std::int32_t period,
                                   std::int16_t year, bool anomalies) {
    const auto region = GetRegion();
    return region ? region->GetFileName(kind, numeroASL, period, year, CodiceRegionale, anomalies) : std::string{};
}

ServiceSelection ASLExport::SelectionFor(bool quarterly) const {
    ServiceSelection selection = Filter;
    selection.quarterly = quarterly;
    return selection;
}

data::RecordsetPtr ASLExport::OpenPrestazioni(bool quarterly) {
    return library_.RequireConnection().Open(SelectionFor(quarterly).GetSelectSQL());
}

std::string ASLExport::GetWhereSQL(bool quarterly, bool parcellaColumns) const {
    return SelectionFor(quarterly).GetWhereSQL(parcellaColumns);
}

}  // namespace vlm
