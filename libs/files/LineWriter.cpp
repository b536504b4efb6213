#include "files/LineWriter.h"

#include "values/CodePage1252.h"

namespace vlm::files {

void LineWriter::WriteLine(std::string_view utf8) {
    ansi_.clear();
    text::AppendAnsi(utf8, ansi_);
    ansi_ += "\r\n";
    file_.Output().Write(ansi_);
}

}  // namespace vlm::files
