#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "database/Connection.h"

namespace vlm {

/// Looks around a run that marks billing documents, so that two clerks do not send one document twice and none is
/// marked that no file has. A run marks what its filter matches, and others work meanwhile: another run may mark the
/// same documents first, and a colleague may enter one after the rows were read.
///
/// The steps in their order: LookBefore, Written for each document, and inside the transaction LookAgain, the marking,
/// GiveBack. Keys take four bytes each.
class DocumentLook {
public:
    /// `where` is the marking filter, a condition on Parcella that matches documents that are not marked.
    explicit DocumentLook(std::string where) : where_(std::move(where)) {}

    /// Before the rows are read: what the filter matches.
    void LookBefore(data::Connection& connection);
    /// A document that has its place in the file.
    void Written(std::int32_t idParcella) { written_.push_back(idParcella); }
    /// Makes the transaction the only one that marks, and looks what the filter matches now. Throws Error when another
    /// run has marked documents that were written.
    void LookAgain(data::Connection& connection);
    /// After a marking by the filter: documents that came up in between get back what they had. `marked` is the number
    /// of documents that the statement says it marked, 0 when it does not say. Throws Error when more came up while the
    /// filter was at work.
    void GiveBack(data::Connection& connection, std::int64_t marked) const;

private:
    void RefuseTaken(data::Connection& connection, const std::vector<std::int32_t>& gone) const;

    std::string where_;
    std::vector<std::int32_t> before_;
    std::vector<std::int32_t> written_;
    std::size_t matched_ = 0;                    // inside the transaction
    std::vector<std::int32_t> late_, lateZero_;  // came up in between, with NULL and with 0
};

}  // namespace vlm
