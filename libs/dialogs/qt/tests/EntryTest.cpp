#include <QCalendarWidget>
#include <QComboBox>
#include <QDropEvent>
#include <QLineEdit>
#include <QMimeData>
#include <gtest/gtest.h>

#include "support/ControlHands.h"
#include "support/TempFolder.h"
#include "support/WindowDesk.h"
#include "support/Words.h"

/// What a user types into fields, key by key.
namespace vlm::ui::test {
namespace {

class Entry : public Windows {
protected:
    /// Where the keys go.
    QWidget& Focused() { return *toolkit.TopWindow()->focusWidget(); }
    void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) { QTest::keyClick(&Focused(), key, modifiers); }
    bool HasFocus(const Control& control) {
        const ControlWidget* widget = toolkit.Find(control);
        return widget != nullptr && (&WidgetOf(control) == &Focused() || WidgetOf(control).isAncestorOf(&Focused()));
    }
};

using Calls = std::vector<std::string>;

TEST_F(Entry, TabGoesThroughTheControlsInTheirOrder) {
    dialog.lstTipi.SetEnabled(false);
    Calls visited;
    Show([&](QWidget&) {
        for (int i = 0; i < 14; ++i) {
            for (const Control* control : dialog.Controls()) {
                if (HasFocus(*control) && control->Kind() != ControlKind::Frame) visited.push_back(control->Name());
            }
            Press(Qt::Key_Tab);
        }
        // After the last button comes the search, then the first field again.
        EXPECT_EQ(visited, vlm::test::WordsOf("txtNome txtParola numAnno numPeso dtData chkSimula optTipo lstMese "
                                              "cboBranca grdElenco cmdApri cmdOk cmdChiudi"));
        Of(dialog.dtData).TakeFocus();
        Press(Qt::Key_N, Qt::AltModifier);
        EXPECT_TRUE(HasFocus(dialog.txtNome)) << "a label's mnemonic leads to its field";
    });
}

TEST_F(Entry, WhatIsNoValueHoldsTheButtonsUpAndStaysToBeMended) {
    struct Case {
        const char *control, *wrong, *right;
    };
    for (const Case& each : {Case{"numAnno", "201", "2"}, Case{"numAnno", "2101", ""}, Case{"numPeso", "1,234", ""},
                             Case{"dtData", "31/02/2012", ""}, Case{"dtData", "1/2/", "2012"}}) {
        SCOPED_TRACE(each.wrong);
        SampleDialog form;
        form.numAnno.SetValue(2000);
        form.numPeso.SetValue(3);
        form.dtData.SetValue(Date::FromYmd(2000, 1, 1));
        Show(form, [&](QWidget&) {
            const Control& field = *form.Find(each.control);
            Of(field).TakeFocus();
            TypeOver(Focused(), each.wrong);
            Press(Qt::Key_Tab);
            form.calls.clear();
            Click(form.cmdOk);
            EXPECT_TRUE(HasFocus(field));
            Press(Qt::Key_Return);
            EXPECT_EQ(Runs(form), Calls{}) << "the button must not run on the value before";
            Click(form.cmdApri);
            EXPECT_EQ(Runs(form), Calls{"cmdApri"}) << "a button beside a field is free";
            Of(field).TakeFocus();
            Press(Qt::Key_End);
            if (*each.right == '\0') TypeOver(Focused(), "");
            QTest::keyClicks(&Focused(), each.right);
            form.calls.clear();
            Press(Qt::Key_Return);
            EXPECT_EQ(Runs(form), Calls{"cmdOk"});
            TypeOver(Focused(), each.wrong);
            Click(form.cmdChiudi);
            EXPECT_TRUE(form.IsClosing()) << "as is the one that closes";
        });
    }
}

TEST_F(Entry, DatesAreTypedInSeveralWaysOrTakenFromTheCalendar) {
    Show([&](QWidget&) {
        for (const char* typed : {"01022012", "1-2-2012", "1.2.2012", "x1/2/2012"}) {
            dialog.dtData.SetValue({});
            Enter(Of(dialog.dtData), typed);
            EXPECT_EQ(dialog.dtData.Value(), Date::FromYmd(2012, 2, 1));
            EXPECT_EQ(WidgetOf(dialog.dtData).findChild<QLineEdit*>()->text(), "01/02/2012");
        }
        Of(dialog.dtData).TakeFocus();
        EXPECT_EQ(static_cast<QLineEdit&>(Focused()).selectedText(), "01/02/2012") << "what is typed replaces it";
        Press(Qt::Key_Down, Qt::AltModifier);
        QWidget* popup = QApplication::activePopupWidget();
        ASSERT_NE(popup, nullptr);
        QWidget& days = *popup->findChild<QCalendarWidget*>()->focusProxy();
        QTest::keyClick(&days, Qt::Key_Right);
        QTest::keyClick(&days, Qt::Key_Return);
        EXPECT_EQ(dialog.dtData.Value(), Date::FromYmd(2012, 2, 2));
        EXPECT_FALSE(dialog.IsClosing());
    });
}

TEST_F(Entry, ArrowsStepThroughNumbersInsideTheirBounds) {
    dialog.numAnno.SetValue(2099);
    Show([&](QWidget&) {
        Of(dialog.numAnno).TakeFocus();
        for (const int year : {2100, 2100, 2099}) {
            Press(year == 2100 ? Qt::Key_Up : Qt::Key_Down);
            EXPECT_EQ(dialog.numAnno.Value(), year);
        }
    });
}

TEST_F(Entry, ListsAreUsedByKeysAlone) {
    dialog.cboBranca.extraColumns = {{"Codice", "Codice regionale", 1400}, {"Manca", "Manca", 1400}};
    Show([&](QWidget&) {
        Of(dialog.cboBranca).TakeFocus();
        Press(Qt::Key_Down);
        EXPECT_EQ(dialog.cboBranca.SelectedKey(), 4);
        QTest::keyClick(&Focused(), 'r');
        EXPECT_EQ(dialog.cboBranca.SelectedKey(), 9);
        Press(Qt::Key_Delete);
        EXPECT_EQ(dialog.cboBranca.SelectedKey(), 0);
        const QAbstractItemModel& rows = *static_cast<QComboBox&>(WidgetOf(dialog.cboBranca)).model();
        EXPECT_EQ(rows.index(0, 1).data().toString(), "008");
        EXPECT_EQ(rows.index(0, 2).data().toString(), "") << "a column that is not there";
        EXPECT_EQ(rows.headerData(1, Qt::Horizontal).toString(), "Codice regionale");
        Of(dialog.lstTipi).TakeFocus();
        for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Down, Qt::Key_Down, Qt::Key_Space}) Press(key);
        EXPECT_EQ(dialog.lstTipi.Selected(), (std::set<int>{0, 2}));
    });
}

