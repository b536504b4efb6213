#include "sicilia/ASLExportSicilia.h"

#include "DecodedView.h"
#include "DetailedRun.h"
#include "SummaryRun.h"
#include "frame/Messages.h"
#include "values/Number.h"
#include "values/Utf8.h"

namespace vlm {

std::string ASLExportSicilia::NameOf(std::int32_t kind, const std::string& numeroASL, std::int32_t period,
                                     std::int16_t year, bool anomalies) {
    // A number that is none stands as it is, a missing one as 000.
    const std::optional<double> number = text::Trim(numeroASL).empty() ? 0 : text::ParseNumber(numeroASL);
    std::string name = number ? text::FormatZeros(text::ToInt64(*number, "NumeroASL"), 3) : numeroASL;
    name += text::FormatZeros(period, 2);
    name += text::Right(std::to_string(year), 2);
    name += kind == ttM ? "M" : "S";
    return name + (anomalies ? "Err" : "") + ".txt";
}

std::string ASLExportSicilia::GetFileName(std::int32_t kind, const std::string& numeroASL, std::int32_t period,
                                          std::int16_t year, const std::string& /*codiceRegionale*/, bool anomalies) {
    return NameOf(kind, numeroASL, period, year, anomalies);
}

std::int32_t ASLExportSicilia::Export(ASLExport& component, const std::string& folder, std::int32_t kind,
                                      bool simulation) {
    if (kind == ttM) return static_cast<std::int32_t>(sicilia::DetailedRun(component, folder, simulation).Execute());
    return static_cast<std::int32_t>(sicilia::SummaryRun(component, folder).Execute());
}

bool ASLExportSicilia::ViewAsDecoded(const std::string& fileName, std::int32_t kind) {
    try {
        return sicilia::ShowDecodedView(library_, fileName, kind);
    } catch (const std::exception& error) {
        messages::ShowGenerationError(library_.Toolkit(), error.what());
        return false;
    }
}

}  // namespace vlm
