#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "frame/FormDialog.h"

namespace vlm {

/// What the export dialogs share: a destination that the user's settings remember, with its browse button, and the
/// button that starts the run when every field is right. The dialog stays open after a run.
///
/// Controls take their turn with the tab key as they are made, so a dialog has the shared ones among its own.
class ExportDialog : public FormDialog {
public:
    /// The destination comes first: whatever fails later, closing keeps it.
    void Opening() final;
    void Closed() override;

protected:
    struct Destination {
        explicit Destination(ExportDialog& dialog);

        ui::TextField txtPath;
        ui::Button cmdLink;
        ui::CheckBox chkVisualizza;
    };
    struct RunButtons {
        explicit RunButtons(ExportDialog& dialog);

        ui::Button cmdConferma;
        ui::Button cmdVisualizza;  // does nothing of its own
        ui::Button cmdAnnulla;
    };

    /// `setting` is the key that remembers the destination.
    ExportDialog(const Library& library, std::string name, std::string title, const char* setting)
        : FormDialog(library, std::move(name), std::move(title), KeyPreview::Frame), setting_(setting) {}

    /// The destination as typed, and without the blanks around it.
    const std::string& Path() const { return destination_->txtPath.Text(); }
    std::string TrimmedPath() const;
    /// The rows of the destination and of the check box below it.
    void AddDestinationRows();

    /// Fills the fields on opening. A step that fails leaves the others their work when each is Guarded for itself.
    virtual void Fill() = 0;
    /// Tells what is not right and moves the focus there.
    virtual bool Validate() = 0;
    virtual void Run() = 0;
    /// What the user chooses as destination, nothing for a choice that was cancelled: a folder, unless the dialog asks
    /// for something else.
    virtual std::optional<std::string> Choose();

    /// Checks for Validate. False when the check fails, which has been told then; the focus is on the field.
    bool Require(bool filled, const char* field, ui::Control& control) const;
    /// A destination was typed, and the folder that it names is there.
    bool RequireDestination(std::string_view folder) const;

private:
    const char* setting_;
    Destination* destination_ = nullptr;
};

}  // namespace vlm
