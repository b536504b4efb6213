#include "ProjectLine.h"

namespace vlm {

using projects::kLayout;

void ProjectLine::BuildLine(std::string& line, bool startsProject) const {
    projects::Record record;
    if (startsProject) {
        firstRow_.Read(record, rows_);
        FixedLine fresh(line, kLayout.length);
        PutFields<kLayout, 1, projects::kAmountsPosition - 1>(fresh, record);
        PutFields<kLayout, projects::kAmountsEnd + 1>(fresh, record);
    }
    everyRow_.Read(record, rows_);
    const bool none = record.ImportoTotale == 0 || record.NumeroAccessi == 0;
    if (!none) record.ImportoPerAccesso = Currency::FromDouble(record.ImportoTotale / record.NumeroAccessi);
    // A total that outgrew its field goes on from the digits that the field holds.
    record.Totale =
        kLayout.format.ParseAmount(FieldAt(line, projects::kTotale)) + Currency::FromDouble(record.ImportoTotale);
    FixedLine written = FixedLine::Reopen(line, kLayout.length);
    PutFields<kLayout, projects::kAmountsPosition, projects::kAmountsEnd>(written, record);
}

}  // namespace vlm
