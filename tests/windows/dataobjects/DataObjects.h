#pragma once

#include <dataobjects.h>

#include "automation/Ref.h"
#include "database/Connection.h"

/// The data objects of a host, for tests: the whole tables for who knows them when compiled, the data objects' own
/// names and numbers for who calls by name. What reads forward, in blocks or row by row, what changes rows of a keyset,
/// what runs statements and transactions works; the rest fails with 0x800A0CB3. One thread uses them.
namespace vlm::test::dataobjects {

com::Ref<_Connection> NewConnection(data::ConnectionPtr native);

/// As long as it lives "ADODB.Recordset" makes these in this process.
class RecordsetClass {
public:
    /// Within an apartment of its own.
    RecordsetClass();
    RecordsetClass(const RecordsetClass&) = delete;
    RecordsetClass& operator=(const RecordsetClass&) = delete;
    ~RecordsetClass();

private:
    DWORD token_ = 0;
};

/// As long as it lives row sets give no blocks: GetRows is there by name, and answers E_NOTIMPL.
class WithoutBlocks {
public:
    WithoutBlocks() { ++alive; }
    WithoutBlocks(const WithoutBlocks&) = delete;
    WithoutBlocks& operator=(const WithoutBlocks&) = delete;
    ~WithoutBlocks() { --alive; }

    static inline int alive = 0;
};

}  // namespace vlm::test::dataobjects
