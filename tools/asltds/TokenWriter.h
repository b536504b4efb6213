#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string_view>
#include <vector>

#include "ColumnFormat.h"
#include "PacketStream.h"
#include "ServerError.h"
#include "asltds/TdsServer.h"

namespace vlm::host::tds {

/// The kinds of statement as a closing token numbers them; 0 is any other.
enum Command { kSelectCommand = 0xC1, kInsertCommand = 0xC3, kDeleteCommand = 0xC4, kUpdateCommand = 0xC5 };

/// What a closing token says is over.
enum class Done { Statement = 0xFD, Procedure = 0xFE, InProcedure = 0xFF };

enum class TransactionEvent { Begun = 8, Committed = 9, RolledBack = 10 };

/// Writes the tokens of one answer after another. What closes a statement says whether more follows, so it waits for
/// what comes next, or for Finish.
class TokenWriter {
public:
    explicit TokenWriter(PacketStream& packets) : packets_(&packets) {}

    /// Must be called before anything else is written.
    void SetVersion(std::uint32_t version) { version_ = version; }
    bool HasLargeTexts() const;

    void LoginAccepted();
    void DatabaseChanged(std::string_view now, std::string_view before);
    void PacketSizeChanged(std::size_t now, std::size_t before);
    void CollationChanged();
    /// Versions before 7.2 are not told.
    void TransactionChanged(TransactionEvent event, std::uint64_t transaction);

    void Failed(const ServerError& error);
    void Columns(const std::vector<ColumnFormat>& columns);
    /// Nothing of a row is written when a cell throws.
    void Row(const std::vector<ColumnFormat>& columns, const data::Recordset& rows);
    void ReturnStatus(int status);
    /// The output parameter that carries the number of a prepared statement.
    void ReturnHandle(int handle);

    /// `count` of rows, when there is one to tell. `command` is the statement's kind as the protocol numbers it.
    void Close(Done what, int command = 0, std::optional<std::int64_t> count = std::nullopt);
    /// Closes what went wrong.
    void CloseFailed(Done what);
    void CloseCancelled();
    /// Ends the answer.
    void Finish();

private:
    struct Closing {
        Done what = Done::Statement;
        int status = 0, command = 0;
        std::int64_t count = 0;
    };
    /// Starts a token; what waits for it goes first.
    void Begin(int token);
    void Send() { packets_->Put(token_.View()); }
    std::size_t BeginSized(int token);
    void SendSized(std::size_t size);
    void WriteClosing(bool more);

    PacketStream* packets_;
    std::uint32_t version_ = 0;
    ByteString token_;
    std::optional<Closing> closing_;
};

/// The client gave up on the answer.
class Cancelled {};

/// Sends row sets while they are read.
class RowSender {
public:
    /// `goAway` is called when a fault says so, and the connection has ended.
    RowSender(PacketStream& packets, TokenWriter& writer, const Faults& faults, std::function<void()> goAway)
        : packets_(&packets), writer_(&writer), faults_(faults), goAway_(std::move(goAway)) {}

    /// Every row set of a statement, each closed by `what`; `counted` tells how many rows it had.
    void Send(data::Recordset& rows, Done what, bool counted);
    /// The columns of the first row set, as if it had no rows.
    void Describe(const data::Recordset& rows);

private:
    std::vector<ColumnFormat> SendColumns(const data::Recordset& rows);
    std::int64_t SendOne(data::Recordset& rows);

    PacketStream* packets_;
    TokenWriter* writer_;
    const Faults& faults_;
    std::function<void()> goAway_;
};

}  // namespace vlm::host::tds
