#pragma once

#include <deque>
#include <string>

#include "OdbcStatement.h"
#include "values/Value.h"

namespace vlm::data::odbc {

/// The values of a statement's "?", in order. They must live until the statement has run.
class OdbcParameters {
public:
    explicit OdbcParameters(const OdbcStatement& statement) : statement_(&statement) {}
    OdbcParameters(const OdbcParameters&) = delete;
    OdbcParameters& operator=(const OdbcParameters&) = delete;

    /// `type` is that of the column, which a Null needs too.
    void Add(const Value& value, FieldType type);

private:
    /// One value as the driver reads it: only the member of its kind counts.
    struct Parameter {
        SQLLEN length = SQL_NULL_DATA;
        SQLCHAR truth = 0;
        SQLBIGINT whole = 0;
        SQLDOUBLE number = 0;
        SQL_TIMESTAMP_STRUCT moment{};
        std::string digits;
        WideText text;
    };
    /// In which form the driver gets the value, and what it is for the server.
    struct Form {
        SQLSMALLINT bufferType, sqlType;
        SQLULEN size;
        SQLSMALLINT decimals = 0;
    };
    void Bind(const Form& form, Parameter& parameter, SQLPOINTER content, std::size_t bytes);

    const OdbcStatement* statement_;
    std::deque<Parameter> parameters_;  // which stay where they are
};

}  // namespace vlm::data::odbc
