#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "dialogs/Dialog.h"
#include "dialogs/Grid.h"
#include "dialogs/PickList.h"

namespace vlm::ui::test {

class SampleModel : public GridModel {
public:
    const std::vector<Column>& Columns() const override { return columns; }
    int RowCount() const override { return static_cast<int>(cells.size()); }
    std::string Cell(int row, int column) const override {
        ++asked;
        return cells.at(row).at(column);
    }

    std::vector<std::vector<std::string>> cells{{"1", "ROSSI", "12"}, {"0", "NICOLÒ", "7"}};
    mutable int asked = 0;  // how often for a cell
    std::vector<Column> columns{{"Importa", "Importa", 40, true, true, false},
                                {"Cognome", "Cognome", 100, true, false, false},
                                {"IDPaziente", "", 0, false, false, true}};
};

/// One control of every kind. What happens to it is written down in `calls`.
class SampleDialog : public Dialog {
public:
    explicit SampleDialog(std::string name = "frmProva") : Dialog(std::move(name), "Finestra di prova") {
        cboBranca.SetRows({"IDBranca", "Branca", "Codice"}, {{4, "Cardiologia", {"4", "Cardiologia", "008"}},
                                                             {9, "Radiologia \"A\"", {"9", "Radiologia \"A\"", ""}}});
        lstMese.SetItems({"Gennaio", "Febbraio"});
        lstTipi.SetItems({"Inserimento", "Variazione", "Cancellazione"});
        grdElenco.SetModel(model);
        txtNascosto.SetVisible(false);
        txtFermo.SetEnabled(false);
        chkFermo.SetEnabled(false);
        AddRow("&Nome", {{{&txtNome, &txtNascosto}}, {{&cmdApri}}});
        AddRow("Parola", {{{&txtParola}}});
        AddRow("Anno", {{{&numAnno}}, {{&numPeso}}, {{&dtData}}}, &fraDati);
        AddRow("", {{{&chkSimula}}, {{&chkFermo}}, {{&optTipo}}}, &fraDati);
        AddRow("Mese", {{{&lstMese}}, {{&cboBranca}}});
        AddRow("Tipi", {{{&lstTipi}}, {{&txtFermo}}});
        AddRow("", {{{&lblInfo}}, {{&prgLettura}}, {{&grdElenco}}});
        SetButtons({&cmdOk, &cmdChiudi}, &cmdOk, &cmdChiudi);
        for (Control* control : Controls()) {
            control->OnChange = [this, control] { calls.push_back(control->Name()); };
        }
        cmdChiudi.OnChange = [this] { Close(); };
    }

    /// Something in every control, of which nothing is told.
    void Fill() {
        txtNome.SetText("prima");
        numAnno.SetValue(1999);
        dtData.SetValue(Date::FromYmd(2000, 1, 1));
        lstTipi.SetSelected({1});
        lstMese.SetPosition(1);
        cboBranca.SelectKey(4);
        prgLettura.SetValue(40);
        calls.clear();
    }

    void Opening() override {
        if (onOpening) onOpening();
    }
    void Closed() override {
        calls.push_back("Closed");
        if (onClosed) onClosed();
    }
    void FrameClose() override {
        calls.push_back("FrameClose");
        onFrameClose ? onFrameClose() : Close();
    }
    void HelpRequested() override { calls.push_back("Help"); }
    void KeyUp(Control* focus, KeyEvent key) override {
        calls.push_back("up:" + (focus ? focus->Name() : "-") + ":" + std::to_string(key.code) + ":" +
                        std::to_string(key.shift));
    }

    std::vector<std::string> calls;
    std::function<void()> onOpening, onClosed, onFrameClose;
    std::function<void(KeyEvent&)> onPreview;

    Label lblInfo{*this, "lblInfo", "Totale: 2"};
    Frame fraDati{*this, "fraDati", "Dati"};
    TextField txtNome{*this, "txtNome"};
    TextField txtParola{*this, "txtParola"};
    TextField txtNascosto{*this, "txtNascosto"};
    TextField txtFermo{*this, "txtFermo"};
    NumberField numAnno{*this, "numAnno", "", 1900, 2100};
    NumberField numPeso{*this, "numPeso", "", -5, 10, 2};
    DateField dtData{*this, "dtData"};
    CheckBox chkSimula{*this, "chkSimula", "&Simulazione"};
    CheckBox chkFermo{*this, "chkFermo", "&Fermo"};
    OptionGroup optTipo{*this, "optTipo", {"Mensile", "Trimestrale"}};
    FixedList lstMese{*this, "lstMese"};
    PickList cboBranca{*this, "cboBranca"};
    MultiList lstTipi{*this, "lstTipi"};
    ProgressBar prgLettura{*this, "prgLettura"};
    Grid grdElenco{*this, "grdElenco"};
    Button cmdApri{*this, "cmdApri", "S&foglia ..."};
    Button cmdOk{*this, "cmdOk", "&Avvia"};
    Button cmdChiudi{*this, "cmdChiudi", "Chiudi"};
    std::shared_ptr<SampleModel> model = std::make_shared<SampleModel>();

protected:
    void PreviewKey(KeyEvent& key) override {
        if (onPreview) onPreview(key);
    }
};

}  // namespace vlm::ui::test