TEST_F(Entry, NotesHaveLinesAndPasswordsAreHidden) {
    dialog.txtNome.multiLine = true;
    dialog.txtParola.password = true;
    dialog.txtNome.SetText("uno\r\ndue");
    Show([&](QWidget&) {
        Press(Qt::Key_End, Qt::ControlModifier);
        Press(Qt::Key_Return);
        QTest::keyClicks(&Focused(), "tre");
        EXPECT_EQ(dialog.txtNome.Text(), "uno\r\ndue\r\ntre");
        Press(Qt::Key_Tab);
        QTest::keyClicks(&Focused(), "12");
        EXPECT_EQ(dialog.txtParola.Text(), "12");
        EXPECT_NE(static_cast<QLineEdit&>(Focused()).displayText(), "12");
    });
}

TEST_F(Entry, PathsTakeDroppedFilesAndTellWhatIsThere) {
    const vlm::test::TempFolder folder;
    vlm::test::WriteBytes(folder / "elenco.csv", "x");
    dialog.txtNome.path = true;
    Show([&](QWidget&) {
        auto& edit = static_cast<QLineEdit&>(WidgetOf(dialog.txtNome));
        const auto sign = [&edit] {
            const QAction* action = edit.actions().first();
            return action->isVisible() ? action->toolTip() : QString();
        };
        for (const auto& [path, told] :
             std::map<std::string, const char*>{{"", ""},
                                                {folder.Path().string(), "La cartella c'è"},
                                                {folder / "manca", "Non c'è ancora; la sua cartella sì"},
                                                {folder / "manca/dentro", "Il percorso non c'è"}}) {
            TypeOver(Focused(), path);
            EXPECT_EQ(sign(), told);
        }
        QMimeData dropped;
        dropped.setUrls({QUrl::fromLocalFile(QString::fromStdString(folder / "elenco.csv"))});
        QDragEnterEvent enter({1, 1}, Qt::CopyAction, &dropped, Qt::LeftButton, {});
        QApplication::sendEvent(&edit, &enter);
        EXPECT_TRUE(enter.isAccepted());
        QDropEvent drop({1, 1}, Qt::CopyAction, &dropped, Qt::LeftButton, {});
        QApplication::sendEvent(&edit, &drop);
        EXPECT_EQ(dialog.txtNome.Text(), folder / "elenco.csv");
        EXPECT_EQ(sign(), "Il file c'è");
    });
}

}  // namespace
}  // namespace vlm::ui::test
