#include <QFileDialog>
#include <QMessageBox>
#include <QPushButton>

#include "support/Caught.h"
#include "support/ToolkitContract.h"
#include "support/WindowDesk.h"

namespace vlm::ui::test {
namespace {

using Calls = std::vector<std::string>;

/// A user of windows that go with him.
struct OwnWindows {
    MemorySettings settings;
    QtToolkit toolkit{settings};
};
struct QtUserAlone : private OwnWindows, public QtUser {
    QtUserAlone(const std::vector<std::string>& words, EventLog& log) : QtUser(toolkit, words, log) {}
};

INSTANTIATE_TEST_SUITE_P(Qt, ToolkitContract,
                         ::testing::Values(WindowedToolkit{"Qt", [](const auto& words, EventLog& log) {
                                                               return std::unique_ptr<Toolkit>(
                                                                   std::make_unique<QtUserAlone>(words, log));
                                                           }}));

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
    SampleDialog inner("frmInterna"), unseen;
    inner.onFrameClose = [] { throw Error("rotto"); };
    inner.onClosed = [] { throw std::runtime_error("secondo errore"); };
    dialog.cmdApri.OnChange = [&] { Show(inner, [](QWidget& window) { window.close(); }); };
    EXPECT_EQ(vlm::test::CaughtText([&] { Show([&](QWidget&) { Click(dialog.cmdApri); }); }), "rotto");
    EXPECT_EQ(inner.calls, (Calls{"FrameClose", "Closed"}));
    EXPECT_EQ(dialog.calls, Calls{"Closed"});
    EXPECT_EQ(toolkit.TopWindow(), nullptr);
    unseen.onOpening = [] { throw Error("niente elenco"); };
    EXPECT_EQ(vlm::test::CaughtText([&] { toolkit.ShowModal(unseen); }), "niente elenco");
    EXPECT_EQ(unseen.calls, Calls{}) << "what fails to open was never shown";
}

TEST_F(Windows, TheFocusGoesWhereTheDialogMovesIt) {
    dialog.onOpening = [&] { dialog.cboBranca.SetFocus(); };
    Show([&](QWidget&) {
        EXPECT_EQ(Focus(dialog), "cboBranca");
        dialog.optTipo.SetPosition(1);
        dialog.optTipo.SetFocus();
        EXPECT_EQ(QApplication::focusWidget(), Of(dialog.optTipo).FocusStops().at(1)) << "the chosen option";
    });
    SampleDialog first;
    first.txtNome.SetEnabled(false);
    first.txtParola.SetVisible(false);
    Show(first, [&](QWidget&) { EXPECT_EQ(Focus(first), "numAnno"); });
}

TEST_F(Windows, SizesAreKeptForTheNextShowingAndTheGridTakesTheRoom) {
    QSize natural, chosen;
    const auto show = [&](const std::function<void(QWidget & window, SampleDialog & form)>& deeds) {
        SampleDialog form;
        Show(form, [&](QWidget& window) { deeds(window, form); });
    };
    show([&](QWidget& window, SampleDialog&) { natural = window.size(); });
    EXPECT_TRUE(settings.values.empty()) << "a size that nobody chose";
    show([&](QWidget& window, SampleDialog& form) {
        const int height = WidgetOf(form.grdElenco).height();
        const QRect button = WidgetOf(form.cmdChiudi).geometry();
        chosen = natural + QSize(0, 20);
        window.resize(chosen);
        QCoreApplication::processEvents();
        EXPECT_EQ(WidgetOf(form.grdElenco).height(), height + 20);
        EXPECT_EQ(WidgetOf(form.cmdChiudi).geometry(), button.translated(0, 20));
    });
    show([&](QWidget& window, SampleDialog&) { EXPECT_EQ(window.size(), chosen); });
    for (const char* nonsense : {"", "x", "12x", "-5x300", "99999x300", "aaxbb", "300x300x300"}) {
        settings.values["Window.frmProva"] = nonsense;
        show([&](QWidget& window, SampleDialog&) { EXPECT_EQ(window.size(), natural) << nonsense; });
    }
}

TEST_F(Windows, ProgressIsPaintedWhileTheWorkGoesOn) {
    Show([&](QWidget&) {
        PaintCounter bar(WidgetOf(dialog.prgLettura)), label(WidgetOf(dialog.lblInfo));
        dialog.cmdOk.OnChange = [&] {
            const HourglassScope hourglass(toolkit);
            EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
            bar.count = label.count = 0;
            for (int i = 1; i <= 10; ++i) dialog.prgLettura.SetValue(i * 10);
            EXPECT_GE(bar.count, 5);
            dialog.lblInfo.SetCaption("Lettura sorgente in corso...");
            EXPECT_GE(label.count, 1) << "texts that come during work are painted at once";
        };
        Click(dialog.cmdOk);
        EXPECT_GE(label.count, 1);
        EXPECT_EQ(QApplication::overrideCursor(), nullptr);
    });
}

/// What a user does while a step is at work, when its window comes to look at it.
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

TEST_F(Windows, MessagesSayItInItalianAndLiftTheHourglassForAsLongAsTheyAsk) {
    for (int i = 0; i < 2; ++i) toolkit.SetPointer(Pointer::Hourglass);
    for (const auto& [buttons, key, answer] :
         {std::tuple{Buttons::YesNo, "Return", Answer::Yes}, std::tuple{Buttons::YesNo, "Esc", Answer::No},
          std::tuple{Buttons::YesNo, "'s", Answer::Yes}, std::tuple{Buttons::YesNo, "", Answer::No},
          std::tuple{Buttons::Ok, "Esc", Answer::Ok}}) {
        WhenUp<QMessageBox>([buttons = buttons, key = key](QMessageBox& box) {
            EXPECT_EQ(QApplication::overrideCursor(), nullptr);
            EXPECT_EQ(box.windowTitle(), "Attenzione!");
            EXPECT_EQ(box.text(), "Riga <b>uno</b>\ndue");
            EXPECT_EQ(box.textFormat(), Qt::PlainText);
            EXPECT_EQ(box.icon(), QMessageBox::Question);
            QStringList texts;
            for (const QAbstractButton* button : box.buttons()) texts << button->text();
            EXPECT_EQ(texts.join(' '), buttons == Buttons::Ok ? "OK" : "&Sì &No");
            *key == '\0' ? (void)box.close() : Keys(key);
        });
        EXPECT_EQ(toolkit.Show({"Riga <b>uno</b>\r\ndue", "Attenzione!", Icon::Question, buttons}), answer) << key;
        EXPECT_NE(QApplication::overrideCursor(), nullptr);
    }
    toolkit.SetPointer(Pointer::Normal);
    EXPECT_EQ(QApplication::overrideCursor(), nullptr) << "it is not counted";
}

TEST_F(Windows, ChoosersSpeakItalianAndOfferTheFilters) {
    WhenUp<QFileDialog>([](QFileDialog& chooser) {
        EXPECT_EQ(chooser.nameFilters(), (QStringList{"All files (*)", "ASL files (*.csv *.xls)"}));
        EXPECT_EQ(chooser.selectedNameFilter(), "ASL files (*.csv *.xls)");
        QStringList texts;
        for (const auto* button : chooser.findChildren<QPushButton*>()) texts << button->text();
        EXPECT_TRUE(texts.contains("&Scegli") && texts.contains("Annulla")) << texts.join(' ').toStdString();
        Keys("Esc");
    });
    EXPECT_EQ(toolkit.ChooseFile({"All files (*.*)|*.*|ASL files|*.csv;*.xls", 2, "csv", "", ""}), std::nullopt);
    WhenUp<QFileDialog>([](QFileDialog&) { Keys("Esc"); });
    EXPECT_EQ(toolkit.ChooseFile({"Solo nome", 1, "", "", ""}), std::nullopt);
}

TEST_F(Windows, NumbersKeepThePlainFormForTheRestOfTheProgram) { EXPECT_EQ(std::to_string(1.5), "1.500000"); }

}  // namespace
}  // namespace vlm::ui::test
