#include "asltds/CurrentDatabase.h"

#include <utility>

#include "values/Utf8.h"

namespace vlm::host::tds {

void CurrentDatabase::Use(std::string_view name) {
    if (text::EqualNoCase(name, name_)) return writer_->DatabaseChanged(name_, name_);
    if (transactions_ > 0) {
        throw ServerError(kOther,
                          "Il database non si può cambiare in " + std::string(name) + " con una transazione aperta.");
    }
    connection_ = folder_->Open(name);
    const std::string before = std::exchange(name_, connection_->InitialCatalog());
    writer_->DatabaseChanged(name_, before);
}

void CurrentDatabase::Begin() {
    if (transactions_ == 0) {
        connection_->BeginTransaction();
        writer_->TransactionChanged(TransactionEvent::Begun, ++transaction_);
    }
    ++transactions_;
}

void CurrentDatabase::Commit() {
    if (transactions_ == 0) throw ServerError(kCommitWithoutBegin, "COMMIT senza una transazione aperta.");
    if (transactions_ == 1) {
        connection_->CommitTransaction();
        writer_->TransactionChanged(TransactionEvent::Committed, transaction_);
    }
    --transactions_;
}

void CurrentDatabase::Rollback() {
    if (transactions_ == 0) throw ServerError(kRollbackWithoutBegin, "ROLLBACK senza una transazione aperta.");
    transactions_ = 0;
    connection_->RollbackTransaction();
    writer_->TransactionChanged(TransactionEvent::RolledBack, transaction_);
}

}  // namespace vlm::host::tds
