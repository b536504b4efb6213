#include "projects/ExportProgetti.h"

#include "ProjectLine.h"
#include "frame/Messages.h"
#include "frame/ModGeneral.h"
#include "frame/RunFile.h"
#include "frmExportProgetti.h"
#include "values/Error.h"
#include "values/Number.h"

namespace vlm {

namespace {

/// The state of a project that is closed.
constexpr const char* kChiuso = "4";

/// The last minute of a day: what the view dates at any hour of the day is taken.
Date EndOfDay(Date day) {
    Date::Civil civil = day.ToCivil();
    civil.hour = 23;
    civil.minute = 59;
    civil.second = 0;
    return *Date::FromCivil(civil);
}

/// What rows of one project have in common. The first row of a centre is compared with an empty key.
struct ProjectKey {
    std::string numeroAutorizzazione;
    double anno = 0;
    double periodo = 0;
    std::string codiceFiscale;
    Date dataAutorizzazione;

    bool operator==(const ProjectKey&) const = default;
};

constexpr auto kDateOrZero = [](Date& member, const data::Recordset& rows, int at) {
    std::optional<Date> date;
    projects::kDateOfCell(date, rows, at);
    member = date.value_or(Date{});
};
constexpr std::tuple kKeyColumns{
    Column{"NumeroAutorizzazione", &ProjectKey::numeroAutorizzazione},
    Column{"Anno", &ProjectKey::anno},
    Column{"Periodo", &ProjectKey::periodo},
    Column{"CodiceFiscale", &ProjectKey::codiceFiscale},
    Column{"DataAutorizzazione", &ProjectKey::dataAutorizzazione, kDateOrZero},
};

}  // namespace

void ExportProgetti::ShowDialog() { ShowForm<frmExportProgetti>(*this); }

/// S20110120110200.txt: year and quarter from, year and quarter to, the centre.
std::string ExportProgetti::FileName() const {
    const std::string year = std::to_string(Anno);
    return "S" + year + text::FormatZeros(DaTrimestre, 2) + year + text::FormatZeros(ATrimestre, 2) +
           text::FormatZeros(IDStudio, 2) + ".txt";
}

std::string ExportProgetti::SelectSQL(std::int32_t centre) const {
    const HostUtility& utility = library_.Utility();
    std::string sql = "SELECT * FROM Studio" + text::FormatZeros(centre, 4) + "..VwPrestazioniASLME WHERE 1 = 1";
    if (DataAutorizzazioneDa != Date{}) {
        sql += " AND DataAutorizzazione >= " + utility.SqlDate(DataAutorizzazioneDa, 0);
    }
    if (DataAutorizzazioneA != Date{}) {
        sql += " AND DataAutorizzazione <= " + utility.SqlDate(EndOfDay(DataAutorizzazioneA), 0);
    }
    if (StatoProgetto == 0) sql += std::string(" AND ISNULL(IDStatoProgetto,0) <> ") + kChiuso;
    if (StatoProgetto == 1) sql += std::string(" AND ISNULL(IDStatoProgetto,0) = ") + kChiuso;
    if (Anno > 0) {
        sql += " AND ISNULL(Anno,0) = " + std::to_string(Anno) + " AND Periodo >= " + std::to_string(DaTrimestre) +
               " AND Periodo <= " + std::to_string(ATrimestre);
    }
    return sql;
}

void ExportProgetti::ExportFile(const std::string& folder) {
    const std::string path = PathCombine(folder, FileName());
    try {
        WriteFile(path);
        if (VisualizzaDopo) library_.Programs().Start("Notepad.exe " + path);
    } catch (const std::exception& error) {
        messages::ShowGenerationError(library_.Toolkit(), error.what());
    }
}

void ExportProgetti::WriteFile(const std::string& path) {
    const ui::HourglassScope hourglass(library_.Toolkit());
    RunFile file;
    file.Open(path);
    const data::RecordsetPtr centres = library_.RequireConnection().Open(
        "SELECT IDStudio FROM Aldra..Studi WHERE ISNULL([IDEquipe],0) > 0 ORDER BY IDStudio");
    const int idStudio = centres->Ordinal("IDStudio");
    for (; !centres->AtEnd(); centres->MoveNext()) {
        const std::int32_t centre = centres->Int32Of(idStudio);
        if (IDStudio == 0 || IDStudio == centre) ExportCentre(file, centre);
    }
    centres->Close();
    file.Close();
}

void ExportProgetti::ExportCentre(RunFile& file, std::int32_t centre) {
    const data::RecordsetPtr rows = library_.RequireConnection().Open(SelectSQL(centre));
    if (rows->AtEnd()) return;
    const BoundColumns<kKeyColumns> keyColumns(*rows);
    const ProjectLine builder(*rows);
    std::string line;
    ProjectKey last;
    for (; !rows->AtEnd(); rows->MoveNext()) {
        ProjectKey key;
        keyColumns.Read(key, *rows);
        const bool startsProject = line.empty() || key != last;
        if (startsProject) file.WriteLine(line);
        builder.BuildLine(line, startsProject);
        last = std::move(key);
    }
    file.WriteLine(line);
    rows->Close();
}

}  // namespace vlm
