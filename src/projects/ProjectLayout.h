#pragma once

#include <array>
#include <string_view>

#include "record/Layout.h"

/// The line of the project file: each field with the column of the services view that it comes from.
namespace vlm::projects {

inline constexpr int kLineLength = 195;

/// States of the services provided that have accesses and amounts of their own in the line.
inline constexpr int kStateFirst = 1;
inline constexpr int kStateSecond = 10;

enum class Content {
    Column,        // the column by the field's rule: a number through its value, a text or date as it is
    ColumnText,    // the column's text, also where the rule is a number's
    UpperText,     // the column's text in capitals
    Constant,      // `source` itself
    Sesso,         // "1" for M, "2" for anything else
    Cittadinanza,  // the column, or 100 (Italy) when it is not greater than 0
    IfRevoked,     // the column, only in a project with a revocation date
    AccessesOf,    // the accesses of a row in `state`
    PerAccessOf,   // the amount per access of a row in `state`
    NoAmount,      // 0
    Total,         // of all rows of the project
};

struct Source {
    std::string_view source;
    Content content = Content::Column;
    int state = 0;
};

using Row = LayoutField<Source>;

/// From the first of these positions to the one before the second stands what every row of a project completes; the
/// rest is written for its first row.
inline constexpr int kAmountsPosition = 155;
inline constexpr int kClosingPosition = 188;

inline constexpr std::array kLayout = {
    Row{1, 6, FieldRule::Text, {"NumeroASL"}},
    Row{7, 6, FieldRule::Text, {"CodiceRegionale"}},
    Row{13, 1, FieldRule::Text, {"1", Content::Constant}},
    Row{14, 4, FieldRule::Number, {"Anno", Content::ColumnText}},
    Row{18, 2, FieldRule::Number, {"Periodo", Content::ColumnText}},
    Row{20, 6, FieldRule::Number, {"Protocollo"}},
    Row{26, 30, FieldRule::Text, {"Cognome"}},
    Row{56, 20, FieldRule::Text, {"Nome"}},
    Row{76, 16, FieldRule::Text, {"CodiceFiscale", Content::UpperText}},
    Row{92, 1, FieldRule::Text, {"Sesso", Content::Sesso}},
    Row{93, 8, FieldRule::Date, {"DataNascita"}},
    Row{101, 6, FieldRule::Number, {"CodiceISTAT"}},
    Row{107, 3, FieldRule::Number, {"NumeroAslPaziente"}},
    Row{110, 3, FieldRule::Number, {"CodiceIstatCittadinanza", Content::Cittadinanza}},
    Row{113, 1, FieldRule::Number, {"ProvenienzaPaziente"}},
    Row{114, 8, FieldRule::Date, {"DataScelta"}},
    Row{122, 1, FieldRule::Number, {"3", Content::Constant}},
    Row{123, 1, FieldRule::Number, {"Trattamento"}},
    Row{124, 5, FieldRule::Text, {"CodicePatologia"}},
    Row{129, 6, FieldRule::Text, {"NumeroAutorizzazione"}},
    Row{135, 8, FieldRule::Date, {"DataAutorizzazione"}},
    Row{143, 3, FieldRule::Number, {"NumPrestAutor"}},
    Row{146, 1, FieldRule::Text, {"TipoDimissione", Content::IfRevoked}},
    Row{147, 8, FieldRule::Date, {"DataRevoca"}},
    Row{155, 3, FieldRule::Number, {"NumeroAccessi", Content::AccessesOf, kStateFirst}},
    Row{158, 3, FieldRule::Number, {"NumeroAccessi", Content::AccessesOf, kStateSecond}},
    Row{161, 1, FieldRule::Number, {"0", Content::Constant}},
    Row{162, 6, FieldRule::Amount, {"ImportoTotale", Content::PerAccessOf, kStateFirst}},
    Row{168, 6, FieldRule::Amount, {"ImportoTotale", Content::PerAccessOf, kStateSecond}},
    Row{174, 6, FieldRule::Amount, {"", Content::NoAmount}},
    Row{180, 8, FieldRule::Amount, {"ImportoTotale", Content::Total}},
    Row{188, 8, FieldRule::Date, {"DataInizio"}},
};
static_assert(IsLayoutOf(kLayout, kLineLength));

constexpr bool HasColumn(const Row& row) {
    return row.field.content != Content::Constant && row.field.content != Content::NoAmount;
}

constexpr bool IsCompletedByEveryRow(const Row& row) {
    return row.position >= kAmountsPosition && row.position < kClosingPosition;
}

}  // namespace vlm::projects
