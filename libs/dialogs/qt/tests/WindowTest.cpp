#include <QFileDialog>
#include <QMessageBox>
#include <QProgressBar>
#include <QPushButton>
#include <gtest/gtest.h>
#include <set>

#include "AskWindows.h"
#include "support/Caught.h"
#include "support/WindowDesk.h"

/// Windows as wholes: how they open, close and answer.
namespace vlm::ui::test {
namespace {

using Calls = std::vector<std::string>;

/// How often a widget was painted.
class PaintCounter : public QObject {
public:
    explicit PaintCounter(QWidget& widget) { widget.installEventFilter(this); }
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::Paint) ++count;
        return false;
    }
    int count = 0;
};

TEST_F(Windows, ErrorsOfHandlersCloseEveryWindowAndGoThrough) {
    SampleDialog inner("frmInterna");
    inner.onFrameClose = [] { throw Error("rotto"); };
    inner.onClosed = [] { throw std::runtime_error("secondo errore"); };
    dialog.cmdApri.OnChange = [&] { Show(inner, [](QWidget& window) { window.close(); }); };
    const auto show = [&] {
        Show([&](QWidget&) {
            Click(dialog.cmdApri);
            EXPECT_TRUE(dialog.IsClosing());
        });
    };
    EXPECT_EQ(vlm::test::CaughtText(show), "rotto");
    EXPECT_EQ(inner.calls, (Calls{"FrameClose", "Closed"}));
    EXPECT_EQ(dialog.calls, Calls{"Closed"});
    EXPECT_EQ(toolkit.TopWindow(), nullptr);
    SampleDialog unseen;
    unseen.onOpening = [] { throw Error("niente elenco"); };
    EXPECT_THROW(toolkit.ShowModal(unseen), Error);
    EXPECT_EQ(unseen.calls, Calls{}) << "what fails to open was never shown";
}

TEST_F(Windows, TheFocusGoesWhereTheDialogMovesIt) {
    dialog.onOpening = [&] { dialog.cboBranca.SetFocus(); };
    Show([&](QWidget& window) {
        EXPECT_EQ(window.focusWidget(), &WidgetOf(dialog.cboBranca));
        dialog.optTipo.SetPosition(1);
        dialog.optTipo.SetFocus();
        EXPECT_EQ(window.focusWidget(), Of(dialog.optTipo).FocusStops().at(1)) << "the chosen option";
    });
    SampleDialog first;
    first.txtNome.SetEnabled(false);
    first.txtParola.SetVisible(false);
    Show(first, [&](QWidget& window) { EXPECT_EQ(window.focusWidget(), &WidgetOf(first.numAnno)); });
}

TEST_F(Windows, SizesAreKeptForTheNextShowing) {
    const auto show = [&](const std::function<void(QWidget&)>& deeds) {
        SampleDialog form;
        Show(form, deeds);
    };
    QSize natural;
    show([&](QWidget& window) { natural = window.size(); });
    EXPECT_EQ(settings.values.count("Window.frmProva"), 0U) << "a size that nobody chose";
    const QSize chosen = natural - QSize(0, 15);
    show([&](QWidget& window) { window.resize(chosen); });
    show([&](QWidget& window) { EXPECT_EQ(window.size(), chosen); });
    for (const char* nonsense : {"", "x", "12x", "-5x300", "99999x300", "aaxbb", "300x300x300"}) {
        settings.values["Window.frmProva"] = nonsense;
        show([&](QWidget& window) { EXPECT_EQ(window.size(), natural) << nonsense; });
    }
}

TEST_F(Windows, ResizingKeepsTheButtonsBelowAndGivesTheRoomToTheGrid) {
    Show([&](QWidget& window) {
        const QWidget& grid = WidgetOf(dialog.grdElenco);
        const QWidget& button = WidgetOf(dialog.cmdChiudi);
        const auto bottomRight = [&](const QWidget& widget) {
            return window.rect().bottomRight() - widget.mapTo(&window, widget.rect().bottomRight());
        };
        const int height = grid.height();
        const QPoint corner = bottomRight(button);
        window.resize(window.size() + QSize(100, 80));
        QCoreApplication::processEvents();
        EXPECT_EQ(grid.height(), height + 80);
        EXPECT_EQ(bottomRight(button), corner);
    });
}

TEST_F(Windows, ProgressIsPaintedWhileTheWorkGoesOn) {
    Show([&](QWidget&) {
        PaintCounter bar(WidgetOf(dialog.prgLettura)), label(WidgetOf(dialog.lblInfo));
        dialog.cmdOk.OnChange = [&] {
            const HourglassScope hourglass(toolkit);
            EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
            bar.count = 0;
            for (int i = 1; i <= 10; ++i) dialog.prgLettura.SetValue(i * 10);
            EXPECT_GE(bar.count, 5);
            label.count = 0;
            dialog.lblInfo.SetCaption("Lettura sorgente in corso...");
            EXPECT_GE(label.count, 1) << "texts that come during work are painted at once";
        };
        Click(dialog.cmdOk);
        EXPECT_GE(label.count, 1);
        EXPECT_EQ(QApplication::overrideCursor(), nullptr);
    });
}

