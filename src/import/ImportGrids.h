#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "dialogs/Grid.h"
#include "elements/ElementList.h"

/// What the import dialog's grids show, and how it is printed.
namespace vlm {

/// The elements of one read as a grid shows them, with their selection. Rows that a filter hides stay, with the
/// selection they had. Elements count from 0 in the source's order.
class ElementGridModel : public ui::GridModel {
public:
    struct ShownColumn {
        ElementColumn column;
        const char* title;
        int width;
        bool visible = true;
    };

    /// Selected as the elements' `Selezionato` says. Of the elements' columns only those shown need be there.
    ElementGridModel(const std::vector<ShownColumn>& columns, ElementListPtr elements);

    /// Only the elements that the archive does not have, or all.
    void ShowOnlyNew(bool onlyNew);

    std::uint32_t ElementCount() const noexcept { return static_cast<std::uint32_t>(selected_.size()); }
    static constexpr std::uint32_t kNone = 0xFFFFFFFF;
    /// The row that shows an element; -1 for one that is hidden.
    int RowOf(std::uint32_t element) const;
    /// The element of a shown row.
    std::uint32_t ElementAt(int row) const { return shown_[static_cast<std::size_t>(row)]; }
    bool IsSelected(std::uint32_t element) const { return selected_[element]; }
    void Select(std::uint32_t element, bool selected) { selected_[element] = selected; }
    void SelectAll() { selected_.assign(selected_.size(), true); }
    std::size_t CountSelected() const;       // hidden ones too
    std::size_t CountShownSelected() const;  // what the user sees

    /// The element is that patient of the archive now.
    void SetPatient(std::uint32_t element, std::int64_t patient);

    /// The list, standing on that element.
    ElementList& At(std::uint32_t element) const;

    const std::vector<Column>& Columns() const override { return columns_; }
    int RowCount() const override { return static_cast<int>(shown_.size()); }
    std::string Cell(int row, int column) const override;

protected:
    std::vector<Column> columns_;  // more of them may stand behind those that are read from the elements

private:
    ElementListPtr elements_;
    std::vector<int> sources_;  // of each column read from the elements, their ordinal
    int patientOrdinal_;
    std::vector<bool> known_;           // by element: the archive has it
    std::vector<bool> selected_;        // by element
    std::vector<std::uint32_t> shown_;  // elements
};

/// The grids of the two kinds of lists.
std::shared_ptr<ElementGridModel> PatientGrid(ElementListPtr elements);
std::shared_ptr<ElementGridModel> ExemptionGrid(ElementListPtr elements);

/// The archive's patients that a source does not list any more.
class RevocableGridModel final : public ElementGridModel {
public:
    /// See PatientRevocation.
    explicit RevocableGridModel(ElementListPtr patients);

    std::int32_t PatientAt(int row) const;
    /// Surname and first name.
    std::string NameAt(int row) const {
        return TextAt(row, ElementColumn::Cognome) + " " + TextAt(row, ElementColumn::Nome);
    }
    /// dd/mm/yyyy; "" for none.
    std::string BirthDateAt(int row) const { return TextAt(row, ElementColumn::DataNascita); }
    bool IsRevoked(int row) const { return revoked_[ElementAt(row)]; }
    void SetRevoked(int row) { revoked_[ElementAt(row)] = true; }

    std::string Cell(int row, int column) const override;

private:
    std::string TextAt(int row, ElementColumn column) const;

    std::vector<bool> revoked_;  // by element, since the list was read
};

/// The rows that a grid shows as lines of text: the visible columns under their titles, as wide as their longest cell,
/// two blanks between them. Selected boxes are "x".
std::vector<std::string> PrintedTable(const ui::GridModel& model);

}  // namespace vlm
