#include "DetailedRun.h"

#include "frame/ModGeneral.h"
#include "sicilia/ASLExportSicilia.h"
#include "values/Number.h"

namespace vlm::sicilia {

DetailedRun::DetailedRun(ASLExport& component, std::string folder, bool simulation)
    : RegionRun(component, {false, true, false, ASLExportSicilia::kCompleted}, std::move(folder), simulation) {}

void DetailedRun::Prepare() { numeroASL_ = GetNumeroASL(Component().Lib(), Component().Lib().RequireConnection()); }

std::string DetailedRun::FileName(bool anomalies) const {
    const ServiceSelection& filter = Component().Filter;
    return ASLExportSicilia::NameOf(ttM, numeroASL_, filter.periodo, filter.anno, anomalies);
}

void DetailedRun::WriteRecords(data::Recordset& rows) {
    ASLLineSicilia record(ttM);
    record.Fields().NumeroASLStudio = numeroASL_;
    record.SetRs(&rows);
    ReadDocuments(
        rows, record, [&] { WriteLine(record.GetFormattedLine()); }, [&] { CloseDocument(record); });
}

void DetailedRun::CloseDocument(ASLLineSicilia& record) {
    record.SetProgressivoRicetta(kClosingLine);
    WriteLine(record.GetFormattedLine());
    record.SetProgressivoRicetta(0);
}

std::optional<std::int64_t> DetailedRun::MarkDocuments(data::Connection& connection) {
    return connection.Execute("UPDATE Parcella SET ElaborataASL = 1 WHERE " + Component().GetWhereSQL(false, true));
}

void DetailedRun::ShowDecoded(const std::string& path) { Component().ViewAsDecoded(path, ttM); }

}  // namespace vlm::sicilia
