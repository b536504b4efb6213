#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "frame/Library.h"

namespace vlm {

class RunFile;

/// The public component that exports the authorised treatment projects of the clinic's centres for a year and a range
/// of quarters. The host calls Connection, CHMObject and ShowDialog; the rest is the library's own.
class ExportProgetti {
public:
    explicit ExportProgetti(Library& library) : library_(library) {}

    // The host's members.
    const data::ConnectionPtr& Connection() const noexcept { return library_.Connection(); }
    void SetConnection(data::ConnectionPtr connection) { library_.SetConnection(std::move(connection)); }
    const std::shared_ptr<HelpObject>& CHMObject() const noexcept { return help_; }
    void SetCHMObject(std::shared_ptr<HelpObject> help) { help_ = std::move(help); }
    void ShowDialog();

    // The filters. They live as long as the component: what one run sets holds for the next until it is set again.
    std::int32_t IDStudio = 0;       // 0: every centre
    Date DataAutorizzazioneDa;       // the zero date: no bound
    Date DataAutorizzazioneA;        // likewise; the whole day is included
    Date DataFineDa;                 // not used
    Date DataFineA;                  // not used
    std::int32_t StatoProgetto = 0;  // 0 open projects, 1 closed ones, anything else both
    std::int16_t Anno = 0;           // 0: no period
    std::int16_t DaTrimestre = 0;    // 1 to 4
    std::int16_t ATrimestre = 0;     // 1 to 4
    bool VisualizzaDopo = false;     // open the file after the run

    /// Writes the file of the selection into a folder, also when nothing matches. An error is told to the user and
    /// leaves the lines written so far.
    void ExportFile(const std::string& folder);

    Library& Lib() const noexcept { return library_; }

private:
    std::string FileName() const;
    std::string SelectSQL(std::int32_t centre) const;
    void WriteFile(const std::string& path);
    void ExportCentre(RunFile& file, std::int32_t centre);

    Library& library_;
    std::shared_ptr<HelpObject> help_;
};

}  // namespace vlm
