#pragma once

#include <memory>
#include <string>
#include <vector>

#include "database/Connection.h"
#include "dialogs/Grid.h"
#include "elements/ElementList.h"

namespace vlm {

/// The archive's patients that are not revoked and that a source does not list any more.
class RevocableGridModel final : public ui::GridModel {
public:
    /// Reads the archive against the elements: each of its patients is looked for among their `IDPaziente`.
    RevocableGridModel(data::Connection& connection, ElementList& elements);

    std::int32_t PatientAt(int row) const;
    /// Surname and first name.
    std::string NameAt(int row) const;
    /// dd/mm/yyyy; "" for none.
    std::string BirthDateAt(int row) const;
    bool IsRevoked(int row) const { return revoked_[static_cast<std::size_t>(row)]; }
    void SetRevoked(int row) { revoked_[static_cast<std::size_t>(row)] = true; }

    bool IsSelected(int row) const { return selected_[static_cast<std::size_t>(row)]; }
    void Select(int row, bool selected) { selected_[static_cast<std::size_t>(row)] = selected; }
    void SelectAll() { selected_.assign(selected_.size(), true); }
    std::size_t CountSelected() const;

    const std::vector<Column>& Columns() const override;
    int RowCount() const override { return static_cast<int>(selected_.size()); }
    std::string Cell(int row, int column) const override;

private:
    std::string TextAt(int row, int ordinal) const;

    std::unique_ptr<data::MemoryRecordset> rows_;
    std::vector<bool> selected_;
    std::vector<bool> revoked_;
};

}  // namespace vlm
