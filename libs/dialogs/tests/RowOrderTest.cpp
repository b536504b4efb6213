#include <gtest/gtest.h>

#include "dialogs/RowOrder.h"

namespace vlm::ui::test {
namespace {

class OneColumn : public GridModel {
public:
    explicit OneColumn(std::vector<std::string> cells) : cells_(std::move(cells)) {}
    const std::vector<Column>& Columns() const override { return columns_; }
    int RowCount() const override { return static_cast<int>(cells_.size()); }
    std::string Cell(int row, int) const override { return cells_.at(static_cast<std::size_t>(row)); }

private:
    std::vector<Column> columns_{{"A", "A"}};
    std::vector<std::string> cells_;
};

std::string Shown(const GridModel& model, const RowOrder& order) {
    std::string shown;
    for (int place = 0; place < model.RowCount(); ++place) {
        EXPECT_EQ(order.PlaceOf(order.RowAt(place)), place);
        shown += (place > 0 ? "|" : "") + model.Cell(order.RowAt(place), 0);
    }
    return shown;
}

TEST(RowOrderTest, EachColumnIsSortedAsWhatItHolds) {
    struct Case {
        std::vector<std::string> cells;
        const char *ascending, *descending;
    };
    for (const Case& each :
         {Case{{"02/03/2011", "15/01/2012", "", "31/12/2010"},
               "|31/12/2010|02/03/2011|15/01/2012",
               "15/01/2012|02/03/2011|31/12/2010|"},
          Case{{"1.234,50", "9", "-3", "20,66"}, "-3|9|20,66|1.234,50", "1.234,50|20,66|9|-3"},
          Case{{"rossi", "Bianchi", "ÈVA", "èva"}, "Bianchi|rossi|ÈVA|èva", "ÈVA|èva|rossi|Bianchi"},
          Case{{"02/03/2011", "10/01/2011", "mai"}, "02/03/2011|10/01/2011|mai", "mai|10/01/2011|02/03/2011"},
          Case{{"10", "9", "A1"}, "10|9|A1", "A1|9|10"}, Case{{"1", "0", "1", "0"}, "0|0|1|1", "1|1|0|0"}}) {
        const OneColumn model(each.cells);
        RowOrder order;
        order.Sort(model, 0, false);
        EXPECT_EQ(Shown(model, order), each.ascending);
        order.Sort(model, 0, true);
        EXPECT_EQ(Shown(model, order), each.descending);
        order.Clear();
        EXPECT_EQ(order.RowAt(1), 1);
    }
}

TEST(RowOrderTest, EqualRowsKeepTheirOrderAndOtherPlacesAreThemselves) {
    const OneColumn model({"b", "a", "B", "A"});
    RowOrder order;
    order.Sort(model, 0, true);
    EXPECT_EQ(Shown(model, order), "b|B|a|A");
    for (const int place : {-1, 4, 100}) {
        EXPECT_EQ(order.RowAt(place), place);
        EXPECT_EQ(order.PlaceOf(place), place);
    }
    order.Sort(OneColumn({}), 0, false);
    EXPECT_EQ(order.RowAt(0), 0);
}

}  // namespace
}  // namespace vlm::ui::test
