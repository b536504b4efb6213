#include "Regions.h"

#include "puglia/ASLExportPuglia.h"
#include "sicilia/ASLExportSicilia.h"

namespace vlm::server {

std::unique_ptr<IRegionASLExport> MakeRegion(const Library& library, std::int32_t idRegioneTariffario) {
    if (idRegioneTariffario == kRegionePuglia) return std::make_unique<ASLExportPuglia>(library);
    return std::make_unique<ASLExportSicilia>(library);
}

}  // namespace vlm::server
