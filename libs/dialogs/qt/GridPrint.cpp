#include "GridPrint.h"

#include <QPainter>
#include <QPdfWriter>
#include <algorithm>

#include "controls/QtText.h"
#include "values/Error.h"

namespace vlm::ui {

namespace {

constexpr int kDots = 300;       // an inch
constexpr double kMargin = 12;   // millimetres
constexpr int kLeastWidth = 20;  // of a column, in the grid's pixels
constexpr int kTextPoints = 8;
constexpr int kTitlePoints = 12;

/// The pages of one print.
class Pages {
public:
    Pages(const Grid& grid, const std::string& title, QPdfWriter& writer)
        : grid_(grid), title_(ToQt(title)), writer_(writer), painter_(&writer) {
        painter_.setFont(QFont("sans-serif", kTextPoints));
        lineHeight_ = painter_.fontMetrics().height() * 5 / 4;
        MeasureColumns();
        StartPage();
    }

    bool Began() const { return painter_.isActive(); }

    void PrintRow(int row) {
        if (y_ + lineHeight_ > writer_.height() - lineHeight_) {
            writer_.newPage();
            StartPage();
        }
        for (const Column& column : columns_) {
            const std::string cell = grid_.Model()->Cell(row, column.index);
            PrintCell(column, column.box ? (cell == "1" ? "✗" : "") : ToQt(cell));
        }
        y_ += lineHeight_;
    }

private:
    struct Column {
        int index;
        int left;
        int width;
        bool right;
        bool box;
    };

    /// The columns share the page as their widths share the grid.
    void MeasureColumns() {
        const std::vector<GridModel::Column>& all = grid_.Model()->Columns();
        int total = 0;
        for (const GridModel::Column& column : all) total += column.visible ? std::max(column.width, kLeastWidth) : 0;
        int left = 0;
        for (std::size_t i = 0; i < all.size(); ++i) {
            if (!all[i].visible) continue;
            const int width = writer_.width() * std::max(all[i].width, kLeastWidth) / total;
            columns_.push_back({static_cast<int>(i), left, width, all[i].rightAligned, all[i].checkBox});
            left += width;
        }
    }

    void StartPage() {
        ++page_;
        painter_.setFont(QFont("sans-serif", kTitlePoints, QFont::Bold));
        y_ = painter_.fontMetrics().height();
        painter_.drawText(0, painter_.fontMetrics().ascent(), title_);
        painter_.setFont(QFont("sans-serif", kTextPoints));
        painter_.drawText(QRect(0, 0, writer_.width(), y_), Qt::AlignRight | Qt::AlignVCenter,
                          QString("Pagina %1").arg(page_));
        y_ += lineHeight_ / 2;
        for (const Column& column : columns_) {
            PrintCell(column, ToQt(grid_.Model()->Columns()[static_cast<std::size_t>(column.index)].title));
        }
        y_ += lineHeight_;
        painter_.drawLine(0, y_, writer_.width(), y_);
        y_ += lineHeight_ / 4;
    }

    void PrintCell(const Column& column, const QString& text) {
        const int gap = lineHeight_ / 3;
        const QRect place(column.left, y_, column.width - gap, lineHeight_);
        const QString fitting = painter_.fontMetrics().elidedText(text, Qt::ElideRight, place.width());
        painter_.drawText(place, Qt::AlignVCenter | (column.right ? Qt::AlignRight : Qt::AlignLeft), fitting);
    }

    const Grid& grid_;
    QString title_;
    QPdfWriter& writer_;
    QPainter painter_;
    std::vector<Column> columns_;
    int lineHeight_ = 0;
    int y_ = 0;
    int page_ = 0;
};

}  // namespace

void PrintGrid(const Grid& grid, const std::string& title, const std::string& path,
               const std::function<int(int place)>& rowAt) {
    if (grid.Model() == nullptr) throw Error("Non c'è nulla da stampare.");
    QPdfWriter writer(ToQt(path));
    writer.setResolution(kDots);
    writer.setTitle(ToQt(title));
    writer.setPageLayout(QPageLayout(QPageSize(QPageSize::A4), QPageLayout::Landscape,
                                     QMarginsF(kMargin, kMargin, kMargin, kMargin), QPageLayout::Millimeter));
    Pages pages(grid, title, writer);
    if (!pages.Began()) throw Error("Impossibile scrivere la stampa in " + path + ".");
    for (int place = 0; place < grid.RowCount(); ++place) pages.PrintRow(rowAt(place));
}

}  // namespace vlm::ui
