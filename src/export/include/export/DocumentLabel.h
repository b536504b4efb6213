#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "values/Date.h"

namespace vlm {

/// How anomaly reports name a billing document: "Fattura A-125 del 03/02/2003: ". Kind 1 is an invoice, any other a
/// receipt.
std::string DocumentLabel(std::int32_t idTipoDocumento, std::string_view prefissoNumerazione,
                          std::int32_t numeroDocumento, Date dataDocumento);

}  // namespace vlm
