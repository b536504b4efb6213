#include <objbase.h>
#include <thread>

#include "Look.h"
#include "WindowDesk.h"
#include "support/Caught.h"
#include "support/ToolkitContract.h"
#include "support/Words.h"

namespace vlm::ui::test {
namespace {

INSTANTIATE_TEST_SUITE_P(Win32, ToolkitContract,
                         ::testing::Values(WindowedToolkit{"Win32", [](const auto& words, EventLog& log) {
                                                               return std::unique_ptr<Toolkit>(
                                                                   std::make_unique<Win32User>(words, log));
                                                           }}));

SIZE InsideOf(const Dialog& dialog) {
    RECT inside;
    GetClientRect(reinterpret_cast<HWND>(dialog.WindowHandle()), &inside);
    return {inside.right, inside.bottom};
}

RECT PlaceOf(const Control& control) {
    RECT place;
    GetWindowRect(WindowOf(control), &place);
    MapWindowPoints(nullptr, reinterpret_cast<HWND>(control.Owner().WindowHandle()), reinterpret_cast<POINT*>(&place),
                    2);
    return place;
}

POINT PlaceOfDay(HWND calendar, int day) {
    MCHITTESTINFO hit{};
    hit.cbSize = sizeof hit;
    for (hit.pt.y = 0; hit.pt.y < 300; hit.pt.y += 4) {
        for (hit.pt.x = 0; hit.pt.x < 300; hit.pt.x += 4) {
            const auto on = static_cast<DWORD>(SendMessageW(calendar, MCM_HITTEST, 0, reinterpret_cast<LPARAM>(&hit)));
            if (on == MCHT_CALENDARDATE && hit.st.wDay == day) return hit.pt;
        }
    }
    throw std::runtime_error("no such day is shown");
}

TEST_F(Windows, ErrorsOfHandlersCloseEveryWindowAndGoThrough) {
    SampleDialog inner("frmInterna"), unseen;
    inner.onFrameClose = [] { throw Error("rotto"); };
    inner.onClosed = [] { throw std::runtime_error("secondo errore"); };
    dialog.cmdApri.OnChange = [&] { toolkit.ShowModal(inner); };
    EXPECT_EQ(vlm::test::CaughtText([&] {
                  Show({[&] { Click(WindowOf(dialog.cmdApri)); },
                        [&] { PostMessageW(TopWindow(), WM_SYSCOMMAND, SC_CLOSE, 0); }});
              }),
              "rotto");
    EXPECT_EQ(inner.calls, (Calls{"FrameClose", "Closed"}));
    EXPECT_EQ(Runs(dialog), Calls{"Closed"});
    unseen.onOpening = [] { throw Error("niente elenco"); };
    EXPECT_EQ(vlm::test::CaughtText([&] { toolkit.ShowModal(unseen); }), "niente elenco");
    EXPECT_EQ(unseen.calls, Calls{}) << "what fails to open was never shown";
}

TEST_F(Windows, TheHostsWindowsWaitAndItsEndIsHeard) {
    const HWND host = CreateWindowExW(0, WC_STATICW, L"Gestionale", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 300, 200,
                                      nullptr, nullptr, nullptr, nullptr);
    SetActiveWindow(host);
    Show({[&] {
              EXPECT_EQ(GetWindow(TopWindow(), GW_OWNER), host);
              EXPECT_FALSE(IsWindowEnabled(host));
          },
          [] { PostQuitMessage(7); }});
    EXPECT_TRUE(IsWindowEnabled(host));
    EXPECT_EQ(GetActiveWindow(), host);
    MSG message{};
    EXPECT_TRUE(PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
    EXPECT_EQ(message.wParam, 7U) << "for the host's own loop";
    EXPECT_EQ(Runs(dialog), Calls{"Closed"});
    DestroyWindow(host);
}

TEST_F(Windows, AThreadOfAnotherApartmentIsTold) {
    std::thread([&] {
        CoInitializeEx(nullptr, COINIT_MULTITHREADED);
        const std::string why = "Le finestre non sono disponibili: il thread non è in un apartment COM singolo (STA).";
        EXPECT_EQ(vlm::test::CaughtText([&] { toolkit.ShowModal(dialog); }), why);
        EXPECT_EQ(vlm::test::CaughtText([&] { toolkit.ChooseFolder(""); }), why);
        EXPECT_EQ(vlm::test::CaughtText([&] {
                      toolkit.Show({"Non trovato", "Errore"});
                  }),
                  "Non trovato")
            << "what nobody sees goes to who called";
        CoUninitialize();
    }).join();
    EXPECT_EQ(dialog.calls, Calls{});
}

TEST_F(Windows, TabGoesThroughTheControlsInTheirOrder) {
    dialog.lstTipi.SetEnabled(false);
    dialog.onOpening = [&] { dialog.cboBranca.SetFocus(); };
    Deeds deeds{[&] { EXPECT_EQ(FocusIn(dialog), "cboBranca") << "where the dialog moved it"; },
                [&] { TakeFocus(dialog.txtNome); }};
    for (const char* name : {"txtNome", "txtParola", "numAnno", "numPeso", "dtData", "chkSimula", "optTipo", "lstMese",
                             "cboBranca", "grdElenco", "cmdApri", "cmdOk", "cmdChiudi", "txtNome"}) {
        deeds.push_back([&, name] {
            EXPECT_EQ(FocusIn(dialog), name);
            Keys("Tab");
        });
    }
    deeds.push_back([] { Keys("Shift+Tab Alt+N"); });
    deeds.push_back([&] { EXPECT_EQ(FocusIn(dialog), "txtNome") << "a label's mnemonic leads to its field"; });
    deeds.push_back([&] { EXPECT_EQ(dialog.optTipo.Position(), -1) << "the focus alone chooses nothing"; });
    deeds.push_back([&] { TakeFocus(dialog.optTipo), Keys("Right"); });
    deeds.push_back([&] { EXPECT_EQ(dialog.optTipo.Position(), 1); });
    Show(deeds);
}

/// The text before a field names it, shown or not.
TEST_F(Windows, EveryFieldHasANameForWhoHearsTheWindow) {
    Show({[&] {
        std::string names;
        for (const Control* control : dialog.Controls()) {
            if (control->HoldsCaption() || control->Kind() == ControlKind::OptionGroup) continue;
            names += " " + control->Name() + "=" + Narrow(TextOf(GetWindow(WindowOf(*control), GW_HWNDPREV)));
        }
        EXPECT_EQ(names,
                  " txtNome=&Nome txtParola=Parola txtNascosto=Nome txtFermo=Tipi numAnno=Anno numPeso=Anno "
                  "dtData=Anno lstMese=Mese cboBranca=Mese lstTipi=Tipi prgLettura=Finestra di prova "
                  "grdElenco=Finestra di prova");
    }});
}

TEST_F(Windows, FieldsTakeWhatIsTyped) {
    using Case = std::tuple<const char*, const char*, const char*>;
    for (const auto& [name, keys, shown] :
         {Case{"dtData", "'01022012 Tab", "01/02/2012"}, Case{"dtData", "'1-2-2012 Tab", "01/02/2012"},
          Case{"dtData", "'x1.2.2012 Tab", "01/02/2012"},
          Case{"dtData", "'1/2/2012 Tab Shift+Tab '3/4/2013 Tab", "03/04/2013"},  // replaces what stands there
          Case{"numAnno", "'2099 Up Up", "2100"}, Case{"numAnno", "'2100 Down", "2099"},
          Case{"numAnno", "'20x1,2", "2012"}, Case{"numPeso", "'2,75 Up", "3,75"},
          Case{"cboBranca", "Down", "Cardiologia"}, Case{"cboBranca", "'r", "Radiologia \"A\""},
          Case{"cboBranca", "'r Del", ""}, Case{"cboBranca", "Down F4 Down Escape", "Cardiologia"},
          Case{"lstTipi", "Down Shift+Down", "Variazione, Cancellazione"}, Case{"chkSimula", "Space", "1"},
          Case{"txtNome", "'uno Return 'tre Tab", "uno\r\ntre"}, Case{"txtParola", "'12", "set"}}) {
        SCOPED_TRACE(std::string(name) + " " + keys);
        SampleDialog form;
        form.txtNome.multiLine = form.txtParola.password = true;
        const Control& control = *form.Find(name);
        Deeds deeds{[&] { TakeFocus(control); }};
        for (const std::string& key : vlm::test::WordsOf(keys)) deeds.push_back([key] { Keys(key); });
        deeds.push_back([&, shown = shown] {
            EXPECT_EQ(control.ShownText(), shown);
            EXPECT_EQ(Differences(form), "");
            EXPECT_FALSE(form.IsClosing());
        });
        Show(form, deeds);
    }
}

TEST_F(Windows, WhatIsNoValueHoldsTheButtonsUpAndStaysToBeMended) {
    using Case = std::tuple<const char*, const char*, const char*>;
    for (const auto& [control, wrong, right] :
         {Case{"numAnno", "201", "End '2"}, Case{"numAnno", "2101", "Del"}, Case{"numPeso", "1,234", "Del"},
          Case{"dtData", "31/02/2012", "Del"}, Case{"dtData", "1/2/", "End '2012"}}) {
        SCOPED_TRACE(wrong);
        SampleDialog form;
        form.Fill();
        form.numPeso.SetValue(3);
        const Control& field = *form.Find(control);
        Show(form, {[&] { TakeFocus(field); }, [&, wrong = wrong] { TypeOver(wrong); }, [] { Keys("Tab"); },
                    [&] {
                        form.calls.clear();
                        Click(WindowOf(form.cmdOk));
                    },
                    [&] { EXPECT_EQ(FocusIn(form), field.Name()); }, [] { Keys("Return"); },
                    [&] {
                        EXPECT_EQ(Runs(form), Calls{}) << "the button must not run on the value before";
                        Click(WindowOf(form.cmdApri));
                    },
                    [&] {
                        EXPECT_EQ(Runs(form), Calls{"cmdApri"}) << "a button beside a field is free";
                        TakeFocus(field);
                    },
                    [right = right] { Keys(right); }, [&] { form.calls.clear(); }, [] { Keys("Return"); },
                    [&] {
                        EXPECT_EQ(Runs(form), Calls{"cmdOk"});
                        TakeFocus(field);
                    },
                    [wrong = wrong] { TypeOver(wrong); }, [&] { Click(WindowOf(form.cmdChiudi)); },
                    [] { ADD_FAILURE() << "the one that closes is free"; }});
    }
}

TEST_F(Windows, SizesAreKeptForTheNextShowingAndTheGridTakesTheRoom) {
    SIZE natural{}, seen{};
    const auto show = [&](int taller) {
        SampleDialog form;
        Show(form, {[&] {
                 seen = InsideOf(form);
                 const RECT grid = PlaceOf(form.grdElenco), button = PlaceOf(form.cmdChiudi);
                 RECT whole;
                 GetWindowRect(TopWindow(), &whole);
                 if (taller == 0) return;
                 SetWindowPos(TopWindow(), nullptr, 0, 0, whole.right - whole.left, whole.bottom - whole.top + taller,
                              SWP_NOMOVE | SWP_NOZORDER);
                 EXPECT_EQ(PlaceOf(form.grdElenco).bottom, grid.bottom + taller);
                 EXPECT_EQ(PlaceOf(form.grdElenco).top, grid.top);
                 EXPECT_EQ(PlaceOf(form.cmdChiudi).top, button.top + taller);
             }});
        return seen;
    };
    natural = show(20);
    EXPECT_EQ(settings.values["Window.frmProva"], std::to_string(natural.cx) + "x" + std::to_string(natural.cy + 20));
    EXPECT_EQ(show(0).cy, natural.cy + 20);
    for (const char* nonsense : {"", "x", "12x", "-5x300", "99999x300", "aaxbb", "300x300x300"}) {
        settings.values["Window.frmProva"] = nonsense;
        EXPECT_EQ(show(0).cy, natural.cy) << nonsense;
        EXPECT_EQ(settings.values["Window.frmProva"], nonsense) << "a size that nobody chose";
    }
}

TEST_F(Windows, LongWorkShowsItsProgressCanBeClosedAndTakesNothingElse) {
    int steps = 0, painted = 0;
    dialog.cmdOk.OnChange = [&] {
        const HourglassScope hourglass(toolkit);
        working = true;
        for (; steps < 10 && !dialog.IsClosing(); ++steps) {
            if (steps == 2) Click(WindowOf(dialog.cmdApri)), Keys("'x");
            if (steps == 5) Keys("Escape");
            dialog.prgLettura.SetValue(steps * 10 + 5);  // repaints
            RECT unpainted;
            if (GetUpdateRect(WindowOf(dialog.prgLettura), &unpainted, FALSE) == FALSE) ++painted;
        }
        working = false;
    };
    Show({[&] { Click(WindowOf(dialog.cmdOk)); }});
    EXPECT_EQ(Runs(dialog).back(), "Closed");
    EXPECT_EQ(dialog.txtNome.Text(), "");
    EXPECT_EQ(steps, 6);
    EXPECT_EQ(painted, 6);
}

TEST_F(Windows, MessagesSayItInItalian) {
    for (const auto& [buttons, key, answer] :
         {std::tuple{Buttons::YesNo, "Return", Answer::Yes}, std::tuple{Buttons::YesNo, "Escape", Answer::No},
          std::tuple{Buttons::YesNo, "Tab Return", Answer::No}, std::tuple{Buttons::YesNo, "'n", Answer::No},
          std::tuple{Buttons::YesNo, "", Answer::No}, std::tuple{Buttons::Ok, "Escape", Answer::Ok}}) {
        const Ticks ticks([&, keys = key] {
            const HWND top = TopWindow();
            if (top == nullptr) return false;
            std::string texts = Narrow(TextOf(top));
            for (HWND each = GetWindow(top, GW_CHILD); each != nullptr; each = GetWindow(each, GW_HWNDNEXT)) {
                texts += "|" + Narrow(TextOf(each));
            }
            EXPECT_EQ(texts, buttons == Buttons::Ok ? "Attenzione!||Riga & uno\r\ndue|OK"
                                                    : "Attenzione!||Riga & uno\r\ndue|&S\u00EC|&No");
            *keys == '\0' ? (void)PostMessageW(top, WM_SYSCOMMAND, SC_CLOSE, 0) : Keys(keys);
            return true;
        });
        EXPECT_EQ(toolkit.Show({"Riga & uno\r\ndue", "Attenzione!", Icon::Question, buttons}), answer) << key;
    }
}

TEST_F(Windows, ListsAndDatesOpenWithMoreThanTheirField) {
    dialog.dtData.SetValue(Date::FromYmd(2012, 2, 1));
    Show({[&] { TakeFocus(dialog.cboBranca); },
          [&] {
              dialog.cboBranca.extraColumns = {{"Codice", "Codice regionale", 1400}, {"Manca", "Manca", 1400}};
              dialog.cboBranca.SelectIndex(1);
              EXPECT_EQ(FocusIn(dialog), "cboBranca") << "the list is another one now";
              EXPECT_EQ(Differences(dialog), "");
              Keys("F4");
          },
          [&] {
              RECT place;
              GetWindowRect(WindowOf(dialog.cboBranca), &place);
              EXPECT_GT(SendMessageW(WindowOf(dialog.cboBranca), CB_GETDROPPEDWIDTH, 0, 0), 2 * 1400 * 96 / 1440);
              Keys("Up Return Tab");
          },
          [&] {
              EXPECT_EQ(dialog.cboBranca.SelectedIndex(), 0);
              EXPECT_EQ(FocusIn(dialog), "lstTipi") << "in its old place in the tab order";
              TakeFocus(dialog.dtData);
          },
          [] { Keys("F4"); }, [] { Click(TopWindow(), PlaceOfDay(TopWindow(), 15)); },
          [&] {
              EXPECT_EQ(dialog.dtData.ShownText(), "15/02/2012");
              EXPECT_EQ(FocusIn(dialog), "dtData");
              Keys("Alt+Down");
          },
          [] { Keys("Escape"); }, [&] { EXPECT_EQ(FocusIn(dialog), "dtData") << "the calendar alone is closed"; }});
}

}  // namespace
}  // namespace vlm::ui::test
