#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "OdbcColumn.h"
#include "database/Recordset.h"
#include "values/Error.h"

namespace vlm::data::odbc {

/// The rows of one result, forward-only. The driver writes a block of rows at a time into one buffer, row by row with
/// every cell at its place, so that reading a cell calls nothing. Where a column's length is not known, rows come one
/// at a time, and that column and those behind it are asked for one by one, in order, as all drivers allow it.
class OdbcRows final : public Recordset {
public:
    explicit OdbcRows(std::shared_ptr<OdbcStatement> statement);

    int FieldCount() const override { return static_cast<int>(columns_.size()); }
    std::string_view FieldName(int ordinal) const override;
    FieldType TypeOf(int ordinal) const override;
    bool IsOpen() const override { return statement_ != nullptr; }
    bool AtEnd() const override { return row_ == rows_; }
    void MoveNext() override;
    void Close() noexcept override;

    /// Texts handed out so far stay as they are however far the rows move, until these rows are gone.
    void KeepTexts();

    bool IsNull(int ordinal) const override;
    std::string_view TextOf(int ordinal) const override;
    double NumberOf(int ordinal) const override;
    std::int64_t IntegerOf(int ordinal) const override;
    Currency AmountOf(int ordinal) const override;
    std::optional<Date> DateOf(int ordinal) const override;
    Value ValueOf(int ordinal) const override;
    std::optional<Date::Civil> CivilOf(int ordinal) const override;

private:
    /// What TextOf hands out, kept until the row moves.
    struct Shown {
        std::string text;
        std::uint64_t row = 0;
    };

    void LayOut();
    void Bind();
    void Fetch();
    void ReadUnbound();
    void ReadUnbounded(std::size_t ordinal);
    SQLLEN& Length(std::size_t ordinal);

    const OdbcColumn& Column(int ordinal) const;
    /// The column, when there is a row to read it from.
    const OdbcColumn& Cell(int ordinal) const {
        if (row_ == rows_) throw Error("Non c'è una riga corrente da leggere.");
        return Column(ordinal);
    }
    const char* Content(const OdbcColumn& column) const;
    SQLLEN LengthOf(const OdbcColumn& column) const;
    bool IsNull(const OdbcColumn& column) const { return LengthOf(column) == SQL_NULL_DATA; }
    /// Nothing for a column of another kind.
    std::optional<std::int64_t> WholeCell(const OdbcColumn& column) const;
    template <typename T>
    T Load(const OdbcColumn& column) const;
    std::string_view Digits(const OdbcColumn& column) const;
    std::string_view WideCell(int ordinal, const OdbcColumn& column) const;
    Date::Civil Moment(const OdbcColumn& column) const;
    Date DateAt(const OdbcColumn& column) const;

    std::shared_ptr<OdbcStatement> statement_;
    std::vector<OdbcColumn> columns_;
    std::size_t bound_ = 0;  // columns that come in blocks
    std::size_t rowSize_ = 0;
    std::vector<std::uint64_t> buffer_;  // for its alignment
    std::vector<SQLUSMALLINT> statuses_;
    SQLULEN rows_ = 0;  // in the buffer
    SQLULEN row_ = 0;   // the current one among them
    std::uint64_t rowNumber_ = 0;
    mutable std::vector<Shown> shown_;  // by ordinal
    std::vector<Shown> handedOut_;
};

}  // namespace vlm::data::odbc
