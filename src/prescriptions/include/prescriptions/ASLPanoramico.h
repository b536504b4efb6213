#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "frame/ExportTypes.h"
#include "frame/Library.h"

namespace vlm {

class ASLPanoramicoLine;
class RunFile;

/// The public component that exports the drug prescriptions of a specialist and branch between two dates. The host
/// calls CHMObject, ShowDialog, ViewAsDecoded and Connection; the rest is the library's own.
class ASLPanoramico {
public:
    explicit ASLPanoramico(Library& library) : library_(library) {}

    // The host's members.
    const std::shared_ptr<HelpObject>& CHMObject() const noexcept { return help_; }
    void SetCHMObject(std::shared_ptr<HelpObject> help) { help_ = std::move(help); }
    void ShowDialog();
    /// This file has no readable form: always false.
    bool ViewAsDecoded(const std::string& /*fileName*/, std::int32_t /*kind*/ = ttM) { return false; }
    const data::ConnectionPtr& Connection() const noexcept { return library_.Connection(); }
    void SetConnection(data::ConnectionPtr connection) { library_.SetConnection(std::move(connection)); }

    // The filters, from the dialog's confirmation to the next one.
    std::int32_t IDSpecialista = 0;  // 0 selects nothing
    std::int32_t IDBranca = 0;       // an IDBrancaPerStudio
    Date FromDate;                   // both days are included
    Date ToDate;

    /// Writes the file of that path and an anomaly file in the working folder; no file when nothing is selected. An
    /// error is told to the user and leaves the lines written so far. The result is an ExportOutcome.
    std::int16_t ExportFile(const std::string& path);

    Library& Lib() const noexcept { return library_; }

private:
    std::string SelectSQL() const;
    ExportOutcome Run(const std::string& path);
    /// True when the prescription has anomalies.
    bool WritePrescription(std::int64_t idRicetta, ASLPanoramicoLine& record, RunFile& file, RunFile& anomalies);

    Library& library_;
    std::shared_ptr<HelpObject> help_;
};

}  // namespace vlm
