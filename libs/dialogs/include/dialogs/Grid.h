#pragma once

#include <memory>
#include <string>
#include <vector>

#include "dialogs/Control.h"

namespace vlm::ui {

/// What a grid shows. The grid asks for cells as it needs them, so a model of 200,000 rows opens at once.
class GridModel {
public:
    struct Column {
        std::string name;
        std::string title;
        int width = 0;  // pixels at 96 dots an inch
        bool visible = true;
        bool checkBox = false;  // cells are "1" or "0"
        bool rightAligned = false;
        bool evenFont = false;  // every character as wide as the next, so that texts stand under each other
    };
    virtual ~GridModel() = default;
    virtual const std::vector<Column>& Columns() const = 0;
    /// Rows that are shown, numbered from 0.
    virtual int RowCount() const = 0;
    virtual std::string Cell(int row, int column) const = 0;
};

/// A grid without a model shows nothing.
class Grid : public Control {
public:
    Grid(Dialog& dialog, std::string name) : Control(dialog, ControlKind::Grid, std::move(name)) {}
    const GridModel* Model() const noexcept { return model_.get(); }
    /// No row is current afterwards; runs no handler.
    void SetModel(std::shared_ptr<const GridModel> model);
    /// The model's rows or cells changed. A current row that is no longer there becomes none; runs no handler.
    void Refresh();
    /// Another number after each SetModel and Refresh: a view that shows the same number need not read rows again.
    int Version() const noexcept { return version_; }
    int RowCount() const { return model_ ? model_->RowCount() : 0; }
    /// From 0, -1 for none. Moving the current row runs OnChange; a row that is not there is none.
    int CurrentRow() const noexcept { return current_; }
    void SetCurrentRow(int row);

    /// The user clicked the box in a column of boxes. The dialog sets its model's cell and calls Refresh; boxes of a
    /// grid without this handler cannot be clicked.
    std::function<void(int row, int column)> OnCheck;
    /// A click on that box; does nothing where there is none.
    void Check(int row, int column);

private:
    std::shared_ptr<const GridModel> model_;
    int current_ = -1;
    int version_ = 0;
};

/// The order in which a grid's rows are shown, which the user chooses by a column. Rows keep their numbers in the
/// model: what is shown in place 0 may be the model's row 7.
class RowOrder {
public:
    /// Dates by the day, numbers by their value, other columns as text without regard to case; empty cells come first.
    /// A column counts as dates or numbers when all its cells are. Equal rows keep the model's order.
    void Sort(const GridModel& model, int column, bool descending);
    /// The model's own order.
    void Clear() noexcept { rows_.clear(), places_.clear(); }

    /// The place itself when the rows are in the model's order or the place is not one of those sorted.
    int RowAt(int place) const noexcept;
    int PlaceOf(int row) const noexcept;

private:
    std::vector<int> rows_;    // by place
    std::vector<int> places_;  // by row
};

}  // namespace vlm::ui
