#include "SummaryRun.h"

#include "frame/ModGeneral.h"
#include "record/Columns.h"
#include "sicilia/ASLExportSicilia.h"
#include "values/Error.h"
#include "values/Number.h"
#include "values/Utf8.h"

namespace vlm::sicilia {

namespace {

/// What a month's sums are made of. A document's ticket counts once, so that it is read of its first row only.
struct Row {
    Date::Civil Data;
    std::string CodiceRegionale;
    double CodiceBranca = 0;
    double Quantita = 0;
    Currency Totale;
    std::int64_t IDParcella = 0;
    Currency Ticket;
};

constexpr auto kRequiredDate = [](Date::Civil& member, const data::Recordset& rows, int at) {
    const std::optional<Date> date = rows.DateOf(at);
    if (!date) throw TypeMismatchError("La colonna DataAiFiniConvenzione non contiene una data.");
    member = date->ToCivil();
};
constexpr auto kWholeKey = [](std::int64_t& member, const data::Recordset& rows, int at) {
    member = rows.IntegerOf(at);
};

constexpr std::tuple kColumnsOfEveryRow{
    Column{"DataAiFiniConvenzione", &Row::Data, kRequiredDate},
    Column{"CodiceRegionale", &Row::CodiceRegionale},
    Column{"CodiceBranca", &Row::CodiceBranca},
    Column{"Quantita", &Row::Quantita},
    Column{"TotaleEuro", &Row::Totale},
    Column{"IDParcella", &Row::IDParcella, kWholeKey},
};
constexpr std::tuple kColumnsOfFirstRow{
    Column{"TotQuotaPazienteTicketEuro", &Row::Ticket},
    Column{"QuotaRicettaEuro", &Row::Ticket, kAdded},
};

void StartMonth(Record& record, const Row& row) {
    record.Mese = static_cast<std::int16_t>(row.Data.month);
    record.Anno = static_cast<std::int16_t>(row.Data.year);
    record.CodiceStruttura = row.CodiceRegionale;
    record.CodiceBranca = text::NumberText(row.CodiceBranca);
    record.ImportoLordo = Currency{};
    record.Ticket = Currency{};
    record.NumeroPrestazioni = 0;
}

}  // namespace

SummaryRun::SummaryRun(ASLExport& component, std::string folder)
    : RegionRun(component, {true, false, false, ASLExportSicilia::kCompleted}, std::move(folder), false) {}

void SummaryRun::Prepare() {
    const Library& library = Component().Lib();
    numeroASL_ = GetNumeroASL(library, library.RequireConnection());
    codiceDistretto_ = GetCodiceDistretto(library, library.RequireConnection());
}

std::string SummaryRun::FileName(bool anomalies) const {
    const ServiceSelection& filter = Component().Filter;
    return ASLExportSicilia::NameOf(ttS, numeroASL_, filter.periodo, filter.anno, anomalies);
}

void SummaryRun::CheckRun(const std::string& codiceRegionale, double codiceBranca) {
    if (text::Trim(numeroASL_).empty()) WriteAnomalies("[1] Codice Azienda ASL mancante");
    if (text::Trim(codiceDistretto_).empty()) WriteAnomalies("[2] Distretto ASL mancante");
    if (text::Trim(codiceRegionale).empty()) WriteAnomalies("[3] Codice struttura erogatrice mancante");
    if (codiceBranca == 0) WriteAnomalies("[4] Codice branca specialiastica mancante");
}

void SummaryRun::WriteRecords(data::Recordset& rows) {
    const BoundColumns<kColumnsOfEveryRow> everyRow(rows);
    const BoundColumns<kColumnsOfFirstRow> firstRow(rows);
    ASLLineSicilia line(ttS);
    Record& record = line.Fields();
    record.NumeroASLStudio = numeroASL_;
    record.DistrettoASLStudio = codiceDistretto_;
    std::optional<std::int64_t> lastParcella;
    for (Row row; !rows.AtEnd(); rows.MoveNext()) {
        everyRow.Read(row, rows);
        if (!lastParcella) CheckRun(row.CodiceRegionale, row.CodiceBranca);
        if (row.Data.month != record.Mese) {
            if (record.Mese > 0) WriteLine(line.GetFormattedLine());
            StartMonth(record, row);
        }
        record.NumeroPrestazioni = text::ToInt16(record.NumeroPrestazioni + row.Quantita, "NumeroPrestazioni");
        record.ImportoLordo += row.Totale;
        if (row.IDParcella != lastParcella) {
            firstRow.Read(row, rows);
            record.Ticket += row.Ticket;
            lastParcella = row.IDParcella;
        }
    }
    if (record.Mese > 0) WriteLine(line.GetFormattedLine());
}

void SummaryRun::ShowDecoded(const std::string& path) { Component().ViewAsDecoded(path, ttS); }

}  // namespace vlm::sicilia
