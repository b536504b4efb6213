#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "ImportGrids.h"
#include "import/ASLImportPatient.h"

namespace vlm {

/// Confirms the selected elements of a grid, one by one: what fails does not stop the others.
class ImportConfirmation {
public:
    enum class Kind { Patients, Exemptions };

    /// `goOn` is told the share done after each element, in percent, and answers whether to go on.
    ImportConfirmation(ASLImportPatient& component, Kind kind, std::function<bool(int percent)> goOn)
        : component_(component), kind_(kind), goOn_(std::move(goOn)) {}

    /// What was written loses its selection and shows its patient's identifier.
    void Run(ElementGridModel& elements);

    /// For the user: how many were written, how many were not and, of the first of them, why.
    std::string Summary() const;

private:
    void Confirm(ElementGridModel& elements, std::uint32_t element);
    void Fail(const ElementList& element, const std::string& reason);
    ElementListPtr CopyOf(const ElementList& source) const;

    ASLImportPatient& component_;
    Kind kind_;
    std::function<bool(int)> goOn_;
    std::size_t written_ = 0;
    std::size_t failed_ = 0;
    std::size_t left_ = 0;  // not reached, because the user closed the dialog
    std::vector<std::string> reasons_;
};

}  // namespace vlm
