#include "MonthlyRun.h"

#include "puglia/ASLExportPuglia.h"
#include "values/Number.h"

namespace vlm::puglia {

MonthlyRun::MonthlyRun(ASLExport& component, std::string folder, bool simulation)
    : RegionRun(component, {false, true, true, "Elaborazione terminata"}, std::move(folder), simulation) {}

std::string MonthlyRun::FileName(bool anomalies) const {
    return ASLExportPuglia::NameOf(Component().CodiceRegionale, anomalies);
}

void MonthlyRun::WriteRecords(data::Recordset& rows) {
    ASLLInePuglia record(ttM);
    record.Fields().Anno = Component().Filter.anno;
    record.SetRs(&rows);
    ReadDocuments(
        rows, record, [] {}, [&] { ClosePrescription(record); });
}

void MonthlyRun::ClosePrescription(ASLLInePuglia& record) {
    const auto number = text::ToInt16(static_cast<double>(documents_.size() + 1), "ProgressivoRicetta");
    record.SetProgressivoRicettaExport(number);
    documents_.push_back({record.IDParcella(), number});
    WriteLine(record.GetFormattedLine());
    record.SetProgressivoRicetta(0);
    record.ClearPrestazioni();
}

std::optional<std::int64_t> MonthlyRun::MarkDocuments(data::Connection& connection) {
    for (const ParcellaElaborata& document : documents_) {
        connection.Execute(
            "UPDATE Parcella SET ElaborataASL = 1,ProgressivoRicetta = " + std::to_string(document.ProgressivoRicetta) +
            " WHERE IDParcella = " + std::to_string(document.IDParcella));
    }
    return std::nullopt;
}

void MonthlyRun::ShowDecoded(const std::string& path) { Component().ViewAsDecoded(path, ttM); }

}  // namespace vlm::puglia
