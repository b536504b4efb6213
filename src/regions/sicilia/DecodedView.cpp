#include "DecodedView.h"

#include "ASLLineSicilia.h"
#include "files/LineReader.h"
#include "files/LineWriter.h"
#include "files/Paths.h"
#include "frame/ModGeneral.h"

namespace vlm::sicilia {

namespace {

void WriteHead(files::LineWriter& copy, ASLLineSicilia& record, std::uint64_t fileSize) {
    const auto recordSize = static_cast<std::uint64_t>(record.LineLenght()) + kLineEndLength;
    copy.WriteLine("");
    copy.WriteLine("Nr. record elaborati: " + std::to_string(fileSize / recordSize));
    copy.WriteLine("");
    copy.WriteLine("");
    copy.WriteLine(record.DecodedLine({}, 1));
}

void WriteTail(files::LineWriter& copy, ASLLineSicilia& record) {
    copy.WriteLine("");
    copy.WriteLine("");
    const std::string legend = record.DecodedLine({}, 3);
    if (!legend.empty()) copy.WriteLine(legend);
}

}  // namespace

bool ShowDecodedView(const Library& library, const std::string& fileName, std::int32_t kind) {
    if (!FileExists(fileName)) return false;
    ASLLineSicilia record(kind);
    files::LineReader source(fileName);
    const std::string copyPath =
        PathCombine(library.Utility().WorkFolder(), FileNameOf(files::ToLibrary(fileName)) + ".tmp");
    files::LineWriter copy;
    copy.Open(copyPath);
    const bool filled = !source.AtEnd();
    if (filled) WriteHead(copy, record, source.FileSize());
    while (!source.AtEnd()) {
        copy.WriteLine(record.DecodedLine(source.ReadLine(), 2));
        if (record.ProgressivoRicetta() == kClosingLine) copy.WriteLine("");
    }
    if (filled) WriteTail(copy, record);
    copy.Deliver();
    copy.Keep();
    library.Programs().Start("Notepad.exe " + copyPath);
    return true;
}

}  // namespace vlm::sicilia
