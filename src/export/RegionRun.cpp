#include "export/RegionRun.h"

#include "files/Paths.h"
#include "frame/Messages.h"
#include "frame/ModGeneral.h"
#include "values/DateText.h"
#include "values/Error.h"

namespace vlm {

std::string DocumentLabel(std::int32_t idTipoDocumento, std::string_view prefissoNumerazione,
                          std::int32_t numeroDocumento, Date dataDocumento) {
    std::string label = idTipoDocumento == 1 ? "Fattura " : "Ricevuta ";
    label.append(prefissoNumerazione).append("-").append(std::to_string(numeroDocumento));
    return label.append(" del ").append(text::DdMmYyyySlashes(dataDocumento)).append(": ");
}

ExportOutcome RegionRun::Execute() {
    try {
        const ui::HourglassScope hourglass(component_.Lib().Toolkit());
        Produce();
        if (outcome_ != ExportOutcome::NoData) Deliver();
    } catch (const std::exception& error) {
        data_.Revert();
        report_.Revert();
        messages::ShowGenerationError(component_.Lib().Toolkit(), error.what());
        return ExportOutcome::Failed;
    }
    Conclude();
    return outcome_;
}

void RegionRun::WriteLine(std::string_view line) {
    if (line.empty()) return;
    data_.WriteLine(line);
    ++lineCount_;
}

void RegionRun::WriteAnomalies(std::string_view text) {
    if (text.empty()) return;
    report_.WriteLine(text);
    outcome_ = ExportOutcome::AnomaliesFound;
}

void RegionRun::Produce() {
    Prepare();
    if (rules_.marks && !rules_.quarterly && !simulation_ && !component_.Filter.includiElaborate) {
        look_.emplace(component_.GetWhereSQL(false, true));
        look_->LookBefore(component_.Lib().RequireConnection());
    }
    const data::RecordsetPtr rows = component_.OpenPrestazioni(rules_.quarterly);
    if (rows->AtEnd()) {
        outcome_ = ExportOutcome::NoData;
        return;
    }
    const std::string workFolder = component_.Lib().Utility().WorkFolder();
    data_.Open(PathCombine(workFolder, FileName(false)));
    report_.Open(PathCombine(workFolder, FileName(true)));
    WriteRecords(*rows);
    rows->Close();
    data_.Deliver();
    report_.Deliver();
}

void RegionRun::Deliver() {
    if (outcome_ == ExportOutcome::FileProduced || rules_.deliversAnomalies) {
        const std::string workFolder = component_.Lib().Utility().WorkFolder();
        files::StagedFile copy;
        // In the working folder itself the file stands already where the user wants it.
        if (!files::IsSameFolder(folder_, workFolder)) {
            copy.Open(folder_ + "\\" + FileName(false));
            copy.CopyFrom(PathCombine(workFolder, FileName(false)));
        }
        if (simulation_ || !rules_.marks) {
            copy.Deliver();
        } else {
            MarkAndDeliver(copy);
        }
        copy.Keep();
    }
    data_.Keep();
    report_.Keep();
}

void RegionRun::MarkAndDeliver(files::StagedFile& copy) {
    data::Connection& connection = component_.Lib().RequireConnection();
    data::Transaction transaction(connection);
    if (look_) look_->LookAgain(connection);
    const std::optional<std::int64_t> marked = MarkDocuments(connection);
    if (look_ && marked) look_->GiveBack(connection, *marked);
    copy.Deliver();
    transaction.Commit();
}

void RegionRun::ShowReport() const {
    const Library& library = component_.Lib();
    try {
        library.Programs().Start("Notepad.exe " + PathCombine(library.Utility().WorkFolder(), FileName(true)));
    } catch (const Error& error) {
        messages::ShowError(library.Toolkit(), error.what());  // the run itself came to its end
    }
}

void RegionRun::Conclude() {
    const Library& library = component_.Lib();
    if (outcome_ == ExportOutcome::NoData) {
        messages::ShowNoData(library.Toolkit());
        return;
    }
    if (outcome_ == ExportOutcome::AnomaliesFound) {
        if (messages::AskToShowAnomalies(library.Toolkit())) ShowReport();
        if (!rules_.deliversAnomalies) return;
    }
    if (component_.Visualizza && outcome_ == ExportOutcome::FileProduced) {
        ShowDecoded(folder_ + "\\" + FileName(false));
        return;
    }
    library.Toolkit().Show(
        {std::string(rules_.completedText) + messages::kLineEnd + "Elaborate " + std::to_string(lineCount_) + " linee.",
         "Generazione file per ASL", ui::Icon::Information, ui::Buttons::Ok});
}

}  // namespace vlm
