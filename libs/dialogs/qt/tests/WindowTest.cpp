#include <QFileDialog>
#include <QMessageBox>
#include <QProgressBar>
#include <QPushButton>
#include <gtest/gtest.h>

#include "FileChoosers.h"
#include "support/Caught.h"
#include "support/SampleDialog.h"
#include "support/Shown.h"

/// Windows as wholes: how they open, close and answer.
namespace vlm::ui::test {
namespace {

using Windows = SampleShown;

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
    SampleDialog outer;
    SampleDialog inner("frmInterna");
    inner.onFrameClose = [] { throw Error("rotto"); };
    inner.onClosed = [] { throw std::runtime_error("secondo errore"); };
    outer.cmdApri.OnChange = [&] { screen.Show(inner, [](QWidget& window) { window.close(); }); };
    const auto show = [&] {
        screen.Show(outer, [&](QWidget&) {
            Click(outer.cmdApri);
            EXPECT_TRUE(outer.IsClosing());
        });
    };
    EXPECT_EQ(vlm::test::CaughtText(show), "rotto");
    EXPECT_EQ(inner.calls, (Calls{"FrameClose", "Closed"}));
    EXPECT_EQ(outer.calls, Calls{"Closed"});
    EXPECT_EQ(screen.toolkit.TopWindow(), nullptr);
}

TEST_F(Windows, WhatFailsToOpenWasNeverShown) {
    dialog.onOpening = [] { throw Error("niente elenco"); };
    EXPECT_THROW(screen.toolkit.ShowModal(dialog), Error);
    EXPECT_EQ(dialog.calls, Calls{});
}

TEST_F(Windows, TheFocusGoesWhereTheDialogMovesIt) {
    SampleDialog opening;
    opening.onOpening = [&] { opening.cboBranca.SetFocus(); };
    screen.Show(opening, [&](QWidget& window) {
        EXPECT_EQ(window.focusWidget(), &screen.WidgetOf(opening.cboBranca));
        opening.optTipo.SetPosition(1);
        opening.optTipo.SetFocus();
        EXPECT_EQ(window.focusWidget(), screen.Of(opening.optTipo).FocusStops().at(1)) << "the chosen option";
    });
    SampleDialog first;
    first.txtNome.SetEnabled(false);
    first.txtParola.SetVisible(false);
    screen.Show(first, [&](QWidget& window) { EXPECT_EQ(window.focusWidget(), &screen.WidgetOf(first.numAnno)); });
}

TEST_F(Windows, SizesAreKeptForTheNextShowing) {
    SampleDialog untouched;
    screen.Show(untouched, [](QWidget&) {});
    EXPECT_EQ(screen.settings.values.count("Window.frmProva"), 0U) << "a size that nobody chose";
    SampleDialog resized;
    QSize size;
    screen.Show(resized, [&](QWidget& window) {
        size = window.size() - QSize(0, 15);
        window.resize(size);
    });
    SampleDialog again;
    screen.Show(again, [&](QWidget& window) { EXPECT_EQ(window.size(), size); });
    for (const char* nonsense : {"", "x", "12x", "-5x300", "99999x300", "aaxbb", "300x300x300"}) {
        screen.settings.values["Window.frmProva"] = nonsense;
        SampleDialog form;
        screen.Show(form, [&](QWidget& window) { EXPECT_EQ(window.size() - QSize(0, 15), size) << nonsense; });
    }
}

TEST_F(Windows, ResizingKeepsTheButtonsBelowAndGivesTheRoomToTheGrid) {
    Show([&](QWidget& window) {
        const QWidget& grid = screen.WidgetOf(dialog.grdElenco);
        const QWidget& button = screen.WidgetOf(dialog.cmdChiudi);
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
    int painted = 0;
    QString cursorInside;
    Show([&](QWidget&) {
        PaintCounter bar(screen.WidgetOf(dialog.prgLettura));
        PaintCounter label(screen.WidgetOf(dialog.lblInfo));
        dialog.cmdOk.OnChange = [&] {
            const HourglassScope hourglass(screen.toolkit);
            EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
            for (int i = 1; i <= 10; ++i) dialog.prgLettura.SetValue(i * 10);
            painted = bar.count;
            label.count = 0;
            dialog.lblInfo.SetCaption("Lettura sorgente in corso...");
            EXPECT_GE(label.count, 1) << "texts that come during work are painted at once";
        };
        Click(dialog.cmdOk);
        EXPECT_GE(painted, 5);
        EXPECT_EQ(QApplication::overrideCursor(), nullptr);
    });
}

/// What a user does while a long step is at work, when its window comes to look at it.
void PostKey(QWidget& widget, Qt::Key key) {
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QCoreApplication::postEvent(&widget, new QKeyEvent(type, key, Qt::NoModifier, key == Qt::Key_Space ? " " : ""));
    }
}

TEST_F(Windows, LongWorkCanBeClosedAndTakesNothingElse) {
    int opened = 0;
    int steps = 0;
    dialog.cmdApri.OnChange = [&] { ++opened; };
    Show([&](QWidget& window) {
        dialog.cmdOk.OnChange = [&] {
            const HourglassScope hourglass(screen.toolkit);
            for (; steps < 10 && !dialog.IsClosing(); ++steps) {
                if (steps == 2) PostKey(screen.WidgetOf(dialog.cmdApri), Qt::Key_Space);
                if (steps == 5)
                    PostKey(window.focusWidget() != nullptr ? *window.focusWidget() : window, Qt::Key_Escape);
                dialog.Repaint();
            }
        };
        Click(dialog.cmdOk);
    });
    EXPECT_EQ(opened, 0);
    EXPECT_EQ(steps, 6);
}

TEST_F(Windows, KeysThatComeDuringAShortLookAreNotLost) {
    dialog.txtNome.OnChange = [&] {
        const HourglassScope hourglass(screen.toolkit);
        dialog.lblInfo.SetCaption("Cercato: " + dialog.txtNome.Text());
    };
    Show([&](QWidget& window) {
        for (const int key : {Qt::Key_A, Qt::Key_B, Qt::Key_C}) {
            const QString letter{QChar(key)};
            QCoreApplication::postEvent(window.focusWidget(),
                                        new QKeyEvent(QEvent::KeyPress, key, Qt::NoModifier, letter));
        }
        QCoreApplication::processEvents();
        EXPECT_EQ(dialog.txtNome.Text(), "ABC");
    });
}

TEST_F(Windows, MessagesSayItInItalianWhateverTheMachineSpeaks) {
    const auto ask = [&](Buttons buttons, const std::function<void(QMessageBox&)>& deeds) {
        WhenUp<QMessageBox>(deeds);
        return screen.toolkit.Show({"Riga <b>uno</b>\r\ndue", "Attenzione!", Icon::Question, buttons});
    };
    EXPECT_EQ(ask(Buttons::YesNo,
                  [](QMessageBox& box) {
                      EXPECT_EQ(box.windowTitle(), "Attenzione!");
                      EXPECT_EQ(box.text(), "Riga <b>uno</b>\ndue");
                      EXPECT_EQ(box.textFormat(), Qt::PlainText);
                      EXPECT_EQ(box.icon(), QMessageBox::Question);
                      EXPECT_EQ(box.button(QMessageBox::Yes)->text(), "&Sì");
                      EXPECT_EQ(box.button(QMessageBox::No)->text(), "&No");
                      QTest::keyClick(&box, Qt::Key_Return);
                  }),
              Answer::Yes);
    EXPECT_EQ(ask(Buttons::YesNo, [](QMessageBox& box) { QTest::keyClick(&box, Qt::Key_Escape); }), Answer::No);
    EXPECT_EQ(ask(Buttons::YesNo, [](QMessageBox& box) { box.close(); }), Answer::No);
    EXPECT_EQ(ask(Buttons::YesNo, [](QMessageBox& box) { QTest::keyClick(&box, 's'); }), Answer::Yes);
    EXPECT_EQ(ask(Buttons::Ok,
                  [](QMessageBox& box) {
                      EXPECT_EQ(box.button(QMessageBox::Ok)->text(), "OK");
                      QTest::keyClick(&box, Qt::Key_Escape);
                  }),
              Answer::Ok);
}

TEST_F(Windows, AMessageLiftsTheHourglassForAsLongAsItAsks) {
    screen.toolkit.SetPointer(Pointer::Hourglass);
    screen.toolkit.SetPointer(Pointer::Hourglass);
    WhenUp<QMessageBox>([](QMessageBox& box) {
        EXPECT_EQ(QApplication::overrideCursor(), nullptr);
        QTest::keyClick(&box, Qt::Key_Return);
    });
    screen.toolkit.Show({"Fatto", "Aldra", Icon::Information, Buttons::Ok});
    ASSERT_NE(QApplication::overrideCursor(), nullptr);
    screen.toolkit.SetPointer(Pointer::Normal);
    EXPECT_EQ(QApplication::overrideCursor(), nullptr) << "it is not counted";
}

TEST_F(Windows, ChoosersSpeakItalianAndOfferTheFilters) {
    WhenUp<QFileDialog>([](QFileDialog& chooser) {
        EXPECT_EQ(chooser.nameFilters(), (QStringList{"All files (*)", "ASL files (*.csv *.xls)"}));
        EXPECT_EQ(chooser.selectedNameFilter(), "ASL files (*.csv *.xls)");
        QStringList texts;
        for (const auto* button : chooser.findChildren<QPushButton*>()) texts << button->text();
        EXPECT_TRUE(texts.contains("&Scegli")) << texts.join('|').toStdString();
        EXPECT_TRUE(texts.contains("Annulla")) << texts.join('|').toStdString();
        QTest::keyClick(&chooser, Qt::Key_Escape);
    });
    EXPECT_EQ(screen.toolkit.ChooseFile({"All files (*.*)|*.*|ASL files|*.csv;*.xls", 2, "csv", "", ""}), std::nullopt);
    EXPECT_EQ(NameFilters(""), QStringList{});
    EXPECT_EQ(NameFilters("Solo nome"), QStringList{});
}

TEST_F(Windows, NumbersKeepThePlainFormForTheRestOfTheProgram) {
    EXPECT_EQ(std::to_string(1.5), "1.500000");
    EXPECT_EQ(std::stod("2.5"), 2.5);
}

}  // namespace
}  // namespace vlm::ui::test
