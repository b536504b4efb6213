#include "DemoClinicFolder.h"

#include <system_error>

#include "values/Error.h"
#include "values/Number.h"

namespace vlm::host {

namespace fs = std::filesystem;

namespace {

/// A new folder on the same file system as `folder`, so that files can be moved from one to the other.
fs::path MakeWorkshop(const fs::path& folder) {
    fs::path beside = folder;
    while (!fs::exists(beside) && beside != beside.parent_path()) beside = beside.parent_path();
    for (int number = 1;; ++number) {
        const fs::path workshop = beside / (".clinica-in-preparazione-" + text::FormatInteger(number, false));
        if (fs::create_directory(workshop)) return workshop;
    }
}

}  // namespace

DemoClinicFolder::DemoClinicFolder(fs::path folder, std::vector<std::string> files)
    : folder_(fs::absolute(folder)), files_(std::move(files)) {
    if (fs::exists(folder_) && !fs::is_directory(folder_))
        throw Error("\"" + folder_.string() + "\" non è una cartella.");
    RefuseExisting();
    workshop_ = MakeWorkshop(folder_);
}

DemoClinicFolder::~DemoClinicFolder() {
    std::error_code ignored;
    fs::remove_all(workshop_, ignored);
}

/// A journal without its database counts too: the engine would apply it to the new one.
void DemoClinicFolder::RefuseExisting() const {
    for (const std::string& name : files_)
        for (const char* suffix : {"", "-journal", "-wal"})
            if (const fs::path file = folder_ / (name + suffix); fs::exists(fs::symlink_status(file)))
                throw Error("\"" + file.string() + "\" esiste già: la clinica dimostrativa non viene creata.");
}

void DemoClinicFolder::Deliver() {
    RefuseExisting();  // so that what stands there from now on is ours to take back
    const bool folderIsNew = !fs::exists(folder_);
    try {
        fs::create_directories(folder_);
        for (const std::string& name : files_) fs::rename(workshop_ / name, folder_ / name);
    } catch (...) {
        TakeBack(folderIsNew);
        throw;
    }
}

void DemoClinicFolder::TakeBack(bool folderIsNew) const noexcept {
    std::error_code ignored;
    for (const std::string& name : files_)
        if (!fs::exists(workshop_ / name, ignored)) fs::remove_all(folder_ / name, ignored);
    if (folderIsNew) fs::remove(folder_, ignored);
}

}  // namespace vlm::host
