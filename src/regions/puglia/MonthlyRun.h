#pragma once

#include <string>
#include <vector>

#include "ASLLInePuglia.h"
#include "export/RegionRun.h"

namespace vlm::puglia {

/// The monthly run: a line for each prescription, numbered from 1. Marks every exported document and keeps its number
/// with it; a file with anomalies goes out as well.
class MonthlyRun : public RegionRun {
public:
    MonthlyRun(ASLExport& component, std::string folder, bool simulation);

protected:
    std::string FileName(bool anomalies) const override;
    void WriteRecords(data::Recordset& rows) override;
    std::optional<std::int64_t> MarkDocuments(data::Connection& connection) override;
    void ShowDecoded(const std::string& path) override;

private:
    void ClosePrescription(ASLLInePuglia& record);

    std::vector<ParcellaElaborata> documents_;
};

}  // namespace vlm::puglia
