#include <QCalendarWidget>
#include <QComboBox>
#include <QDropEvent>
#include <QLineEdit>
#include <QMimeData>
#include <gtest/gtest.h>

#include "support/ControlHands.h"
#include "support/SampleDialog.h"
#include "support/Shown.h"
#include "support/TempFolder.h"

/// What a user types into fields, key by key.
namespace vlm::ui::test {
namespace {

using Entry = SampleShown;

using Calls = std::vector<std::string>;

Calls Runs(const SampleDialog& dialog) {
    Calls runs;
    for (const std::string& call : dialog.calls) {
        if (!call.starts_with("up ")) runs.push_back(call);
    }
    return runs;
}

QWidget& Focused(QWidget& window) { return *window.focusWidget(); }

TEST_F(Entry, TabGoesThroughTheControlsInTheirOrder) {
    dialog.lstTipi.SetEnabled(false);
    Calls visited;
    Show([&](QWidget& window) {
        for (int i = 0; i < 14; ++i) {
            for (const Control* control : dialog.Controls()) {
                ControlWidget* widget = screen.toolkit.Find(*control);
                const bool here = widget != nullptr && (&widget->Widget() == &Focused(window) ||
                                                        widget->Widget().isAncestorOf(&Focused(window)));
                if (here && control->Kind() != ControlKind::Frame) visited.push_back(control->Name());
            }
            QTest::keyClick(&Focused(window), Qt::Key_Tab);
        }
    });
    // After the last button comes the search, then the first field again.
    EXPECT_EQ(visited, (Calls{"txtNome", "txtParola", "numAnno", "numPeso", "dtData", "chkSimula", "optTipo", "lstMese",
                              "cboBranca", "grdElenco", "cmdApri", "cmdOk", "cmdChiudi"}));
}

TEST_F(Entry, AMnemonicOfALabelLeadsToItsField) {
    Show([&](QWidget& window) {
        screen.Of(dialog.dtData).TakeFocus();
        QTest::keyClick(&Focused(window), Qt::Key_N, Qt::AltModifier);
        EXPECT_EQ(&Focused(window), &screen.WidgetOf(dialog.txtNome));
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
        screen.Show(form, [&](QWidget& window) {
            ControlWidget& field = screen.Of(*form.Find(each.control));
            field.TakeFocus();
            TypeOver(Focused(window), each.wrong);
            QTest::keyClick(&Focused(window), Qt::Key_Tab);
            form.calls.clear();
            Click(form.cmdOk);
            EXPECT_EQ(Runs(form), Calls{}) << "the button must not run on the value before";
            EXPECT_TRUE(&field.Widget() == &Focused(window) || field.Widget().isAncestorOf(&Focused(window)));
            QTest::keyClick(&Focused(window), Qt::Key_Return);
            EXPECT_EQ(Runs(form), Calls{});
            // A button beside a field, and the one that closes, are free.
            Click(form.cmdApri);
            EXPECT_EQ(Runs(form), Calls{"cmdApri"});
            field.TakeFocus();
            QTest::keyClick(&Focused(window), Qt::Key_End);
            if (*each.right == '\0') TypeOver(Focused(window), "");
            QTest::keyClicks(&Focused(window), each.right);
            form.calls.clear();
            QTest::keyClick(&Focused(window), Qt::Key_Return);
            EXPECT_EQ(Runs(form), Calls{"cmdOk"});
            TypeOver(Focused(window), each.wrong);
            Click(form.cmdChiudi);
            EXPECT_TRUE(form.IsClosing());
        });
    }
}

TEST_F(Entry, DatesAreTypedInSeveralWaysOrTakenFromTheCalendar) {
    for (const auto& [typed, shown] : std::vector<std::pair<const char*, const char*>>{{"01022012", "01/02/2012"},
                                                                                       {"1-2-2012", "01/02/2012"},
                                                                                       {"1.2.2012", "01/02/2012"},
                                                                                       {"x1/2/2012", "01/02/2012"}}) {
        SampleDialog form;
        screen.Show(form, [&, typed = typed, shown = shown](QWidget& window) {
            Enter(screen.Of(form.dtData), typed);
            EXPECT_EQ(form.dtData.Value(), Date::FromYmd(2012, 2, 1));
            EXPECT_EQ(screen.WidgetOf(form.dtData).findChild<QLineEdit*>()->text(), shown);
            screen.Of(form.dtData).TakeFocus();
            QTest::keyClick(&Focused(window), Qt::Key_Down, Qt::AltModifier);
            QWidget* popup = QApplication::activePopupWidget();
            ASSERT_NE(popup, nullptr);
            QWidget& days = *popup->findChild<QCalendarWidget*>()->focusProxy();
            QTest::keyClick(&days, Qt::Key_Right);
            QTest::keyClick(&days, Qt::Key_Return);
            EXPECT_EQ(form.dtData.Value(), Date::FromYmd(2012, 2, 2));
            EXPECT_FALSE(form.IsClosing());
        });
    }
}

TEST_F(Entry, ArrowsStepThroughNumbersInsideTheirBounds) {
    dialog.numAnno.SetValue(2099);
    Show([&](QWidget& window) {
        screen.Of(dialog.numAnno).TakeFocus();
        QTest::keyClick(&Focused(window), Qt::Key_Up);
        EXPECT_EQ(dialog.numAnno.Value(), 2100);
        QTest::keyClick(&Focused(window), Qt::Key_Up);
        EXPECT_EQ(dialog.numAnno.Value(), 2100);
        QTest::keyClick(&Focused(window), Qt::Key_Down);
        EXPECT_EQ(dialog.numAnno.Value(), 2099);
    });
}

TEST_F(Entry, ListsAreUsedByKeysAlone) {
    dialog.cboBranca.extraColumns = {{"Codice", "Codice regionale", 1400}, {"Manca", "Manca", 1400}};
    Show([&](QWidget& window) {
        screen.Of(dialog.cboBranca).TakeFocus();
        QTest::keyClick(&Focused(window), Qt::Key_Down);
        EXPECT_EQ(dialog.cboBranca.SelectedKey(), 4);
        QTest::keyClick(&Focused(window), 'r');
        EXPECT_EQ(dialog.cboBranca.SelectedKey(), 9);
        QTest::keyClick(&Focused(window), Qt::Key_Delete);
        EXPECT_EQ(dialog.cboBranca.SelectedKey(), 0);
        const QAbstractItemModel& rows = *static_cast<QComboBox&>(screen.WidgetOf(dialog.cboBranca)).model();
        EXPECT_EQ(rows.index(0, 1).data().toString(), "008");
        EXPECT_EQ(rows.index(0, 2).data().toString(), "") << "a column that is not there";
        EXPECT_EQ(rows.headerData(1, Qt::Horizontal).toString(), "Codice regionale");
        screen.Of(dialog.lstTipi).TakeFocus();
        for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Down, Qt::Key_Down, Qt::Key_Space}) {
            QTest::keyClick(&Focused(window), key);
        }
        EXPECT_EQ(dialog.lstTipi.Selected(), (std::set<int>{0, 2}));
    });
}

TEST_F(Entry, NotesHaveLinesAndPasswordsAreHidden) {
    dialog.txtNome.multiLine = true;
    dialog.txtParola.password = true;
    dialog.txtNome.SetText("uno\r\ndue");
    Show([&](QWidget& window) {
        QTest::keyClick(&Focused(window), Qt::Key_End, Qt::ControlModifier);
        QTest::keyClick(&Focused(window), Qt::Key_Return);
        QTest::keyClicks(&Focused(window), "tre");
        EXPECT_EQ(dialog.txtNome.Text(), "uno\r\ndue\r\ntre");
        QTest::keyClick(&Focused(window), Qt::Key_Tab);
        QTest::keyClicks(&Focused(window), "12");
        EXPECT_EQ(dialog.txtParola.Text(), "12");
        EXPECT_NE(static_cast<QLineEdit&>(Focused(window)).displayText(), "12");
    });
}

TEST_F(Entry, PathsTakeDroppedFilesAndTellWhatIsThere) {
    const vlm::test::TempFolder folder;
    vlm::test::WriteBytes(folder / "elenco.csv", "x");
    dialog.txtNome.path = true;
    Show([&](QWidget& window) {
        auto& edit = static_cast<QLineEdit&>(screen.WidgetOf(dialog.txtNome));
        const auto sign = [&edit] {
            const QAction* action = edit.actions().first();
            return action->isVisible() ? action->toolTip() : QString();
        };
        EXPECT_EQ(sign(), "");
        TypeOver(Focused(window), folder.Path().string());
        EXPECT_EQ(sign(), "La cartella c'è");
        TypeOver(Focused(window), folder / "manca");
        EXPECT_EQ(sign(), "Non c'è ancora; la sua cartella sì");
        TypeOver(Focused(window), folder / "manca/dentro");
        EXPECT_EQ(sign(), "Il percorso non c'è");
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
