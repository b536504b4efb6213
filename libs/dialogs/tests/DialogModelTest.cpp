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
    for (int i = 0; i < 2; ++i) dialog.cmdOk.SetVisible(false);
    dialog.optTipo.SetItems({"A", "B"});
    dialog.lstTipi.SetItems({"A", "B"});
    dialog.model->cells.pop_back();
    dialog.grdElenco.Refresh();
    dialog.txtNome.SetFocus();
    EXPECT_EQ(dialog.calls, Calls());
    EXPECT_EQ(view.seen, (Calls{"cmdOk", "cmdOk", "cmdOk", "optTipo", "lstTipi", "grdElenco", "focus txtNome"}));
    EXPECT_EQ(dialog.optTipo.ShownText() + dialog.lstTipi.ShownText(), "");
    EXPECT_EQ(dialog.grdElenco.CurrentRow(), -1);
}

TEST(DialogModel, NumberFieldsTakeOnlyWhatFits) {
    SampleDialog dialog;
    for (const auto& [value, fits] :
         {std::pair{-5.0, true}, std::pair{10.0, true}, std::pair{1.25, true}, std::pair{0.07, true},
          std::pair{0.0, true}, std::pair{10.01, false}, std::pair{-5.01, false}, std::pair{1.255, false},
          std::pair{0.001, false}, std::pair{std::numeric_limits<double>::quiet_NaN(), false},
          std::pair{std::numeric_limits<double>::infinity(), false}}) {
        dialog.numPeso.SetValue(3);
        EXPECT_EQ(dialog.numPeso.SetValue(value), fits) << value;
        EXPECT_EQ(dialog.numPeso.Value(), fits ? value : 3);
    }
    dialog.numAnno.SetValue(2012);
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
    EXPECT_THROW(list.SelectedColumn("Sconosciuta"), Error);
    EXPECT_FALSE(list.SelectKey(5));
    EXPECT_EQ(list.SelectedKey(), 4) << "an unknown key leaves the choice";
}

TEST(DialogModel, ReturnAndEscapeClickOnlyWhatCanBeClicked) {
    SampleDialog dialog;
    dialog.cmdApri.SetEnabled(false);
    dialog.cmdOk.SetEnabled(false);
    dialog.cmdChiudi.SetVisible(false);
    for (const Key key : {kKeyReturn, kKeyEscape}) {
        for (Control* focus : {static_cast<Control*>(nullptr), static_cast<Control*>(&dialog.cmdApri)}) {
            EXPECT_FALSE(dialog.KeyDown(focus, {key, kShiftNone}));
        }
    }
    EXPECT_FALSE(dialog.IsClosing());
    EXPECT_EQ(dialog.calls, Calls());
}

TEST(DialogModel, OnlyBoxesThatAreThereAreChecked) {
    SampleDialog dialog;
    Grid& grid = dialog.grdElenco;
    grid.Check(0, 0);  // without a handler
    Calls checked;
    grid.OnCheck = [&](int row, int column) { checked.push_back(std::to_string(row) + "/" + std::to_string(column)); };
    for (const auto& [row, column] :
         {std::pair{1, 0}, std::pair{1, 1}, std::pair{2, 0}, std::pair{-1, 0}, std::pair{0, 3}}) {
        grid.Check(row, column);
    }
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
    for (const auto& [caption, plain, key] :
         {std::tuple{"&Avvia", "Avvia", 'A'}, std::tuple{"S&foglia", "Sfoglia", 'F'},
          std::tuple{"Dati && &9", "Dati & 9", '9'}, std::tuple{"Fine&", "Fine&", '\0'}, std::tuple{"", "", '\0'},
          std::tuple{"&È", "È", '\0'}}) {
        EXPECT_EQ(WithoutMnemonic(caption), plain);
        EXPECT_EQ(MnemonicKey(caption), key) << caption;
    }
}

Calls Shown(const GridModel& model, const RowOrder& order) {
    Calls shown;
    for (int place = 0; place < model.RowCount(); ++place) {
        EXPECT_EQ(order.PlaceOf(order.RowAt(place)), place);
        shown.push_back(model.Cell(order.RowAt(place), 0));
    }
    return shown;
}

TEST(RowOrder, EachColumnIsSortedAsWhatItHolds) {
    struct Case {
        Calls cells, ascending;
        Calls descending = {ascending.rbegin(), ascending.rend()};
    };
    for (const Case& each :
         {Case{{"02/03/2011", "15/01/2012", "", "31/12/2010"}, {"", "31/12/2010", "02/03/2011", "15/01/2012"}},
          Case{{"1.234,50", "9", "-3", "20,66"}, {"-3", "9", "20,66", "1.234,50"}},
          Case{{"rossi", "Bianchi", "ÈVA", "èva"},
               {"Bianchi", "rossi", "ÈVA", "èva"},
               {"ÈVA", "èva", "rossi", "Bianchi"}},
          Case{{"02/03/2011", "10/01/2011", "mai"}, {"02/03/2011", "10/01/2011", "mai"}},
          Case{{"10", "9", "A1"}, {"10", "9", "A1"}},
          Case{{"b", "a", "B", "A"}, {"a", "A", "b", "B"}, {"b", "B", "a", "A"}}, Case{{}, {}}}) {
        SampleModel model;
        model.cells.clear();
        for (const std::string& text : each.cells) model.cells.push_back({text});
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
