#pragma once

#include <memory>
#include <string>
#include <vector>

#include "workbooks/Workbook.h"
#include "workbooks/WorkbookFault.h"

namespace vlm::files {

/// What workbooks of every format do alike: a sheet is read when it is first asked for, faults name the file.
class LazyWorkbook : public Workbook {
public:
    int WorksheetCount() const override { return static_cast<int>(sheets_.size()); }
    const Worksheet& Sheet(int number) override {
        if (number < 1 || number > WorksheetCount()) {
            throw Error("Il file " + path_ + " non contiene il foglio numero " + std::to_string(number) +
                        ": i suoi fogli sono " + std::to_string(WorksheetCount()) + ".");
        }
        const std::size_t index = static_cast<std::size_t>(number - 1);
        if (!sheets_[index]) sheets_[index] = NamingFile(path_, [&] { return ReadSheet(index); });
        return *sheets_[index];
    }

protected:
    explicit LazyWorkbook(std::string path) : path_(std::move(path)) {}
    void SetWorksheetCount(std::size_t count) { sheets_.resize(count); }
    const std::string& Path() const noexcept { return path_; }

    /// `index` from 0. Throws WorkbookFault.
    virtual std::unique_ptr<Worksheet> ReadSheet(std::size_t index) = 0;

private:
    std::string path_;
    std::vector<std::unique_ptr<Worksheet>> sheets_;
};

}  // namespace vlm::files
