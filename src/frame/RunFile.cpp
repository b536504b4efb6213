#include "frame/RunFile.h"

#include <filesystem>
#include <random>

#include "files/Paths.h"
#include "frame/ModGeneral.h"
#include "values/Error.h"

namespace vlm {

namespace {

/// Five hexadecimal digits, as the file system's own service chooses them.
std::string TemporaryName() {
    static constexpr std::string_view kDigits = "0123456789ABCDEF";
    std::random_device source;
    std::uniform_int_distribution<std::size_t> digit(0, kDigits.size() - 1);
    std::string name = "rad";
    for (int i = 0; i < 5; ++i) name += kDigits[digit(source)];
    return name + ".tmp";
}

}  // namespace

RunFile::~RunFile() {
    try {
        Close();
    } catch (...) {  // the error that led here is the one to tell
    }
}

void RunFile::Open(const std::string& path) {
    writer_.Open(path);
    torn_ = false;
}

void RunFile::WriteLine(std::string_view line) {
    if (line.empty()) return;
    torn_ = true;
    writer_.WriteLine(line);
    torn_ = false;
}

void RunFile::Close() {
    if (!writer_.IsOpen()) return;
    if (torn_) return writer_.Revert();
    torn_ = true;
    writer_.Deliver();
    writer_.Keep();
}

std::string FreshWorkFile(const Library& library, std::string_view folder) {
    const std::string path = PathCombine(library.Utility().WorkFolder(), folder);
    std::error_code failure;
    std::filesystem::create_directory(files::ToNative(path), failure);
    if (!files::IsDirectory(path)) {
        throw Error("Impossibile creare la cartella " + path + ": " + files::ReasonOf(failure) + ".");
    }
    std::string file;
    do file = PathCombine(path, TemporaryName());
    while (std::filesystem::exists(files::ToNative(file), failure));
    return file;
}

}  // namespace vlm