/// What a user does while a long step is at work, when its window comes to look at it.
void PostKey(QWidget& widget, Qt::Key key) {
    const QString letter = key < Qt::Key_Escape ? QString(QChar(key)) : QString();
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QCoreApplication::postEvent(&widget, new QKeyEvent(type, key, Qt::NoModifier, letter));
    }
}

TEST_F(Windows, LongWorkCanBeClosedAndTakesNothingElse) {
    int steps = 0;
    Show([&](QWidget& window) {
        dialog.cmdOk.OnChange = [&] {
            const HourglassScope hourglass(toolkit);
            for (; steps < 10 && !dialog.IsClosing(); ++steps) {
                if (steps == 2) PostKey(WidgetOf(dialog.cmdApri), Qt::Key_Space);
                if (steps == 5) PostKey(window.focusWidget() ? *window.focusWidget() : window, Qt::Key_Escape);
                dialog.Repaint();
            }
        };
        Click(dialog.cmdOk);
    });
    EXPECT_EQ(Runs(dialog), Calls{"Closed"});
    EXPECT_EQ(steps, 6);
}

TEST_F(Windows, KeysThatComeDuringAShortLookAreNotLost) {
    dialog.txtNome.OnChange = [&] {
        const HourglassScope hourglass(toolkit);
        dialog.lblInfo.SetCaption("Cercato: " + dialog.txtNome.Text());
    };
    Show([&](QWidget& window) {
        for (const Qt::Key key : {Qt::Key_A, Qt::Key_B, Qt::Key_C}) PostKey(*window.focusWidget(), key);
        QCoreApplication::processEvents();
        EXPECT_EQ(dialog.txtNome.Text(), "ABC");
    });
}

TEST_F(Windows, MessagesSayItInItalianWhateverTheMachineSpeaks) {
    const auto ask = [&](Buttons buttons, const std::function<void(QMessageBox&)>& deeds) {
        WhenUp<QMessageBox>([&](QMessageBox& box) {
            EXPECT_EQ(box.windowTitle(), "Attenzione!");
            EXPECT_EQ(box.text(), "Riga <b>uno</b>\ndue");
            EXPECT_EQ(box.textFormat(), Qt::PlainText);
            EXPECT_EQ(box.icon(), QMessageBox::Question);
            QStringList texts;
            for (const QAbstractButton* button : box.buttons()) texts << button->text();
            EXPECT_EQ(texts.join(' '), buttons == Buttons::Ok ? "OK" : "&Sì &No");
            deeds(box);
        });
        return toolkit.Show({"Riga <b>uno</b>\r\ndue", "Attenzione!", Icon::Question, buttons});
    };
    const auto press = [](auto key) { return [key](QMessageBox& box) { QTest::keyClick(&box, key); }; };
    EXPECT_EQ(ask(Buttons::YesNo, press(Qt::Key_Return)), Answer::Yes);
    EXPECT_EQ(ask(Buttons::YesNo, press(Qt::Key_Escape)), Answer::No);
    EXPECT_EQ(ask(Buttons::YesNo, press('s')), Answer::Yes);
    EXPECT_EQ(ask(Buttons::YesNo, [](QMessageBox& box) { box.close(); }), Answer::No);
    EXPECT_EQ(ask(Buttons::Ok, press(Qt::Key_Escape)), Answer::Ok);
}

TEST_F(Windows, AMessageLiftsTheHourglassForAsLongAsItAsks) {
    toolkit.SetPointer(Pointer::Hourglass);
    toolkit.SetPointer(Pointer::Hourglass);
    WhenUp<QMessageBox>([](QMessageBox& box) {
        EXPECT_EQ(QApplication::overrideCursor(), nullptr);
        QTest::keyClick(&box, Qt::Key_Return);
    });
    toolkit.Show({"Fatto", "Aldra", Icon::Information, Buttons::Ok});
    ASSERT_NE(QApplication::overrideCursor(), nullptr);
    toolkit.SetPointer(Pointer::Normal);
    EXPECT_EQ(QApplication::overrideCursor(), nullptr) << "it is not counted";
}

TEST_F(Windows, ChoosersSpeakItalianAndOfferTheFilters) {
    WhenUp<QFileDialog>([](QFileDialog& chooser) {
        EXPECT_EQ(chooser.nameFilters(), (QStringList{"All files (*)", "ASL files (*.csv *.xls)"}));
        EXPECT_EQ(chooser.selectedNameFilter(), "ASL files (*.csv *.xls)");
        std::set<QString> texts{"&Scegli", "Annulla"};
        for (const auto* button : chooser.findChildren<QPushButton*>()) texts.erase(button->text());
        EXPECT_TRUE(texts.empty());
        QTest::keyClick(&chooser, Qt::Key_Escape);
    });
    EXPECT_EQ(toolkit.ChooseFile({"All files (*.*)|*.*|ASL files|*.csv;*.xls", 2, "csv", "", ""}), std::nullopt);
    EXPECT_EQ(NameFilters(""), QStringList{});
    EXPECT_EQ(NameFilters("Solo nome"), QStringList{});
}

TEST_F(Windows, NumbersKeepThePlainFormForTheRestOfTheProgram) {
    EXPECT_EQ(std::to_string(1.5), "1.500000");
    EXPECT_EQ(std::stod("2.5"), 2.5);
}

}  // namespace
}  // namespace vlm::ui::test
