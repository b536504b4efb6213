#include "prescriptions/ASLPanoramico.h"

#include "frame/Messages.h"
#include "frame/RunFile.h"
#include "frmASLPanoramico.h"
#include "prescriptions/ASLPanoramicoLine.h"
#include "values/Error.h"

namespace vlm {

namespace {

/// Where the anomaly files stay, below the working folder.
constexpr const char* kAnomalyFolder = "AldraPanoramico";

}  // namespace

void ASLPanoramico::ShowDialog() { ShowForm<frmASLPanoramico>(*this); }

std::string ASLPanoramico::SelectSQL() const {
    const HostUtility& utility = library_.Utility();
    return "SELECT IDRicettaFarmaci FROM RicettaFarmaci WHERE IDBrancaPerStudio = " + std::to_string(IDBranca) +
           " AND IDSpecialista = " + std::to_string(IDSpecialista) +
           " AND DataRicetta >= " + utility.SqlDate(FromDate, 0) + " AND DataRicetta <= " + utility.SqlDate(ToDate, 0) +
           " ORDER BY DataRicetta";
}

std::int16_t ASLPanoramico::ExportFile(const std::string& path) {
    ExportOutcome outcome = ExportOutcome::Failed;
    try {
        const ui::HourglassScope hourglass(library_.Toolkit());
        outcome = Run(path);
    } catch (const std::exception& error) {
        messages::ShowGenerationError(library_.Toolkit(), error.what());
    }
    if (outcome == ExportOutcome::NoData) messages::ShowNoData(library_.Toolkit());
    return static_cast<std::int16_t>(outcome);
}

ExportOutcome ASLPanoramico::Run(const std::string& path) {
    const data::RecordsetPtr selection = library_.RequireConnection().Open(SelectSQL());
    if (selection->AtEnd()) return ExportOutcome::NoData;
    RunFile file;
    RunFile anomalies;
    file.Open(path);
    anomalies.Open(FreshWorkFile(library_, kAnomalyFolder));
    ASLPanoramicoLine record;
    record.SetConnection(library_.Connection());
    ExportOutcome outcome = ExportOutcome::FileProduced;
    const int idRicetta = selection->Ordinal("IDRicettaFarmaci");
    for (; !selection->AtEnd(); selection->MoveNext()) {
        if (WritePrescription(selection->IntegerOf(idRicetta), record, file, anomalies)) {
            outcome = ExportOutcome::AnomaliesFound;
        }
    }
    selection->Close();
    file.Close();
    anomalies.Close();
    return outcome;
}

bool ASLPanoramico::WritePrescription(std::int64_t idRicetta, ASLPanoramicoLine& record, RunFile& file,
                                      RunFile& anomalies) {
    const data::RecordsetPtr rows =
        library_.RequireConnection().Open("SP_RicettaFarmaci2005 " + std::to_string(idRicetta));
    bool found = false;
    do {
        // Of each row set only the first row counts, and only when the prescription has a number.
        if (rows->AtEnd() || rows->NumberOf(rows->Ordinal("NumRicetta")) <= 0) continue;
        record.SetRs(rows.get());
        record.ReadData();
        const std::string errors = record.GetErrors();
        found = found || !errors.empty();
        anomalies.WriteLine(errors);
        file.WriteLine(record.GetFormattedLine());
    } while (rows->NextRecordset());
    record.SetRs(nullptr);
    rows->Close();
    return found;
}

}  // namespace vlm
