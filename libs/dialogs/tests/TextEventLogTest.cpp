#include <gtest/gtest.h>
#include <sstream>

#include "TextLayout.h"
#include "console/ConsoleToolkit.h"
#include "console/TextEventLog.h"
#include "support/SampleDialog.h"
#include "support/Words.h"

namespace vlm::ui::test {
namespace {

TEST(TextEventLog, DrawsDialogsAndTellsTheSteps) {
    std::ostringstream out("\n", std::ios::ate);
    TextEventLog log(out);
    ConsoleToolkit toolkit(
        ConsoleScript(vlm::test::WordsOf("txtNome=C:\\Aldra txtParola=segreta chkSimula=1 cboBranca=9 in:frmInterna "
                                         "txtFermo? end: answer:C:\\dati cmdApri! cmdOk! dtData= grdElenco!2 "
                                         "grdElenco? chkSimula? txtNascosto?")),
        log);
    SampleDialog dialog;
    dialog.txtParola.password = true;
    dialog.numAnno.SetValue(2012);
    dialog.lstTipi.SetSelected({1});
    dialog.optTipo.SetPosition(0);
    dialog.numPeso.SetVisible(false);
    dialog.cmdChiudi.SetVisible(false);
    dialog.model->cells.resize(7, {"1", "BIANCHI", "1"});
    dialog.grdElenco.SetCurrentRow(0);
    dialog.cmdApri.OnChange = [&] {
        struct Inner : Dialog {
            Inner() : Dialog("frmInterna", "Interna") { AddRow("Percorso di &origine", {{{&txtFermo}}}); }
            TextField txtFermo{*this, "txtFermo"};
        } inner;
        inner.txtFermo.SetEnabled(false);
        toolkit.ShowModal(inner);
        toolkit.ChooseFolder("");
        toolkit.ChooseFile({});
        log.Run("Notepad.exe a.txt");
        log.Help(5920);
        dialog.numAnno.SetFocus();
    };
    dialog.cmdOk.OnChange = [&] {
        dialog.prgLettura.SetValue(50);
        dialog.prgLettura.SetValue(100);
        toolkit.Show({"Prima riga.\r\nSeconda.", "Aldra", Icon::Question, Buttons::YesNo});
    };
    toolkit.ShowModal(dialog);
    EXPECT_EQ(out.str(), R"(
┌─ Finestra di prova ────────────────────────────────────────────────────────────────────┐
│ Nome    [                        ]  [ Sfoglia ... ]                                    │
│ Parola  [                        ]                                                     │
│ ── Dati ──                                                                             │
│ Anno    [2012]  [  /  /    ]                                                           │
│         [ ] Simulazione  [ ] Fermo  (•) Mensile  ( ) Trimestrale                       │
│ Mese    [             ▾]  [             ▾]                                             │
│ Tipi    [ ] Inserimento  [x] Variazione  [ ] Cancellazione  [                        ] │
│         Totale: 2  [....................] 0%                                           │
│   Importa  Cognome                                                                     │
│ ▸ [x]      ROSSI                                                                       │
│   [ ]      NICOLÒ                                                                      │
│   [x]      BIANCHI                                                                     │
│   [x]      BIANCHI                                                                     │
│   [x]      BIANCHI                                                                     │
│   … altre righe: 2                                                                     │
│                                                                              [ Avvia ] │
└────────────────────────────────────────────────────────────────────────────────────────┘
  › Nome: C:\Aldra
  › Parola: ***
  › [x] Simulazione
  › Mese: Radiologia "A"
  › [ Sfoglia ... ]
  ┌─ Interna ───────────────────────────────────────┐
  │ Percorso di origine  [                        ] │
  └─────────────────────────────────────────────────┘
    = Percorso di origine: (vuoto) (txtFermo, disattivato)
  « chiusa: Interna
  › scelta della cartella: C:\dati
  › scelta del file: annullata
  › programma avviato: Notepad.exe a.txt
  › guida, argomento 5920
  › il cursore va su: Anno
  › [ Avvia ]
)"
                         "\r  › avanzamento: 50%  \r  › avanzamento: 100%  \n"
                         R"(  ┌─ Aldra · DOMANDA ─┐
  │ Prima riga.       │
  │ Seconda.          │
  │   [ Sì ]  ▸[ No ] │
  └───────────────────┘
  › Anno: (vuoto)
  › grdElenco: riga 2
  = grdElenco (grdElenco)
    Importa  Cognome
    [x]      ROSSI
  ▸ [ ]      NICOLÒ
    [x]      BIANCHI
    [x]      BIANCHI
    [x]      BIANCHI
    [x]      BIANCHI
    [x]      BIANCHI
  = [x] Simulazione (chkSimula)
  = Nome: (vuoto) (txtNascosto, nascosto)
« chiusa: Finestra di prova
)");
}

TEST(TextLayout, WrapsAtBlanksAndCutsWithAnEllipsis) {
    EXPECT_EQ(Wrap("uno due tre\r\n\r\nquattro", 7), (Lines{"uno due", "tre", "", "quattro"}));
    EXPECT_EQ(Wrap("lunghissima à b", 3), (Lines{"lunghissima", "à b"}));
    EXPECT_EQ(Wrap("", 5), Lines{""});
    EXPECT_EQ(Fit("città", 5), "città");
    EXPECT_EQ(Fit("cittadina", 5), "citt…");
    EXPECT_EQ(Box("", {"è"}, "fine"), (Lines{"┌──────┐", "│ è    │", "│ fine │", "└──────┘"}));
}

}  // namespace
}  // namespace vlm::ui::test
