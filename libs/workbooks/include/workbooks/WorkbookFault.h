#pragma once

#include <new>
#include <stdexcept>
#include <string>

#include "values/Error.h"

namespace vlm::files {

/// What is wrong inside a workbook's file, in Italian, without the file's name: the readers know parts and cells only.
class WorkbookFault : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

inline Error UnreadableWorkbook(const std::string& path, const std::string& reason) {
    return Error("Il file " + path + " non è una cartella di lavoro leggibile: " + reason + ".");
}

/// Runs a reader's step; a fault, and more texts than there is room for, become an Error that names the file.
template <class Step>
auto NamingFile(const std::string& path, Step step) {
    try {
        return step();
    } catch (const WorkbookFault& fault) {
        throw UnreadableWorkbook(path, fault.what());
    } catch (const OverflowError&) {
        throw UnreadableWorkbook(path, "contiene troppi testi");
    } catch (const std::bad_alloc&) {
        throw UnreadableWorkbook(path, "è troppo grande per la memoria disponibile");
    }
}

}  // namespace vlm::files
