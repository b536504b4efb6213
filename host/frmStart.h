#pragma once

#include <functional>
#include <vector>

#include "ClinicDatabase.h"
#include "dialogs/Dialog.h"
#include "dialogs/Toolkit.h"
#include "host/HostOptions.h"

namespace vlm::host {

/// The start window of the reference host: the databases, the clinic, then the component to open. It stays until it is
/// closed.
class frmStart : public ui::Dialog {
public:
    /// `open` shows a component's dialog and returns when it has closed.
    frmStart(ui::Toolkit& toolkit, const HostOptions& options, Date today,
             std::function<void(const HostOptions&)> open);

    void Opening() override;
    void KeyUp(ui::Control* focus, ui::KeyEvent key) override;

private:
    void LayOut();
    void Wire();
    void Browse();
    bool OnServer() const { return !options_.odbcText.empty(); }
    void ShowClinics();
    void MakeDemo();
    void OpenComponent(const std::string& component);
    void Guarded(const std::function<void()>& handler);

    ui::Toolkit& toolkit_;
    HostOptions options_;
    Date today_;
    std::function<void(const HostOptions&)> open_;
    std::vector<ClinicEntry> clinics_;

    ui::TextField txtDati{*this, "txtDati", "Cartella dei database"};
    ui::Button cmdLink{*this, "cmdLink", "..."};
    ui::FixedList cboStudio{*this, "cboStudio", "&Studio"};
    ui::Button cmdDemo{*this, "cmdDemo", "Crea la &dimostrazione"};
    ui::Frame fraComponenti{*this, "fraComponenti", "Cosa aprire"};
    ui::Button cmdPrestazioni{*this, "cmdPrestazioni", "&Prestazioni ..."};
    ui::Label lblPrestazioni{*this, "lblPrestazioni", "Il file mensile o trimestrale delle prestazioni per l'ASL"};
    ui::Button cmdRicette{*this, "cmdRicette", "&Ricette farmaci ..."};
    ui::Label lblRicette{*this, "lblRicette", "Il file delle ricette di farmaci"};
    ui::Button cmdProgetti{*this, "cmdProgetti", "Pro&getti ..."};
    ui::Label lblProgetti{*this, "lblProgetti", "Il file dei progetti di cura"};
    ui::Button cmdPazienti{*this, "cmdPazienti", "Importa pa&zienti ..."};
    ui::Label lblPazienti{*this, "lblPazienti", "Gli elenchi di assistiti e di esenti dell'ASL"};
    ui::Button cmdChiudi{*this, "cmdChiudi", "Chiudi"};
};

}  // namespace vlm::host
