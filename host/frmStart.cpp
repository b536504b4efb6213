#include "frmStart.h"

#include <algorithm>

#include "demo/DemoClinic.h"

namespace vlm::host {

namespace {

constexpr const char* kTitle = "Aldra";

struct Component {
    const char* button;
    const char* name;
};

constexpr Component kComponents[] = {{"cmdPrestazioni", "ASLExport"},
                                     {"cmdRicette", "ASLPanoramico"},
                                     {"cmdProgetti", "ExportProgetti"},
                                     {"cmdPazienti", "ASLImportPatient"}};

}  // namespace

frmStart::frmStart(ui::Toolkit& toolkit, const HostOptions& options, Date today,
                   std::function<void(const HostOptions&)> open)
    : Dialog("frmStart", "Aldra - applicazione ospite di riferimento"),
      toolkit_(toolkit),
      options_(options),
      today_(today),
      open_(std::move(open)) {
    LayOut();
    Wire();
}

void frmStart::LayOut() {
    txtDati.path = true;
    if (!OnServer()) AddRow("Cartella dei database", {{{&txtDati}}, {{&cmdLink}}});
    AddRow("&Studio", {{{&cboStudio}}, {{&cmdDemo}}});
    AddRow("", {{{&cmdPrestazioni}}, {{&lblPrestazioni}}}, &fraComponenti);
    AddRow("", {{{&cmdRicette}}, {{&lblRicette}}}, &fraComponenti);
    AddRow("", {{{&cmdProgetti}}, {{&lblProgetti}}}, &fraComponenti);
    AddRow("", {{{&cmdPazienti}}, {{&lblPazienti}}}, &fraComponenti);
    SetButtons({&cmdChiudi}, nullptr, &cmdChiudi);
}

void frmStart::Wire() {
    txtDati.OnChange = [this] { ShowClinics(); };
    cmdLink.OnChange = [this] { Guarded([this] { Browse(); }); };
    cmdDemo.OnChange = [this] { Guarded([this] { MakeDemo(); }); };
    for (const Component& each : kComponents) {
        Find(each.button)->OnChange = [this, name = each.name] { Guarded([this, name] { OpenComponent(name); }); };
    }
    cmdChiudi.OnChange = [this] { Close(); };
}

void frmStart::Opening() {
    txtDati.SetVisible(!OnServer());
    cmdLink.SetVisible(!OnServer());
    if (!OnServer()) txtDati.SetText(options_.dataFolder);
    ShowClinics();
    const auto chosen =
        std::find_if(clinics_.begin(), clinics_.end(),
                     [number = ChosenClinic(options_)](const ClinicEntry& each) { return each.number == number; });
    if (chosen != clinics_.end()) cboStudio.SetPosition(static_cast<int>(chosen - clinics_.begin()));
}

void frmStart::KeyUp(ui::Control* focus, ui::KeyEvent key) {
    if (focus == &txtDati && key.code == ui::kKeyR && (key.shift & ui::kCtrl) != 0) cmdLink.Click();
}

void frmStart::Browse() {
    const auto folder = toolkit_.ChooseFolder(txtDati.Text());
    if (folder && !folder->empty()) txtDati.SetText(*folder);
}

void frmStart::ShowClinics() {
    clinics_.clear();
    Guarded([this] { clinics_ = OnServer() ? ClinicsOnServer(options_.odbcText) : ClinicsIn(txtDati.Text()); });
    std::vector<std::string> texts;
    for (const ClinicEntry& each : clinics_) {
        texts.push_back(std::to_string(each.number) + (each.name.empty() ? "" : " - " + each.name));
    }
    cboStudio.SetItems(std::move(texts));
    if (!clinics_.empty()) cboStudio.SetPosition(0);
    cmdDemo.SetVisible(clinics_.empty() && !OnServer());
    cboStudio.SetEnabled(!clinics_.empty());
    for (const Component& each : kComponents) {
        Find(each.button)->SetEnabled(!clinics_.empty());
    }
}

void frmStart::MakeDemo() {
    {
        const ui::HourglassScope hourglass(toolkit_);
        CreateDemo(txtDati.Text(), today_);
    }
    ShowClinics();
    cmdPrestazioni.SetFocus();
}

void frmStart::OpenComponent(const std::string& component) {
    HostOptions chosen = options_;
    if (!OnServer()) chosen.dataFolder = txtDati.Text();
    chosen.clinic = clinics_.at(static_cast<std::size_t>(std::max(0, cboStudio.Position()))).number;
    chosen.command = component;
    open_(chosen);
}

void frmStart::Guarded(const std::function<void()>& handler) {
    try {
        handler();
    } catch (const std::exception& error) {
        toolkit_.Show({error.what(), kTitle, ui::Icon::Critical, ui::Buttons::Ok});
    }
}

}  // namespace vlm::host
