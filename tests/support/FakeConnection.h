#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "database/Connection.h"
#include "values/Error.h"

namespace vlm::test {

/// The rows of one query, given by the test.
struct FakeTable {
    std::vector<std::string> columns;
    std::vector<std::vector<data::Value>> rows;
};

class FakeRecordset : public data::Recordset {
public:
    explicit FakeRecordset(const FakeTable& table) : table_(table) {}

    int FieldCount() const override { return static_cast<int>(table_.columns.size()); }
    std::string_view FieldName(int ordinal) const override { return table_.columns.at(ordinal); }
    data::FieldType TypeOf(int) const override { return data::FieldType::Text; }
    bool IsOpen() const override { return true; }
    bool AtEnd() const override { return row_ >= table_.rows.size(); }
    void MoveNext() override { ++row_; }
    void Close() noexcept override {}
    bool IsNull(int ordinal) const override { return data::IsNull(ValueOf(ordinal)); }
    std::string_view TextOf(int ordinal) const override { return text_ = data::TextOf(ValueOf(ordinal)); }
    double NumberOf(int ordinal) const override { return data::NumberOf(ValueOf(ordinal)); }
    std::int64_t IntegerOf(int ordinal) const override { return static_cast<std::int64_t>(NumberOf(ordinal)); }
    Currency AmountOf(int ordinal) const override { return data::AmountOf(ValueOf(ordinal), "valore"); }
    std::optional<Date> DateOf(int ordinal) const override { return data::DateOf(ValueOf(ordinal), "valore"); }
    data::Value ValueOf(int ordinal) const override { return table_.rows.at(row_).at(ordinal); }

private:
    const FakeTable& table_;
    std::size_t row_ = 0;
    mutable std::string text_;  // one read at a time, as the interface allows
};

class FakeConnection : public data::Connection {
public:
    std::map<std::string, FakeTable> tables;

    bool IsOpen() const override { return true; }
    std::string InitialCatalog() const override { return "Studio0012"; }
    data::RecordsetPtr Open(std::string_view sql) override {
        const auto table = tables.find(std::string(sql));
        if (table == tables.end()) throw Error("Nessuna tabella per " + std::string(sql));
        return std::make_unique<FakeRecordset>(table->second);
    }
    std::int64_t Execute(std::string_view) override { return 0; }
    void BeginTransaction() override {}
    void CommitTransaction() override {}
    void RollbackTransaction() override {}
};

}  // namespace vlm::test
