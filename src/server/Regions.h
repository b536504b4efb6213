#pragma once

#include <memory>

#include "export/IRegionASLExport.h"
#include "frame/Library.h"

namespace vlm::server {

/// The regions that this library knows: every one but Puglia exports as Sicily does.
std::unique_ptr<IRegionASLExport> MakeRegion(const Library& library, std::int32_t idRegioneTariffario);

}  // namespace vlm::server
