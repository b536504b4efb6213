#pragma once

#include <deque>
#include <exception>
#include <memory>

#include "OdbcStatement.h"
#include "database/Recordset.h"

namespace vlm::data::odbc {

/// The row sets of one call, one after the other: read from the server in blocks, or from memory once the connection
/// was wanted for another statement.
class OdbcRecordset final : public Recordset, private OdbcReader {
public:
    /// Runs the statement and stands on the first row of the first result that has rows.
    OdbcRecordset(std::shared_ptr<OdbcSession> session, std::string_view sql);
    ~OdbcRecordset() override { Close(); }

    int FieldCount() const override { return Rows().FieldCount(); }
    std::string_view FieldName(int ordinal) const override { return Rows().FieldName(ordinal); }
    FieldType TypeOf(int ordinal) const override { return Rows().TypeOf(ordinal); }

    bool IsOpen() const override { return rows_ != nullptr; }
    /// Rows that could not be read to their end have none: the error that ended them comes again until they are closed.
    bool AtEnd() const override;
    void MoveNext() override;
    void Close() noexcept override;
    bool NextRecordset() override;

    bool IsNull(int ordinal) const override { return Rows().IsNull(ordinal); }
    std::string_view TextOf(int ordinal) const override { return Rows().TextOf(ordinal); }
    double NumberOf(int ordinal) const override { return Rows().NumberOf(ordinal); }
    std::int64_t IntegerOf(int ordinal) const override { return Rows().IntegerOf(ordinal); }
    Currency AmountOf(int ordinal) const override { return Rows().AmountOf(ordinal); }
    std::optional<Date> DateOf(int ordinal) const override { return Rows().DateOf(ordinal); }
    Value ValueOf(int ordinal) const override { return Rows().ValueOf(ordinal); }
    std::optional<Date::Civil> CivilOf(int ordinal) const override { return Rows().CivilOf(ordinal); }

private:
    const Recordset& Rows() const;
    void ReadAhead() override;
    std::unique_ptr<Recordset> NextOfStatement();
    void EndStatement() noexcept;
    [[noreturn]] void Fail();

    std::shared_ptr<OdbcSession> session_;
    std::shared_ptr<OdbcStatement> statement_;  // while rows come from the server
    std::unique_ptr<Recordset> rows_;
    std::deque<std::unique_ptr<Recordset>> kept_;  // further results, read ahead
    std::exception_ptr failure_;
    std::unique_ptr<Recordset> left_;  // whose texts somebody may still hold until the next move
};

}  // namespace vlm::data::odbc
