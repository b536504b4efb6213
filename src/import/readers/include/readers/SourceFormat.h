#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "elements/ElementList.h"

/// What a reader must know of a source: a description, whether it stands in this system for one authority's own format
/// or comes from a template of the clinic's.
namespace vlm {

enum class SourceKind { FixedWidth, Delimited, Workbook };

/// How the text of a column becomes its cell. Texts are trimmed of blanks, but for AsItIs.
enum class CellRule {
    Text,
    TextIfAny,  // left Null when there is none
    AsItIs,
    Words,          // its words parted by single blanks; a single word gives ""
    Apostrophes,    // ´ and ` become '
    ExemptionCode,  // E1 to E5 become E01 to E05
    Date,           // day, month, year; see ParseSourceDate
    LayoutDate,     // by the format's dateLayout
    YmdDate,        // yyyymmdd and no other length
    DmyDate,        // ddmmyyyy and no other length
    IstatCode       // of the comune of residence: gives IDComune, Comune and CAP
};

enum class ComuneRule { ByName, ByIstatCode, NotLookedUp };
enum class MatchRule { CodeThenFiscalCode, FiscalCodeOnly };

/// How a text source tells how much of it is read, at every tenth line or so.
enum class ProgressRule {
    EstimatedLines,  // the file's size by the length of a record
    LineIndex,       // the line's number by the last one's, both from 0
    Characters       // characters read by the file's bytes, where they are a multiple of 10
};

/// One column of the element list and where a source has it.
struct SourceColumn {
    ElementColumn column;
    int place;       // fixed width: first character; delimited: field; workbook: column. From 1; 0 is "not there"
    int length = 0;  // fixed width only, in characters
    CellRule rule = CellRule::Text;
};

/// What one row of a source says, on its way into the element list: by ordinal, trimmed as its rule wants. Views stay
/// valid until the next row.
struct RawElement {
    std::array<std::string_view, kElementColumns.size()> cells;
    std::string_view& operator[](ElementColumn column) { return cells[static_cast<std::size_t>(OrdinalOf(column))]; }
    std::string_view operator[](ElementColumn column) const {
        return cells[static_cast<std::size_t>(OrdinalOf(column))];
    }
};

struct SourceFormat {
    SourceKind kind = SourceKind::FixedWidth;
    std::vector<SourceColumn> columns;
    ComuneRule comune = ComuneRule::ByName;
    bool postalCodeOfComune = true;  // CAP from the comune table; where the source has one it is a column
    MatchRule match = MatchRule::CodeThenFiscalCode;
    std::string dateLayout;  // of LayoutDate
    std::string emptyDate;   // a text that marks an empty date, besides zeros and blanks; without regard to case

    // Text
    std::uint32_t headingLines = 0;
    bool skipsBlankLines = false;
    std::string delimiter;
    int minimumFields = 0;         // of a line that is an element
    bool numberInFront = false;    // the first field of an element is a number
    bool needsFiscalCode = false;  // a line without one is left out
    bool onlyExisting = false;     // a line whose fiscal code the archive does not have is left out
    ProgressRule progress = ProgressRule::EstimatedLines;
    std::uint32_t recordLength = 0;  // in bytes, line end included; 0 is the length of the first line with content
    /// What of a line is unlike the tables: may change the cells. `scratch` keeps a text alive until the next line.
    void (*adapt)(std::string_view line, RawElement& raw, std::string& scratch) = nullptr;

    // Workbook
    int sheet = 0;  // 0 is every sheet
    std::uint32_t firstRow = 1;
    int presenceColumn = 0;          // a row with no text here is left out
    bool endsWithoutNumber = false;  // reading ends at a row whose presence column holds no number other than 0
    bool onlyNumbered = false;       // such a row is left out
};

}  // namespace vlm
