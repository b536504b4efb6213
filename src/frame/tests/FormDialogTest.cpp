#include <gtest/gtest.h>

#include "frame/FormDialog.h"
#include "support/FakeServices.h"

namespace vlm {
namespace {

TEST(FormDialogTest, ClosingKeysAskTheCloseToolAndGoNowhereElse) {
    test::FakeServices services;
    for (const auto preview : {FormDialog::KeyPreview::Frame, FormDialog::KeyPreview::CommonRule}) {
        for (const ui::KeyEvent pressed : {ui::KeyEvent{ui::kKeyEscape, ui::kShiftNone}, {ui::kKeyF4, ui::kAlt}}) {
            for (const bool enabled : {false, true}) {
                FormDialog dialog(services.library, "frmProva", "", preview);
                dialog.SetCloseToolEnabled(enabled);
                EXPECT_TRUE(dialog.KeyDown(nullptr, pressed)) << "swallowed";
                EXPECT_EQ(dialog.IsClosing(), enabled);
            }
        }
    }
}

}  // namespace
}  // namespace vlm
