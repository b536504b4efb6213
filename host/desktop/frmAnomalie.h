#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "dialogs/Dialog.h"
#include "dialogs/Grid.h"

namespace vlm::host {

/// An anomaly report as rows, one for each anomaly: which document, its number and date, which of its services, what is
/// wrong. An anomaly that the report tells again (documents are looked at after each of their services) is one row.
class AnomalyReport : public ui::GridModel {
public:
    /// Throws Error naming the path when the file cannot be opened.
    explicit AnomalyReport(const std::string& path);

    /// Every line is an anomaly, and there is one at least. Otherwise the file is no such report.
    bool IsReport() const noexcept { return report_; }
    const std::vector<Column>& Columns() const override { return columns_; }
    int RowCount() const override { return static_cast<int>(rows_.size()); }
    std::string Cell(int row, int column) const override;

private:
    using Row = std::vector<std::string>;
    static Row RowOf(std::string_view line);

    bool report_ = false;
    std::vector<Row> rows_;
    std::vector<Column> columns_;
};

/// The anomalies of a run, a row for each.
class frmAnomalie : public ui::Dialog {
public:
    /// `open` hands the report's file to the machine's own program.
    frmAnomalie(std::shared_ptr<const AnomalyReport> report, std::function<void()> open);

private:
    ui::Label lblTotale{*this, "lblTotale"};
    ui::Grid grdAnomalie{*this, "grdAnomalie"};
    ui::Button cmdApri{*this, "cmdApri", "&Apri il file"};
    ui::Button cmdChiudi{*this, "cmdChiudi", "Chiudi"};
};

}  // namespace vlm::host
