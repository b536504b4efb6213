#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "database/Connection.h"
#include "database/MemoryRecordset.h"
#include "values/Error.h"

namespace vlm::test {

struct FakeTable {
    std::vector<std::string> columns;
    std::vector<std::vector<data::Value>> rows;
};

/// Every column is a text.
inline data::RecordsetPtr RowsOf(const FakeTable& table) {
    auto rows = std::make_unique<data::MemoryRecordset>();
    for (const std::string& name : table.columns) rows->AppendColumn(name, data::FieldType::Text);
    rows->Open();
    for (const auto& row : table.rows) {
        rows->AddNew();
        for (std::size_t column = 0; column < row.size(); ++column)
            rows->SetValue(static_cast<int>(column), row[column]);
        rows->Update();
    }
    rows->MoveFirst();
    return rows;
}

class FakeConnection : public data::Connection {
public:
    std::map<std::string, FakeTable> tables;  // by the query
    std::vector<std::string> asked;

    bool IsOpen() const override { return true; }
    std::string InitialCatalog() const override { return "Studio0012"; }
    data::RecordsetPtr Open(std::string_view sql) override {
        const auto table = tables.find(asked.emplace_back(sql));
        if (table == tables.end()) throw Error("Nessuna tabella per " + asked.back());
        return RowsOf(table->second);
    }
    std::int64_t Execute(std::string_view) override { return 0; }
    void BeginTransaction() override {}
    void CommitTransaction() override {}
    void RollbackTransaction() override {}
};

}  // namespace vlm::test
