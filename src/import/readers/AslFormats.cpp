#include "readers/AslFormats.h"

#include "values/Utf8.h"

namespace vlm::asl {

namespace {

using enum ElementColumn;
using Columns = std::vector<SourceColumn>;

/// Street, house number and, unless it is "0", what follows the number.
void SavonaAddress(std::string_view line, RawElement& raw, std::string& scratch) {
    scratch = text::Trim(text::Mid(line, 157, 30));
    scratch.append(" ").append(text::Trim(text::Mid(line, 187, 6)));
    const std::string_view suffix = text::Trim(text::Mid(line, 193, 5));
    if (suffix != "0") scratch.append("/").append(suffix);
    raw[Indirizzo] = scratch;
}

/// A cell that holds two values: the second is what follows the first `mark`.
void Divide(RawElement& raw, ElementColumn first, char mark, ElementColumn second) {
    const std::string_view both = raw[first];
    const std::size_t at = both.find(mark);
    if (at == std::string_view::npos) return;
    raw[first] = text::Trim(both.substr(0, at));
    raw[second] = text::Trim(both.substr(at + 1));
}

void SassariName(std::string_view, RawElement& raw, std::string&) { Divide(raw, Cognome, '/', Nome); }

/// "comune - address" and "fiscal code, blank, code".
void NapoliCells(std::string_view, RawElement& raw, std::string&) {
    Divide(raw, Comune, '-', Indirizzo);
    Divide(raw, CodiceFiscale, ' ', Codice);
}

SourceFormat Fixed(std::uint32_t headings, Columns columns) {
    SourceFormat format;
    format.kind = SourceKind::FixedWidth;
    format.columns = std::move(columns);
    format.headingLines = headings;
    format.postalCodeOfComune = false;
    return format;
}

SourceFormat Delimited(const char* delimiter, int minimumFields, Columns columns) {
    SourceFormat format = Fixed(1, std::move(columns));
    format.kind = SourceKind::Delimited;
    format.delimiter = delimiter;
    format.minimumFields = minimumFields;
    format.progress = ProgressRule::LineIndex;
    return format;
}

SourceFormat Workbook(Columns columns) {
    SourceFormat format;
    format.kind = SourceKind::Workbook;
    format.columns = std::move(columns);
    format.sheet = 1;
    format.presenceColumn = 1;
    return format;
}

template <typename Change>
SourceFormat With(SourceFormat format, Change&& change) {
    change(format);
    return format;
}

const SourceFormat kCatania = With(Fixed(2, {{Cognome, 10, 25},
                                             {Nome, 36, 25},
                                             {DataNascita, 62, 10, CellRule::Date},
                                             {Sesso, 73, 1},
                                             {CodiceFiscale, 75, 16},
                                             {Codice, 92, 11},
                                             {DataScelta, 104, 10, CellRule::Date},
                                             {Scadenza, 115, 10, CellRule::Date},
                                             {Sospensione, 126, 10, CellRule::Date},
                                             {Indirizzo, 148, 33},
                                             {Comune, 182, 19}}),
                                   [](SourceFormat& format) { format.recordLength = 149; });

const SourceFormat kSavona = With(Fixed(0, {{CodiceFiscale, 1, 16},
                                            {Cognome, 17, 30},
                                            {Nome, 47, 30},
                                            {DataNascita, 77, 10, CellRule::Date},
                                            {Sesso, 87, 1},
                                            {Comune, 120, 30},
                                            {CAP, 150, 5},
                                            {Indirizzo, 157, 30},
                                            {DataScelta, 305, 10, CellRule::Date},
                                            {Scadenza, 315, 10, CellRule::Date}}),
                                  [](SourceFormat& format) {
                                      format.match = MatchRule::FiscalCodeOnly;
                                      format.adapt = SavonaAddress;
                                  });

const SourceFormat kToscana = With(Fixed(2, {{Codice, 4, 11},
                                             {Cognome, 15, 20},
                                             {Nome, 35, 20},
                                             {DataNascita, 67, 8, CellRule::YmdDate},
                                             {Sesso, 75, 1},
                                             {CodiceFiscale, 76, 16},
                                             {Indirizzo, 92, 34},
                                             {Comune, 126, 6, CellRule::IstatCode},
                                             {DataScelta, 248, 8, CellRule::YmdDate}}),
                                   [](SourceFormat& format) { format.comune = ComuneRule::ByIstatCode; });

const SourceFormat kPalermo = With(Fixed(2, {{Codice, 1, 11},
                                             {Cognome, 13, 30},
                                             {DataNascita, 44, 10, CellRule::Date},
                                             {Sesso, 55, 1},
                                             {CodiceFiscale, 57, 16},
                                             {Comune, 74, 30},
                                             {Indirizzo, 105, 30},
                                             {DataScelta, 139, 10, CellRule::Date}}),
                                   [](SourceFormat& format) { format.postalCodeOfComune = true; });

const SourceFormat kCaltanissetta = Fixed(2, {{Codice, 1, 11},
                                              {Cognome, 13, 30},
                                              {DataNascita, 44, 10, CellRule::Date},
                                              {Sesso, 55, 1},
                                              {CodiceFiscale, 57, 16},
                                              {Comune, 74, 20},
                                              {Indirizzo, 105, 30},
                                              {DataScelta, 139, 10, CellRule::Date}});

const SourceFormat kEnna = With(Fixed(0, {{Codice, 1, 11},
                                          {Cognome, 13, 30},
                                          {DataNascita, 44, 10, CellRule::Date},
                                          {Indirizzo, 55, 30},
                                          {Comune, 89, 6, CellRule::IstatCode},
                                          {CodiceFiscale, 95, 16},
                                          {DataScelta, 112, 10, CellRule::Date}}),
                                [](SourceFormat& format) { format.comune = ComuneRule::ByIstatCode; });

const SourceFormat kMarche = With(Fixed(0, {{Cognome, 1, 35},
                                            {Indirizzo, 36, 25},
                                            {Comune, 61, 25},
                                            {CAP, 86, 5},
                                            {DataNascita, 111, 8, CellRule::DmyDate},
                                            {Sesso, 146, 1},
                                            {CodiceFiscale, 150, 16},
                                            {Codice, 166, 8}}),
                                  [](SourceFormat& format) { format.match = MatchRule::FiscalCodeOnly; });

const SourceFormat kSassari = With(Fixed(0, {{Codice, 21, 7},
                                             {CodiceFiscale, 29, 16},
                                             {Cognome, 47, 36},
                                             {Nome, 0, 0, CellRule::TextIfAny},
                                             {DataNascita, 83, 10, CellRule::Date},
                                             {Comune, 94, 30},
                                             {DataScelta, 125, 8, CellRule::Date}}),
                                   [](SourceFormat& format) {
                                       format.skipsBlankLines = true;
                                       format.progress = ProgressRule::LineIndex;
                                       format.comune = ComuneRule::NotLookedUp;
                                       format.adapt = SassariName;
                                   });

}  // namespace

// Fields count from 1 here, one more than in the authorities' own descriptions.
const SourceFormat kLazio = With(Delimited(";", 13,
                                           {{Codice, 2},
                                            {CodiceFiscale, 3},
                                            {Cognome, 4},
                                            {Nome, 5},
                                            {DataNascita, 6, 0, CellRule::Date},
                                            {DataScelta, 9, 0, CellRule::Date},
                                            {Scadenza, 10, 0, CellRule::Date},
                                            {Comune, 12},
                                            {Indirizzo, 13, 0, CellRule::Words}}),
                                 [](SourceFormat& format) {
                                     format.numberInFront = true;
                                     format.emptyDate = "null";
                                 });

namespace {

const SourceFormat kSardegna = With(Delimited(",", 2,
                                              {{Cognome, 1},
                                               {Nome, 2},
                                               {DataNascita, 3, 0, CellRule::Date},
                                               {CodiceFiscale, 5},
                                               {Comune, 6, 0, CellRule::Apostrophes},
                                               {CAP, 8},
                                               {Indirizzo, 9},
                                               {Telefono, 14},
                                               {DataScelta, 15, 0, CellRule::Date},
                                               {Scadenza, 16, 0, CellRule::Date}}),
                                    [](SourceFormat& format) { format.match = MatchRule::FiscalCodeOnly; });

const SourceFormat kRagusa = With(Workbook({{Cognome, 2, 0, CellRule::AsItIs},
                                            {DataNascita, 3, 0, CellRule::Date},
                                            {Sesso, 4, 0, CellRule::AsItIs},
                                            {Indirizzo, 5},
                                            {Comune, 6},
                                            {CodiceFiscale, 7},
                                            {DataScelta, 8, 0, CellRule::Date},
                                            {Codice, 9, 0, CellRule::AsItIs}}),
                                  [](SourceFormat& format) {
                                      format.firstRow = 3;
                                      format.endsWithoutNumber = true;
                                  });

const SourceFormat kNapoli = With(
    Workbook({{Cognome, 2}, {Comune, 3}, {Indirizzo, 0}, {CodiceFiscale, 4}, {Codice, 0}}), [](SourceFormat& format) {
        format.onlyNumbered = true;
        format.adapt = NapoliCells;
    });

constexpr Authority kAuthorities[] = {
    {"ABRUZZO"},
    {"BASILICATA"},
    {"BOLZANO"},
    {"CALABRIA"},
    {"CAMPANIA"},
    {"EMILIA ROMAGNA"},
    {"FRIULI VENEZIA GIULIA"},
    {"LAZIO", &kLazio},
    {"LIGURIA"},
    {"LOMBARDIA"},
    {"MARCHE", &kMarche},
    {"MOLISE"},
    {"PIEMONTE"},
    {"PUGLIA"},
    {"SARDEGNA", &kSardegna},
    {"SICILIA"},
    {"TOSCANA", &kToscana},
    {"TRENTINO ALTO ADIGE"},
    {"TRENTO"},
    {"UMBRIA"},
    {"VALLE D'AOSTA"},
    {"VENETO"},
    {"Catania", &kCatania},
    {"Caltanissetta", &kCaltanissetta},
    {"Savona", &kSavona},
    {"Palermo", &kPalermo},
    {"Ragusa", &kRagusa},
    {"Sassari", &kSassari},
    {"Enna", &kEnna},
    {"Napoli", &kNapoli},
};

}  // namespace

std::span<const Authority> Authorities() noexcept { return kAuthorities; }

}  // namespace vlm::asl
