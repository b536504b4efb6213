#pragma once

#include <memory>
#include <string>
#include <vector>

#include "SqlTranslator.h"
#include "SqliteSession.h"
#include "database/Recordset.h"

struct sqlite3_value;

namespace vlm::data {

/// The rows that one or several statements give, read from the engine one at a time. Column types are those declared;
/// an expression has the type Date when it is made of dates, else that of its cell in the first row, Text without one.
class SqliteRecordset final : public Recordset {
public:
    /// Stands on the first row of the first statement that gives rows. Statements without rows are run on the way.
    SqliteRecordset(std::shared_ptr<SqliteSession> session, std::vector<SqlStatement> statements);
    ~SqliteRecordset() override;

    int FieldCount() const override { return static_cast<int>(columns_.size()); }
    std::string_view FieldName(int ordinal) const override;
    FieldType TypeOf(int ordinal) const override;
    /// As the table declares the column ("VARCHAR(30)"); "" for an expression.
    std::string_view DeclaredType(int ordinal) const { return At(ordinal).declared; }

    bool IsOpen() const override { return statement_ != nullptr; }
    bool AtEnd() const override { return !hasRow_; }
    void MoveNext() override;
    void Close() noexcept override;
    bool NextRecordset() override;

    bool IsNull(int ordinal) const override;
    std::string_view TextOf(int ordinal) const override;
    double NumberOf(int ordinal) const override;
    std::int64_t IntegerOf(int ordinal) const override;
    Currency AmountOf(int ordinal) const override;
    std::optional<Date> DateOf(int ordinal) const override;
    Value ValueOf(int ordinal) const override;
    std::optional<Date::Civil> CivilOf(int ordinal) const override;

private:
    struct Column {
        std::string name;
        std::string declared;
        FieldType type = FieldType::Text;
        mutable std::string text;  // what TextOf of a cell that is no text hands out
        // The rows of one document repeat their dates: the last one is read once.
        mutable std::string dateText;
        mutable Date::Civil date;
    };

    const Column& At(int ordinal) const;
    sqlite3_value* Cell(int ordinal) const;
    void BindColumns();
    void CloseCurrent() noexcept;

    std::shared_ptr<SqliteSession> session_;
    std::vector<SqlStatement> statements_;
    std::size_t next_ = 0;  // the statement that NextRecordset runs
    SqliteStatementPtr statement_;
    std::vector<Column> columns_;
    bool hasRow_ = false;
};

}  // namespace vlm::data
