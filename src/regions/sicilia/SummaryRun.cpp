#include "SummaryRun.h"

#include "frame/ModGeneral.h"
#include "sicilia/ASLExportSicilia.h"
#include "values/Error.h"
#include "values/Number.h"
#include "values/Utf8.h"

namespace vlm::sicilia {

struct SummaryRun::Columns {
    explicit Columns(const data::Recordset& rows)
        : data(rows.Ordinal("DataAiFiniConvenzione")),
          codiceRegionale(rows.Ordinal("CodiceRegionale")),
          codiceBranca(rows.Ordinal("CodiceBranca")),
          quantita(rows.Ordinal("Quantita")),
          totale(rows.Ordinal("TotaleEuro")),
          idParcella(rows.Ordinal("IDParcella")),
          quotaTicket(rows.Ordinal("TotQuotaPazienteTicketEuro")),
          quotaRicetta(rows.Ordinal("QuotaRicettaEuro")) {}

    int data, codiceRegionale, codiceBranca, quantita, totale, idParcella, quotaTicket, quotaRicetta;
};

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

void SummaryRun::CheckRun(const data::Recordset& firstRow, const Columns& columns) {
    if (text::Trim(numeroASL_).empty()) WriteAnomalies("[1] Codice Azienda ASL mancante");
    if (text::Trim(codiceDistretto_).empty()) WriteAnomalies("[2] Distretto ASL mancante");
    if (text::Trim(firstRow.TextOf(columns.codiceRegionale)).empty()) {
        WriteAnomalies("[3] Codice struttura erogatrice mancante");
    }
    if (firstRow.NumberOf(columns.codiceBranca) == 0) WriteAnomalies("[4] Codice branca specialiastica mancante");
}

void SummaryRun::StartMonth(ASLLineSicilia& record, const data::Recordset& rows, const Columns& columns,
                            const Date::Civil& date) {
    record.Mese = static_cast<std::int16_t>(date.month);
    record.Anno = static_cast<std::int16_t>(date.year);
    record.CodiceStruttura = rows.TextOf(columns.codiceRegionale);
    record.CodiceBranca = text::NumberText(rows.NumberOf(columns.codiceBranca));
    record.ImportoLordo = Currency{};
    record.Ticket = Currency{};
    record.NumeroPrestazioni = 0;
}

void SummaryRun::WriteRecords(data::Recordset& rows) {
    const Columns columns(rows);
    ASLLineSicilia record(ttS);
    record.SetNumeroASLStudio(numeroASL_);
    record.SetDistrettoASLStudio(codiceDistretto_);
    record.SetRs(&rows);
    CheckRun(rows, columns);
    std::optional<std::int64_t> lastParcella;
    for (; !rows.AtEnd(); rows.MoveNext()) {
        const std::optional<Date> date = rows.DateOf(columns.data);
        if (!date) throw TypeMismatchError("La colonna DataAiFiniConvenzione non contiene una data.");
        const Date::Civil civil = date->ToCivil();
        if (civil.month != record.Mese) {
            if (record.Mese > 0) WriteLine(record.GetFormattedLine());
            StartMonth(record, rows, columns, civil);
        }
        record.NumeroPrestazioni =
            text::ToInt16(record.NumeroPrestazioni + rows.NumberOf(columns.quantita), "NumeroPrestazioni");
        record.ImportoLordo += rows.AmountOf(columns.totale);
        // A document's ticket counts once, in the month of its first row.
        const std::int64_t idParcella = rows.IntegerOf(columns.idParcella);
        if (idParcella != lastParcella) {
            record.Ticket += rows.AmountOf(columns.quotaTicket) + rows.AmountOf(columns.quotaRicetta);
            lastParcella = idParcella;
        }
    }
    if (record.Mese > 0) WriteLine(record.GetFormattedLine());
}

void SummaryRun::ShowDecoded(const std::string& path) { Component().ViewAsDecoded(path, ttS); }

}  // namespace vlm::sicilia
