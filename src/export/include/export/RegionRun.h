#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "database/Connection.h"
#include "export/ASLExport.h"
#include "export/DocumentLook.h"
#include "files/LineWriter.h"
#include "frame/ExportTypes.h"

namespace vlm {

/// How anomaly reports name a billing document: "Fattura A-125 del 03/02/2003: ". Kind 1 is an invoice, any other a
/// receipt.
std::string DocumentLabel(std::int32_t idTipoDocumento, std::string_view prefissoNumerazione,
                          std::int32_t numeroDocumento, Date dataDocumento);

/// A billing document that a run has exported and will mark, with the prescription number that the run gave it.
struct ParcellaElaborata {
    std::int32_t IDParcella = 0;
    std::int16_t ProgressivoRicetta = 0;
};

/// The steps that the regions' runs share: open the selection, write data file and anomaly report into the working
/// folder, copy the data file to the user's folder, mark the documents, tell the user.
///
/// The order of the ending: both files come into place in the working folder; the copy is made under a hidden name in
/// the destination; documents are marked in a transaction, once it is sure that no other run has; the copy takes its
/// place; the transaction commits; only then is anything said or asked. On any error everything goes back, nothing is
/// marked, and the run has failed. A run that takes processed documents too sends them again on purpose, and does not
/// look.
class RegionRun {
public:
    /// Where the regions differ.
    struct Rules {
        bool quarterly;             // which selection the run opens
        bool marks;                 // documents are marked, so there is a transaction
        bool deliversAnomalies;     // a file with anomalies is copied, and its documents are marked, all the same
        const char* completedText;  // first line of the closing message
    };

    RegionRun(ASLExport& component, const Rules& rules, std::string folder, bool simulation)
        : component_(component), rules_(rules), folder_(std::move(folder)), simulation_(simulation) {}
    virtual ~RegionRun() = default;
    RegionRun(const RegionRun&) = delete;
    RegionRun& operator=(const RegionRun&) = delete;

    ExportOutcome Execute();

protected:
    /// Looks up what the run needs of the clinic. Before the selection is opened: a server's connection carries one
    /// statement, and a look-up in between would have it take all rows into memory.
    virtual void Prepare() {}
    virtual std::string FileName(bool anomalies) const = 0;
    /// The row set stands on its first row.
    virtual void WriteRecords(data::Recordset& rows) = 0;
    /// Inside the transaction; how many documents a marking by the filter marked; nothing for one by keys.
    virtual std::optional<std::int64_t> MarkDocuments(data::Connection& connection) = 0;
    virtual void ShowDecoded(const std::string& path) = 0;

    ASLExport& Component() const noexcept { return component_; }
    /// Reads every row into the record and reports its anomalies, then `afterRow`. The rows of one billing document
    /// follow one another: `closeDocument` comes before the first row of the next one, and after the last row.
    template <class Record, class AfterRow, class CloseDocument>
    void ReadDocuments(data::Recordset& rows, Record& record, const AfterRow& afterRow,
                       const CloseDocument& closeDocument) {
        const int idParcella = rows.Ordinal("IDParcella");
        const auto close = [&] {
            if (look_) look_->Written(record.IDParcella());
            closeDocument();
        };
        for (; !rows.AtEnd(); rows.MoveNext()) {
            if (rows.IntegerOf(idParcella) != record.IDParcella() && record.ProgressivoRicetta() >= 1) close();
            record.ReadData();
            WriteAnomalies(record.GetErrors());
            afterRow();
        }
        close();
    }
    /// An empty line is not written.
    void WriteLine(std::string_view line);
    /// One print line of the report; an empty text is no anomaly. The run's outcome becomes "anomalies found".
    void WriteAnomalies(std::string_view text);

private:
    void Produce();
    void Deliver();
    void MarkAndDeliver(files::StagedFile& copy);
    void Conclude();
    void ShowReport() const;

    ASLExport& component_;
    Rules rules_;
    std::string folder_;
    bool simulation_;
    ExportOutcome outcome_ = ExportOutcome::FileProduced;
    std::optional<DocumentLook> look_;  // of a run that marks
    files::LineWriter data_;
    files::LineWriter report_;
    std::int64_t lineCount_ = 0;
};

}  // namespace vlm
