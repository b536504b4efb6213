#pragma once

#include <functional>
#include <string>

#include "dialogs/Dialog.h"
#include "dialogs/Grid.h"

namespace vlm::host {

/// Shows a text file line by line.
class frmTesto : public ui::Dialog {
public:
    /// `open` hands the file to the machine's own program. Throws Error when the file cannot be read.
    frmTesto(const std::string& path, std::function<void()> open);

private:
    ui::Grid grdTesto{*this, "grdTesto"};
    ui::Button cmdApri{*this, "cmdApri", "&Apri il file"};
    ui::Button cmdChiudi{*this, "cmdChiudi", "Chiudi"};
};

}  // namespace vlm::host
