#include <gtest/gtest.h>
#include <limits>

#include "support/SampleDialog.h"
#include "support/Words.h"
#include "values/Error.h"

namespace vlm::ui::test {
namespace {

using vlm::test::WordsOf;
using Calls = std::vector<std::string>;

/// Writes down what the dialog tells its view.
class NotingView : public DialogView {
public:
    void ControlChanged(Control& control) override { seen.push_back(control.Name()); }
    void FocusMoved(Control& control) override { seen.push_back("focus " + control.Name()); }
    void Repaint() override { seen.push_back("repaint"); }
    void Close() override { seen.push_back("close"); }

    Calls seen;
};

TEST(DialogModel, HandlersRunWhenTheValueChangesAndChoicesAlwaysDo) {
    SampleDialog dialog;
    NotingView view;
    dialog.Attach(&view);
    for (int round = 0; round < 2; ++round) {  // the second round sets what is there already
        dialog.txtNome.SetText("A");
        dialog.numAnno.SetValue(2012);
        dialog.dtData.SetValue(Date::FromYmd(2012, 2, 1));
        dialog.chkSimula.SetChecked(true);
        dialog.lstTipi.SetSelected({0, 2, 7, -1});
        dialog.optTipo.SetPosition(1);
        dialog.lstMese.SetPosition(9);
        dialog.cboBranca.SelectKey(9);
        dialog.cboBranca.SelectIndex(5);
        dialog.grdElenco.SetCurrentRow(1);
        dialog.prgLettura.SetValue(250);
    }
    const Calls calls = WordsOf(
        "txtNome numAnno dtData chkSimula lstTipi optTipo lstMese cboBranca cboBranca grdElenco prgLettura "
        "optTipo lstMese cboBranca cboBranca");
    EXPECT_EQ(dialog.calls, calls);
    Calls seen = calls;
    seen.insert(seen.begin() + 11, "repaint");
    EXPECT_EQ(view.seen, seen);
    EXPECT_EQ(dialog.lstTipi.Selected(), (std::set<int>{0, 2}));
    EXPECT_EQ(dialog.lstMese.Position(), -1);
    EXPECT_EQ(dialog.cboBranca.SelectedKey(), 0);
    EXPECT_EQ(dialog.prgLettura.Value(), 100);
}

TEST(DialogModel, StatesAndNewEntriesTellTheViewButRunNoHandler) {
    SampleDialog dialog;
    dialog.optTipo.SetPosition(1);
    dialog.lstTipi.SetSelected({1});
    dialog.grdElenco.SetCurrentRow(1);
    dialog.calls.clear();
    NotingView view;
    dialog.Attach(&view);
    dialog.cmdOk.SetCaption("&Revoca");
    dialog.cmdOk.SetEnabled(false);
    dialog.cmdOk.SetVisible(false);
    dialog.cmdOk.SetVisible(false);
    dialog.optTipo.SetItems({"A", "B"});
    dialog.lstTipi.SetItems({"A", "B"});
    dialog.model->cells.pop_back();
    dialog.grdElenco.Refresh();
    dialog.txtNome.SetFocus();
    EXPECT_EQ(dialog.calls, Calls());
    EXPECT_EQ(view.seen, (Calls{"cmdOk", "cmdOk", "cmdOk", "optTipo", "lstTipi", "grdElenco", "focus txtNome"}));
    EXPECT_EQ(dialog.optTipo.Position(), -1);
    EXPECT_TRUE(dialog.lstTipi.Selected().empty());
    EXPECT_EQ(dialog.grdElenco.CurrentRow(), -1);
}

TEST(DialogModel, NumberFieldsTakeOnlyWhatFits) {
    SampleDialog dialog;
    const auto taken = [&dialog](double value) {
        dialog.numPeso.SetValue(3);
        const bool accepted = dialog.numPeso.SetValue(value);
        EXPECT_EQ(dialog.numPeso.Value(), accepted ? value : 3) << value;
        return accepted;
    };
    for (const double value : {-5.0, 10.0, 1.25, 0.07, 0.0}) EXPECT_TRUE(taken(value)) << value;
    for (const double value : {10.01, -5.01, 1.255, 0.001, std::numeric_limits<double>::quiet_NaN(),
                               std::numeric_limits<double>::infinity()}) {
        EXPECT_FALSE(taken(value)) << value;
    }
    EXPECT_TRUE(dialog.numAnno.SetValue(2012));
    EXPECT_TRUE(dialog.numAnno.SetValue(0)) << "0 empties a field whose bounds do not reach it";
    EXPECT_EQ(dialog.numAnno.Value(), 0);
}

TEST(DialogModel, PickListsKeepEveryColumnOfTheirRows) {
    SampleDialog dialog;
    PickList& list = dialog.cboBranca;
    EXPECT_EQ(list.SelectedColumn("Codice"), "") << "nothing is chosen";
    ASSERT_TRUE(list.SelectKey(4));
    EXPECT_EQ(list.SelectedColumn("codice"), "008");
    EXPECT_EQ(list.ColumnAt(1, "Branca.Codice"), "") << "Null";
    EXPECT_EQ(list.ColumnAt(1, "IDBranca"), "9");
    EXPECT_THROW(list.SelectedColumn("Sconosciuta"), Error);
    EXPECT_FALSE(list.SelectKey(5));
    EXPECT_EQ(list.SelectedKey(), 4) << "an unknown key leaves the choice";
}

TEST(DialogModel, ReturnAndEscapeClickWhatCanBeClicked) {
    SampleDialog dialog;
    const KeyEvent enter{kKeyReturn, kShiftNone}, escape{kKeyEscape, kShiftNone};
    EXPECT_TRUE(dialog.KeyDown(&dialog.cmdApri, enter)) << "the button that has the focus";
    EXPECT_TRUE(dialog.KeyDown(&dialog.txtNome, enter)) << "the default button";
    dialog.cmdApri.SetEnabled(false);
    dialog.cmdOk.SetEnabled(false);
    dialog.cmdChiudi.SetVisible(false);
    EXPECT_FALSE(dialog.KeyDown(&dialog.cmdApri, enter));
    EXPECT_FALSE(dialog.KeyDown(nullptr, enter));
    EXPECT_FALSE(dialog.KeyDown(nullptr, escape));
    EXPECT_FALSE(dialog.IsClosing());
    EXPECT_EQ(dialog.calls, (Calls{"cmdApri", "cmdOk"}));
}

TEST(DialogModel, OnlyBoxesThatAreThereAreChecked) {
    SampleDialog dialog;
    Grid& grid = dialog.grdElenco;
    grid.Check(0, 0);  // without a handler
    Calls checked;
    grid.OnCheck = [&](int row, int column) { checked.push_back(std::to_string(row) + "/" + std::to_string(column)); };
    grid.Check(1, 0);
    for (const auto& [row, column] : {std::pair{1, 1}, std::pair{2, 0}, std::pair{-1, 0}, std::pair{0, 3}}) {
        grid.Check(row, column);
    }
    const int version = grid.Version();
    grid.Refresh();
    EXPECT_NE(grid.Version(), version);
    grid.SetModel(nullptr);
    grid.Check(0, 0);
    EXPECT_EQ(checked, Calls{"1/0"});
}

TEST(DialogModel, ClosingTellsTheViewOnceAndEndsTheKey) {
    SampleDialog dialog;
    NotingView view;
    dialog.Attach(&view);
    dialog.onPreview = [&](KeyEvent&) {
        dialog.Close();
        dialog.Close();
    };
    EXPECT_TRUE(dialog.KeyDown(nullptr, {kKeyReturn, kShiftNone}));
    EXPECT_EQ(view.seen, Calls{"close"});
    EXPECT_EQ(dialog.calls, Calls()) << "the default button of a closing dialog stays untouched";
}

TEST(DialogModel, MnemonicsStandBehindSingleAmpersands) {
    struct Case {
        const char *caption, *plain;
        int key;
    };
    for (const Case& each :
         {Case{"&Avvia", "Avvia", 'A'}, Case{"S&foglia", "Sfoglia", 'F'}, Case{"Dati && &9", "Dati & 9", '9'},
          Case{"Fine&", "Fine&", 0}, Case{"", "", 0}, Case{"&È", "È", 0}}) {
        EXPECT_EQ(WithoutMnemonic(each.caption), each.plain);
        EXPECT_EQ(MnemonicKey(each.caption), each.key) << each.caption;
    }
}

SampleModel Column(const Calls& texts) {
    SampleModel model;
    model.cells.clear();
    for (const std::string& text : texts) model.cells.push_back({text});
    return model;
}

std::string Shown(const GridModel& model, const RowOrder& order) {
    std::string shown;
    for (int place = 0; place < model.RowCount(); ++place) {
        EXPECT_EQ(order.PlaceOf(order.RowAt(place)), place);
        shown += (place > 0 ? "|" : "") + model.Cell(order.RowAt(place), 0);
    }
    return shown;
}

TEST(RowOrder, EachColumnIsSortedAsWhatItHolds) {
    struct Case {
        Calls cells;
        const char *ascending, *descending;
    };
    for (const Case& each :
         {Case{{"02/03/2011", "15/01/2012", "", "31/12/2010"},
               "|31/12/2010|02/03/2011|15/01/2012",
               "15/01/2012|02/03/2011|31/12/2010|"},
          Case{{"1.234,50", "9", "-3", "20,66"}, "-3|9|20,66|1.234,50", "1.234,50|20,66|9|-3"},
          Case{{"rossi", "Bianchi", "ÈVA", "èva"}, "Bianchi|rossi|ÈVA|èva", "ÈVA|èva|rossi|Bianchi"},
          Case{{"02/03/2011", "10/01/2011", "mai"}, "02/03/2011|10/01/2011|mai", "mai|10/01/2011|02/03/2011"},
          Case{{"10", "9", "A1"}, "10|9|A1", "A1|9|10"}, Case{{"b", "a", "B", "A"}, "a|A|b|B", "b|B|a|A"},
          Case{{}, "", ""}}) {
        const SampleModel model = Column(each.cells);
        RowOrder order;
        order.Sort(model, 0, false);
        EXPECT_EQ(Shown(model, order), each.ascending);
        order.Sort(model, 0, true);
        EXPECT_EQ(Shown(model, order), each.descending);
        for (const int place : {-1, 4, 100}) {
            EXPECT_EQ(order.RowAt(place), place) << "a place that was not sorted is itself";
            EXPECT_EQ(order.PlaceOf(place), place);
        }
        order.Clear();
        EXPECT_EQ(order.RowAt(1), 1);
    }
}

}  // namespace
}  // namespace vlm::ui::test
