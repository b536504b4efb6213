#pragma once

#include <cstdint>
#include <functional>

#include "asltds/Faults.h"
#include "asltds/TokenWriter.h"

namespace vlm::host::tds {

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
    std::vector<ColumnFormat> SendColumns(const data::SqliteRecordset& rows);
    std::int64_t SendOne(data::SqliteRecordset& rows);

    PacketStream* packets_;
    TokenWriter* writer_;
    const Faults& faults_;
    std::function<void()> goAway_;
};

}  // namespace vlm::host::tds
