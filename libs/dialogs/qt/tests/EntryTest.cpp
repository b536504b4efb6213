#include <QCalendarWidget>
#include <QComboBox>
#include <QDropEvent>
#include <QLineEdit>
#include <QMimeData>

#include "support/TempFolder.h"
#include "support/WindowDesk.h"

namespace vlm::ui::test {
namespace {

using Calls = std::vector<std::string>;

TEST_F(Windows, TabGoesThroughTheControlsInTheirOrder) {
    dialog.lstTipi.SetEnabled(false);
    Show([&](QWidget&) {
        // After the last button comes the search, then the first field again.
        for (const std::string& name : vlm::test::WordsOf("txtNome txtParola numAnno numPeso dtData chkSimula optTipo "
                                                          "lstMese cboBranca grdElenco cmdApri cmdOk cmdChiudi")) {
            EXPECT_EQ(Focus(dialog), name);
            Keys("Tab");
        }
        EXPECT_EQ(Focus(dialog), "");
        Of(dialog.dtData).TakeFocus();
        Keys("Alt+N");
        EXPECT_EQ(Focus(dialog), "txtNome") << "a label's mnemonic leads to its field";
    });
}

TEST_F(Windows, FieldsTakeWhatIsTyped) {
    using Case = std::tuple<const char*, const char*, const char*>;
    for (const auto& [name, keys, shown] :
         {Case{"dtData", "'01022012 Tab", "01/02/2012"}, Case{"dtData", "'1-2-2012 Tab", "01/02/2012"},
          Case{"dtData", "'1.2.2012 Tab", "01/02/2012"}, Case{"dtData", "'x1/2/2012 Tab", "01/02/2012"},
          Case{"dtData", "'1/2/2012 Tab Shift+Tab '3/4/2013 Tab", "03/04/2013"},  // replaces what stands there
          Case{"numAnno", "'2099 Up Up", "2100"}, Case{"numAnno", "'2100 Down", "2099"},
          Case{"cboBranca", "Down", "Cardiologia"}, Case{"cboBranca", "'r", "Radiologia \"A\""},
          Case{"cboBranca", "'r Del", ""}, Case{"lstTipi", "Space Down Down Space", "Inserimento, Cancellazione"},
          Case{"txtNome", "'uno Return 'tre", "uno\r\ntre"}, Case{"txtParola", "'12", "set"}}) {
        SCOPED_TRACE(std::string(name) + " " + keys);
        SampleDialog form;
        form.txtNome.multiLine = form.txtParola.password = true;
        Show(form, [&](QWidget&) {
            const Control& control = *form.Find(name);
            Of(control).TakeFocus();
            Keys(keys);
            EXPECT_EQ(control.ShownText(), shown);
            const auto* line = qobject_cast<QLineEdit*>(QApplication::focusWidget());
            EXPECT_TRUE(line == nullptr || line->displayText() != "12") << "a password is hidden";
            EXPECT_FALSE(form.IsClosing());
        });
    }
}

TEST_F(Windows, WhatIsNoValueHoldsTheButtonsUpAndStaysToBeMended) {
    using Case = std::tuple<const char*, const char*, const char*>;
    for (const auto& [control, wrong, right] :
         {Case{"numAnno", "201", "End '2"}, Case{"numAnno", "2101", "Ctrl+A Del"},
          Case{"numPeso", "1,234", "Ctrl+A Del"}, Case{"dtData", "31/02/2012", "Ctrl+A Del"},
          Case{"dtData", "1/2/", "End '2012"}}) {
        SCOPED_TRACE(wrong);
        SampleDialog form;
        form.Fill();
        form.numPeso.SetValue(3);
        Show(form, [&](QWidget&) {
            const Control& field = *form.Find(control);
            Of(field).TakeFocus();
            TypeOver(wrong);
            Keys("Tab");
            form.calls.clear();
            Click(form.cmdOk);
            EXPECT_EQ(Focus(form), field.Name());
            Keys("Return");
            EXPECT_EQ(Runs(form), Calls{}) << "the button must not run on the value before";
            Click(form.cmdApri);
            EXPECT_EQ(Runs(form), Calls{"cmdApri"}) << "a button beside a field is free";
            Of(field).TakeFocus();
            Keys(right);
            form.calls.clear();
            Keys("Return");
            EXPECT_EQ(Runs(form), Calls{"cmdOk"});
            TypeOver(wrong);
            Click(form.cmdChiudi);
            EXPECT_TRUE(form.IsClosing()) << "as is the one that closes";
        });
    }
}

TEST_F(Windows, ListsAndDatesOpenWithMoreThanTheirField) {
    dialog.cboBranca.extraColumns = {{"Codice", "Codice regionale", 1400}, {"Manca", "Manca", 1400}};
    dialog.dtData.SetValue(Date::FromYmd(2012, 2, 1));
    Show([&](QWidget&) {
        const QAbstractItemModel& rows = *static_cast<QComboBox&>(WidgetOf(dialog.cboBranca)).model();
        EXPECT_EQ(rows.index(0, 1).data().toString(), "008");
        EXPECT_EQ(rows.index(0, 2).data().toString(), "") << "a column that is not there";
        EXPECT_EQ(rows.headerData(1, Qt::Horizontal).toString(), "Codice regionale");
        Of(dialog.dtData).TakeFocus();
        Keys("Alt+Down");
        QWidget* popup = QApplication::activePopupWidget();
        ASSERT_NE(popup, nullptr);
        QWidget& days = *popup->findChild<QCalendarWidget*>()->focusProxy();
        QTest::keyClick(&days, Qt::Key_Right);
        QTest::keyClick(&days, Qt::Key_Return);
        EXPECT_EQ(dialog.dtData.ShownText(), "02/02/2012");
    });
}

TEST_F(Windows, PathsTakeDroppedFilesAndTellWhatIsThere) {
    const vlm::test::TempFolder folder;
    const std::string file = folder / "elenco.csv";
    vlm::test::WriteBytes(file, "x");
    dialog.txtNome.path = true;
    Show([&](QWidget&) {
        auto& edit = static_cast<QLineEdit&>(WidgetOf(dialog.txtNome));
        QMimeData dropped;
        dropped.setUrls({QUrl::fromLocalFile(ToQt(file))});
        QDragEnterEvent enter({1, 1}, Qt::CopyAction, &dropped, Qt::LeftButton, {});
        QApplication::sendEvent(&edit, &enter);
        EXPECT_TRUE(enter.isAccepted());
        QDropEvent drop({1, 1}, Qt::CopyAction, &dropped, Qt::LeftButton, {});
        QApplication::sendEvent(&edit, &drop);
        EXPECT_EQ(dialog.txtNome.Text(), file);
        for (const auto& [path, told] :
             std::map<std::string, const char*>{{"", ""},
                                                {file, "Il file c'è"},
                                                {folder.Path().string(), "La cartella c'è"},
                                                {folder / "manca", "Non c'è ancora; la sua cartella sì"},
                                                {folder / "manca/dentro", "Il percorso non c'è"}}) {
            TypeOver(path);
            const QAction* sign = edit.actions().first();
            EXPECT_EQ(sign->isVisible() ? sign->toolTip() : "", told);
        }
    });
}

}  // namespace
}  // namespace vlm::ui::test
