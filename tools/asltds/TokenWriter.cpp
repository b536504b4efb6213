#include "TokenWriter.h"

#include "values/Utf8.h"

namespace vlm::host::tds {

namespace {

enum Token {
    kReturnStatusToken = 0x79,
    kColumnsToken = 0x81,
    kErrorToken = 0xAA,
    kReturnValueToken = 0xAC,
    kLoginToken = 0xAD,
    kRowToken = 0xD1,
    kChangeToken = 0xE3,
};

enum Change { kDatabaseChange = 1, kPacketSizeChange = 4, kCollationChange = 7 };
enum Status { kMore = 1, kError = 2, kCount = 0x10, kAttention = 0x20 };

constexpr std::uint32_t kVersion72 = 0x72090002;
constexpr int kIntN = 0x26;
constexpr std::string_view kProduct = "Microsoft SQL Server";
constexpr std::string_view kServerName = "asltds";
constexpr std::size_t kLongestText = 2048;             // characters of an error's text
constexpr std::uint64_t kProductVersion = 0xD007000F;  // 15.0.2000

}  // namespace

bool TokenWriter::HasLargeTexts() const { return version_ >= kVersion72; }

void TokenWriter::WriteClosing(bool more) {
    if (!closing_) return;
    const Closing closing = *closing_;
    closing_.reset();
    token_.Clear();
    token_.Add(static_cast<int>(closing.what), 1);
    token_.Add(closing.status | (more ? kMore : 0), 2);
    token_.Add(closing.command, 2);
    token_.Add(closing.count, HasLargeTexts() ? 8 : 4);
    Send();
}

void TokenWriter::Begin(int token) {
    WriteClosing(true);
    token_.Clear();
    token_.Add(token, 1);
}

std::size_t TokenWriter::BeginSized(int token) {
    Begin(token);
    return token_.Reserve(2);
}

void TokenWriter::SendSized(std::size_t size) {
    token_.Fill(size, token_.Size() - size - 2, 2);
    Send();
}

void TokenWriter::LoginAccepted() {
    const std::size_t size = BeginSized(kLoginToken);
    token_.Add(1, 1);  // statements are T-SQL
    for (int shift = 24; shift >= 0; shift -= 8) token_.Add(version_ >> shift, 1);
    token_.AddCounted(kProduct, 1);
    token_.Add(kProductVersion, 4);
    SendSized(size);
}

void TokenWriter::DatabaseChanged(std::string_view now, std::string_view before) {
    const std::size_t size = BeginSized(kChangeToken);
    token_.Add(kDatabaseChange, 1);
    token_.AddCounted(now, 1);
    token_.AddCounted(before, 1);
    SendSized(size);
}

void TokenWriter::PacketSizeChanged(std::size_t now, std::size_t before) {
    const std::size_t size = BeginSized(kChangeToken);
    token_.Add(kPacketSizeChange, 1);
    token_.AddCounted(std::to_string(now), 1);
    token_.AddCounted(std::to_string(before), 1);
    SendSized(size);
}

void TokenWriter::CollationChanged() {
    const std::size_t size = BeginSized(kChangeToken);
    token_.Add(kCollationChange, 1);
    token_.Add(kLatinCollation.size(), 1);
    token_.Add(kLatinCollation);
    token_.Add(0, 1);
    SendSized(size);
}

void TokenWriter::TransactionChanged(TransactionEvent event, std::uint64_t transaction) {
    if (!HasLargeTexts()) return;
    const std::size_t size = BeginSized(kChangeToken);
    token_.Add(static_cast<int>(event), 1);
    const bool begun = event == TransactionEvent::Begun;
    if (!begun) token_.Add(0, 1);
    token_.Add(8, 1);
    token_.Add(transaction, 8);
    if (begun) token_.Add(0, 1);
    SendSized(size);
}

void TokenWriter::Failed(const ServerError& error) {
    const std::size_t size = BeginSized(kErrorToken);
    token_.Add(static_cast<std::uint64_t>(error.Number()), 4);
    token_.Add(1, 1);  // state
    token_.Add(error.Severity(), 1);
    token_.AddCounted(text::Left(error.what(), kLongestText), 2);
    token_.AddCounted(kServerName, 1);
    token_.AddCounted("", 1);  // procedure
    token_.Add(1, HasLargeTexts() ? 4 : 2);
    SendSized(size);
}

void TokenWriter::Columns(const std::vector<ColumnFormat>& columns) {
    Begin(kColumnsToken);
    token_.Add(columns.size(), 2);
    for (const ColumnFormat& column : columns) column.AddDescription(token_);
    Send();
}

void TokenWriter::Row(const std::vector<ColumnFormat>& columns, const data::Recordset& rows) {
    Begin(kRowToken);
    for (const ColumnFormat& column : columns) column.AddCell(rows, token_);
    Send();
}

void TokenWriter::ReturnStatus(int status) {
    Begin(kReturnStatusToken);
    token_.Add(status, 4);
    Send();
}

void TokenWriter::ReturnHandle(int handle) {
    Begin(kReturnValueToken);
    token_.Add(0, 2);  // the first parameter
    token_.Add(0, 1);  // without a name
    token_.Add(1, 1);  // of a procedure
    token_.Add(0, HasLargeTexts() ? 4 : 2);
    token_.Add(0, 2);
    token_.Add(kIntN | 4 << 8, 2);
    token_.Add(4, 1);
    token_.Add(handle, 4);
    Send();
}

void TokenWriter::Close(Done what, int command, std::optional<std::int64_t> count) {
    WriteClosing(true);
    closing_ = Closing{what, count ? kCount : 0, command, count.value_or(0)};
}

void TokenWriter::CloseFailed(Done what) {
    WriteClosing(true);
    closing_ = Closing{what, kError, 0, 0};
}

void TokenWriter::CloseCancelled() {
    WriteClosing(true);
    closing_ = Closing{Done::Statement, kAttention, 0, 0};
}

void TokenWriter::Finish() {
    WriteClosing(false);
    packets_->End();
}

void RowSender::Send(data::Recordset& rows, Done what, bool counted) {
    if (!rows.IsOpen()) return writer_->Close(what);
    do {
        const std::int64_t count = SendOne(rows);
        writer_->Close(what, kSelectCommand, counted ? std::optional(count) : std::nullopt);
    } while (rows.NextRecordset());
}

void RowSender::Describe(const data::Recordset& rows) {
    SendColumns(rows);
    writer_->Close(Done::InProcedure, kSelectCommand);
}

std::vector<ColumnFormat> RowSender::SendColumns(const data::Recordset& rows) {
    std::vector<ColumnFormat> columns;
    columns.reserve(static_cast<std::size_t>(rows.FieldCount()));
    for (int ordinal = 0; ordinal < rows.FieldCount(); ++ordinal) {
        columns.emplace_back(rows, ordinal, writer_->HasLargeTexts());
    }
    writer_->Columns(columns);
    return columns;
}

std::int64_t RowSender::SendOne(data::Recordset& rows) {
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
