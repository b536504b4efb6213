#include <gtest/gtest.h>
#include <sstream>

#include "console/ConsoleToolkit.h"
#include "console/TextEventLog.h"
#include "support/SampleDialog.h"
#include "support/Words.h"

namespace vlm::ui::test {
namespace {

/// A dialog that is shown to a script, and what is told of it, after an empty line.
struct Logged {
    explicit Logged(const std::string& words) : toolkit(ConsoleScript(vlm::test::WordsOf(words)), log) {}

    std::ostringstream out{"\n", std::ios::ate};
    TextEventLog log{out};
    ConsoleToolkit toolkit;
    SampleDialog dialog;
};

TEST(TextEventLog, DrawsDialogsAndTellsTheSteps) {
    Logged told("txtNome=C:\\Aldra txtParola=segreta chkSimula=1 cboBranca=9 cmdOk! dtData=");
    SampleDialog& dialog = told.dialog;
    dialog.txtParola.password = true;
    dialog.numAnno.SetValue(2012);
    dialog.lstTipi.SetSelected({1});
    dialog.optTipo.SetPosition(0);
    dialog.grdElenco.SetCurrentRow(0);
    dialog.cmdOk.OnChange = [&] {
        dialog.prgLettura.SetValue(50);
        dialog.prgLettura.SetValue(100);
        told.toolkit.Show({"Prima riga.\r\nSeconda.", "Aldra", Icon::Question, Buttons::YesNo});
    };
    told.toolkit.ShowModal(dialog);
    EXPECT_EQ(told.out.str(), R"(
┌─ Finestra di prova ────────────────────────────────────────────────────────────────────┐
│ Nome    [                        ]  [ Sfoglia ... ]                                    │
│ Parola  [                        ]                                                     │
│ ── Dati ──                                                                             │
│ Anno    [2012]  [    ]  [  /  /    ]                                                   │
│         [ ] Simulazione  [ ] Fermo  (•) Mensile  ( ) Trimestrale                       │
│ Mese    [             ▾]  [             ▾]                                             │
│ Tipi    [ ] Inserimento  [x] Variazione  [ ] Cancellazione  [                        ] │
│         Totale: 2  [....................] 0%                                           │
│   Importa  Cognome                                                                     │
│ ▸ [x]      ROSSI                                                                       │
│   [ ]      NICOLÒ                                                                      │
│                                                                  [ Avvia ]  [ Chiudi ] │
└────────────────────────────────────────────────────────────────────────────────────────┘
  › Nome: C:\Aldra
  › Parola: ***
  › [x] Simulazione
  › Mese: Radiologia "A"
  › [ Avvia ]
)"
                              "\r  › avanzamento: 50%  \r  › avanzamento: 100%  \n"
                              R"(  ┌─ Aldra · DOMANDA ─┐
  │ Prima riga.       │
  │ Seconda.          │
  │   [ Sì ]  ▸[ No ] │
  └───────────────────┘
  › Anno: (vuoto)
« chiusa: Finestra di prova
)");
}

TEST(TextEventLog, TellsEverythingElseInALineOfItsOwn) {
    Logged told("in:frmInterna txtFermo? end: answer:C:\\dati cmdApri! grdElenco!2 grdElenco? chkSimula? txtNascosto?");
    SampleDialog& dialog = told.dialog;
    for (int i = 0; i < 5; ++i) dialog.model->cells.push_back({"1", "BIANCHI", "1"});
    for (const char* hidden : {"txtNome", "txtParola", "fraDati", "lstMese", "cboBranca", "lstTipi", "txtFermo",
                               "lblInfo", "prgLettura", "cmdChiudi"}) {
        dialog.Find(hidden)->SetVisible(false);
    }
    dialog.cmdApri.OnChange = [&] {
        struct Inner : Dialog {
            Inner() : Dialog("frmInterna", "Interna") { AddRow("Percorso di &origine", {{{&txtFermo}}}); }
            TextField txtFermo{*this, "txtFermo"};
        } inner;
        inner.txtFermo.SetEnabled(false);
        told.toolkit.ShowModal(inner);
        told.toolkit.ChooseFolder("");
        told.toolkit.ChooseFile({});
        told.log.Run("Notepad.exe a.txt");
        told.log.Help(5920);
        dialog.numAnno.SetFocus();
    };
    told.toolkit.ShowModal(dialog);
    EXPECT_EQ(told.out.str(), R"(
┌─ Finestra di prova ─────┐
│ Nome    [ Sfoglia ... ] │
│   Importa  Cognome      │
│   [x]      ROSSI        │
│   [ ]      NICOLÒ       │
│   [x]      BIANCHI      │
│   [x]      BIANCHI      │
│   [x]      BIANCHI      │
│   … altre righe: 2      │
│               [ Avvia ] │
└─────────────────────────┘
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
  = [ ] Simulazione (chkSimula)
  = Nome: (vuoto) (txtNascosto, nascosto)
« chiusa: Finestra di prova
)");
}

}  // namespace
}  // namespace vlm::ui::test
