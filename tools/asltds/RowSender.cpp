#include "asltds/RowSender.h"

#include "StatementKinds.h"
#include "asltds/ServerError.h"

namespace vlm::host::tds {

void RowSender::Send(data::Recordset& rows, Done what, bool counted) {
    auto& engineRows = dynamic_cast<data::SqliteRecordset&>(rows);
    if (!engineRows.IsOpen()) return writer_->Close(what);
    do {
        const std::int64_t count = SendOne(engineRows);
        writer_->Close(what, kSelectCommand, counted ? std::optional(count) : std::nullopt);
    } while (engineRows.NextRecordset());
}

void RowSender::Describe(const data::Recordset& rows) {
    SendColumns(dynamic_cast<const data::SqliteRecordset&>(rows));
    writer_->Close(Done::InProcedure, kSelectCommand);
}

std::vector<ColumnFormat> RowSender::SendColumns(const data::SqliteRecordset& rows) {
    std::vector<ColumnFormat> columns;
    columns.reserve(static_cast<std::size_t>(rows.FieldCount()));
    for (int ordinal = 0; ordinal < rows.FieldCount(); ++ordinal) {
        columns.emplace_back(rows, ordinal, writer_->HasLargeTexts());
    }
    writer_->Columns(columns);
    return columns;
}

std::int64_t RowSender::SendOne(data::SqliteRecordset& rows) {
    const std::vector<ColumnFormat> columns = SendColumns(rows);
    std::int64_t count = 0;
    for (; !rows.AtEnd(); rows.MoveNext()) {
        writer_->Row(columns, rows);
        if (++count == faults_.failAfterRows) {
            throw ServerError(kDeadlockVictim, "La transazione è stata annullata a favore di un altro utente.", 13);
        }
        if (count == faults_.endAfterRows) {
            packets_->Flush();
            goAway_();
            throw ConnectionEnded();
        }
        if (packets_->WasCancelled()) throw Cancelled();
    }
    return count;
}

}  // namespace vlm::host::tds
