#pragma once

#include <string>
#include <vector>

#include "ado/HostRecordset.h"
#include "automation/LateBound.h"
#include "database/UpdatableRecordset.h"

namespace vlm::data::ado {

/// The rows that a host's connection gave for a statement of ours, read once from first to last: in blocks where the
/// row set offers GetRows, else field by field.
class AdoRecordset final : public VariantRecordset {
public:
    /// `rows` is open and stands on its first row.
    explicit AdoRecordset(com::LateBound rows);
    ~AdoRecordset() override { Close(); }

    /// The first open row set from `rows` on, statements without rows being passed over; nothing when there is none.
    static com::LateBound FirstOpen(com::LateBound rows);

    int FieldCount() const override { return static_cast<int>(columns_.size()); }
    std::string_view FieldName(int ordinal) const override;
    FieldType TypeOf(int ordinal) const override;

    bool IsOpen() const override { return static_cast<bool>(rows_); }
    bool AtEnd() const override { return atEnd_; }
    void MoveNext() override;
    void Close() noexcept override;
    bool NextRecordset() override;

private:
    struct Column {
        std::string name;
        FieldType type;
    };

    const VARIANT& Cell(int ordinal) const override;
    void Bind();
    void Begin();
    void FetchBlock();
    void DropBlock() noexcept;

    com::LateBound rows_;
    com::LateBound fields_;
    std::vector<Column> columns_;
    bool inBlocks_ = false;
    bool atEnd_ = true;

    com::Variant block_;  // columns by rows
    const VARIANT* cells_ = nullptr;
    std::size_t rowsInBlock_ = 0;
    std::size_t row_ = 0;
    mutable std::vector<com::Variant> fetched_;  // of the current row, when it is read field by field
    mutable std::vector<bool> isFetched_;
};

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
