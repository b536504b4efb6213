#pragma once

#include "ado/HostRecordset.h"
#include "database/ForwardingRecordset.h"

namespace vlm::data::ado {

/// Rows of a host's connection that are changed in place, called by name.
class AdoUpdatableRecordset final : public ForwardingRecordset {
public:
    /// `rows` is open and stands on its first row.
    explicit AdoUpdatableRecordset(com::LateBound rows) : rows_(std::move(rows)), read_(rows_.Object()) {}
    ~AdoUpdatableRecordset() override { Close(); }

    void MoveNext() override;
    void Close() noexcept override;

    void AddNew() override;
    void SetValue(int ordinal, const Value& value) override;
    void Update() override;
    void CancelUpdate() override;

private:
    const Recordset& Rows() const override { return read_; }

    com::LateBound rows_;
    HostRecordset read_;
    bool editing_ = false;
};

}  // namespace vlm::data::ado
