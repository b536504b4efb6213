#pragma once

/// The kinds of statement as a closing token numbers them.
namespace vlm::host::tds {

enum Command {
    kOtherCommand = 0,
    kSelectCommand = 0xC1,
    kInsertCommand = 0xC3,
    kDeleteCommand = 0xC4,
    kUpdateCommand = 0xC5
};

}  // namespace vlm::host::tds
