#include "OdbcRecordset.h"

#include <utility>

#include "OdbcRows.h"
#include "database/MemoryRecordset.h"
#include "values/Error.h"

namespace vlm::data::odbc {

OdbcRecordset::OdbcRecordset(std::shared_ptr<OdbcSession> session, std::string_view sql)
    : session_(std::move(session)) {
    session_->Claim(this);
    try {
        statement_ = std::make_shared<OdbcStatement>(session_);
        statement_->Execute(sql);
        if (statement_->ColumnCount() > 0) {
            rows_ = std::make_unique<OdbcRows>(statement_);
        } else {
            rows_ = NextOfStatement();
        }
    } catch (...) {
        Close();
        throw;
    }
}

/// Results without rows, such as the counts of changes inside a procedure, are passed over. Null at the end.
std::unique_ptr<Recordset> OdbcRecordset::NextOfStatement() {
    while (statement_ != nullptr && statement_->NextResult()) {
        if (statement_->ColumnCount() > 0) return std::make_unique<OdbcRows>(statement_);
    }
    EndStatement();
    return nullptr;
}

void OdbcRecordset::EndStatement() noexcept {
    statement_.reset();
    session_->Release(this);
}

/// With the error in hand: no rows are left that could pass for all of them.
void OdbcRecordset::Fail() {
    const std::exception_ptr failure = std::current_exception();
    Close();
    failure_ = failure;
    throw;
}

void OdbcRecordset::ReadAhead() {
    try {
        if (rows_ != nullptr) {
            static_cast<OdbcRows&>(*rows_).KeepTexts();
            std::unique_ptr<Recordset> rest = MemoryRecordset::CopyOf(*rows_);
            left_ = std::exchange(rows_, std::move(rest));
        }
        while (const std::unique_ptr<Recordset> next = NextOfStatement()) {
            kept_.push_back(MemoryRecordset::CopyOf(*next));
        }
    } catch (...) {
        Fail();
    }
}

bool OdbcRecordset::AtEnd() const {
    if (failure_) std::rethrow_exception(failure_);
    return rows_ == nullptr || rows_->AtEnd();
}

bool OdbcRecordset::NextRecordset() {
    if (failure_) std::rethrow_exception(failure_);
    try {
        left_.reset();
        rows_.reset();
        if (!kept_.empty()) {
            rows_ = std::move(kept_.front());
            kept_.pop_front();
        } else {
            rows_ = NextOfStatement();
        }
    } catch (...) {
        Fail();
    }
    return rows_ != nullptr;
}

void OdbcRecordset::MoveNext() {
    if (AtEnd()) throw Error("Le righe lette sono finite.");
    left_.reset();
    try {
        rows_->MoveNext();
    } catch (...) {
        Fail();
    }
}

void OdbcRecordset::Close() noexcept {
    failure_ = nullptr;
    rows_.reset();
    kept_.clear();
    left_.reset();
    EndStatement();
}

const Recordset& OdbcRecordset::Rows() const {
    if (failure_) std::rethrow_exception(failure_);
    if (rows_ == nullptr) throw Error("Le righe lette sono chiuse.");
    return *rows_;
}

}  // namespace vlm::data::odbc
