#pragma once

#include <memory>

#include "database/Connection.h"
#include "database/MemoryRecordset.h"

namespace vlm::test {

/// A connection to an archive without rows.
class EmptyArchive final : public data::Connection {
public:
    bool IsOpen() const override { return true; }
    std::string InitialCatalog() const override { return "Studio0012"; }
    data::RecordsetPtr Open(std::string_view) override {
        auto rows = std::make_unique<data::MemoryRecordset>();
        rows->AppendColumn("IDPaziente", data::FieldType::Integer);
        for (const char* name : {"NumTesseraSanitaria", "NumAssistito", "CodiceFiscale", "Comune", "Cap"}) {
            rows->AppendColumn(name, data::FieldType::Text);
        }
        rows->Open();
        return rows;
    }
    std::int64_t Execute(std::string_view) override { return 0; }
    void BeginTransaction() override {}
    void CommitTransaction() override {}
    void RollbackTransaction() override {}
};

}  // namespace vlm::test
