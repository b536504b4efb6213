#pragma once

#include "ASLLineSicilia.h"
#include "export/RegionRun.h"

namespace vlm::sicilia {

/// The quarterly run: a line for each month. Never writes to the database.
class SummaryRun : public RegionRun {
public:
    SummaryRun(ASLExport& component, std::string folder);

protected:
    void Prepare() override;
    std::string FileName(bool anomalies) const override;
    void WriteRecords(data::Recordset& rows) override;
    std::optional<std::int64_t> MarkDocuments(data::Connection&) override { return std::nullopt; }
    void ShowDecoded(const std::string& path) override;

private:
    void CheckRun(const std::string& codiceRegionale, double codiceBranca);

    std::string numeroASL_;
    std::string codiceDistretto_;
};

}  // namespace vlm::sicilia
