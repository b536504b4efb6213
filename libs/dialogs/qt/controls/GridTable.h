#pragma once

#include <QTableView>

namespace vlm::ui {

/// A table of rows, of which one or none is current. The arrow keys start at the first row; the space bar clicks the
/// current row's selection box wherever the row was clicked.
class GridTable : public QTableView {
public:
    explicit GridTable(QWidget* parent = nullptr);
    /// -1 when no row is current.
    int CurrentPlace() const;
    void MakeCurrent(int place);

    QSize sizeHint() const override;

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    /// The selection box of the current row; an index that is not valid for none.
    QModelIndex CurrentBox() const;
};

}  // namespace vlm::ui
