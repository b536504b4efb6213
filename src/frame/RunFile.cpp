#include "frame/RunFile.h"

namespace vlm {

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

}  // namespace vlm
