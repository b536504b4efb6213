#include "puglia/ASLExportPuglia.h"

#include "MonthlyRun.h"
#include "PreviewGrid.h"
#include "PugliaRecord.h"
#include "export/frmViewData.h"
#include "frame/ModGeneral.h"
#include "values/Number.h"
#include "values/Utf8.h"

namespace vlm {

std::string ASLExportPuglia::NameOf(const std::string& codiceRegionale, bool anomalies) {
    return std::string("C").append(text::Left(codiceRegionale, 6)).append(anomalies ? "Err" : "").append(".txt");
}

std::string ASLExportPuglia::GetFileName(std::int32_t /*kind*/, const std::string& /*numeroASL*/,
                                         std::int32_t /*period*/, std::int16_t /*year*/,
                                         const std::string& codiceRegionale, bool anomalies) {
    return NameOf(codiceRegionale, anomalies);
}

std::int32_t ASLExportPuglia::Export(ASLExport& component, const std::string& folder, std::int32_t kind,
                                     bool simulation) {
    if (kind != ttM) return 0;
    return static_cast<std::int32_t>(puglia::MonthlyRun(component, folder, simulation).Execute());
}

bool ASLExportPuglia::ViewAsDecoded(const std::string& fileName, std::int32_t /*kind*/) {
    if (!FileExists(fileName)) return false;
    files::LineReader file(fileName);
    if (file.AtEnd()) return false;
    const std::uint64_t records = file.FileSize() / (puglia::kLayout.length + kLineEndLength);
    frmViewData(library_).ViewAsDecoded(*this, text::ToInt32(static_cast<double>(records), "record"), file);
    return true;
}

void ASLExportPuglia::InitGrid(ViewGrid& grid, std::int32_t records) { puglia::InitPreview(grid, records); }

void ASLExportPuglia::FillLine(files::LineReader& file, ViewGrid& grid, std::int32_t row) {
    puglia::FillPreview(file.ReadLine(), grid, row);
}

}  // namespace vlm
