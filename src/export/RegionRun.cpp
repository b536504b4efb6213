#include "export/RegionRun.h"

#include "frame/Messages.h"
#include "frame/ModGeneral.h"

namespace vlm {

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
    const data::RecordsetPtr rows = component_.OpenPrestazioni(rules_.quarterly);
    if (rows->AtEnd()) {
        outcome_ = ExportOutcome::NoData;
        return;
    }
    Prepare();
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
        files::StagedFile copy;
        copy.Open(folder_ + "\\" + FileName(false));
        copy.CopyFrom(PathCombine(component_.Lib().Utility().WorkFolder(), FileName(false)));
        if (simulation_) {
            copy.Deliver();
        } else {
            data::Connection& connection = component_.Lib().RequireConnection();
            data::Transaction transaction(connection);
            MarkDocuments(connection);
            copy.Deliver();
            transaction.Commit();
        }
        copy.Keep();
    }
    data_.Keep();
    report_.Keep();
}

void RegionRun::Conclude() {
    const Library& library = component_.Lib();
    if (outcome_ == ExportOutcome::NoData) {
        messages::ShowNoData(library.Toolkit());
        return;
    }
    if (outcome_ == ExportOutcome::AnomaliesFound) {
        if (messages::AskToShowAnomalies(library.Toolkit())) {
            library.Programs().Start("Notepad.exe " + PathCombine(library.Utility().WorkFolder(), FileName(true)));
        }
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
