#include "export/DocumentLabel.h"

#include "values/DateText.h"

namespace vlm {

std::string DocumentLabel(std::int32_t idTipoDocumento, std::string_view prefissoNumerazione,
                          std::int32_t numeroDocumento, Date dataDocumento) {
    std::string label = idTipoDocumento == 1 ? "Fattura " : "Ricevuta ";
    label.append(prefissoNumerazione).append("-").append(std::to_string(numeroDocumento));
    return label.append(" del ").append(text::DdMmYyyySlashes(dataDocumento)).append(": ");
}

}  // namespace vlm
