#include "workbooks/LazyWorkbook.h"

#include "workbooks/WorkbookFault.h"

namespace vlm::files {

const Worksheet& LazyWorkbook::Sheet(int number) {
    if (number < 1 || number > WorksheetCount()) {
        throw Error("Il file " + path_ + " non contiene il foglio numero " + std::to_string(number) +
                    ": i suoi fogli sono " + std::to_string(WorksheetCount()) + ".");
    }
    const std::size_t index = static_cast<std::size_t>(number - 1);
    if (!sheets_[index]) sheets_[index] = NamingFile(path_, [&] { return ReadSheet(index); });
    return *sheets_[index];
}

}  // namespace vlm::files
