#pragma once

#include "ASLLineSicilia.h"
#include "export/RegionRun.h"

namespace vlm::sicilia {

/// The monthly run: a line for each service, a closing line for each billing document. Marks every document that
/// matches the filters, unless there were anomalies.
class DetailedRun : public RegionRun {
public:
    DetailedRun(ASLExport& component, std::string folder, bool simulation);

protected:
    void Prepare() override;
    std::string FileName(bool anomalies) const override;
    void WriteRecords(data::Recordset& rows) override;
    std::optional<std::int64_t> MarkDocuments(data::Connection& connection) override;
    void ShowDecoded(const std::string& path) override;

private:
    void CloseDocument(ASLLineSicilia& record);

    std::string numeroASL_;
};

}  // namespace vlm::sicilia
