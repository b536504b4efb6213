#pragma once

#include <optional>

#include "record/Columns.h"
#include "record/Layout.h"

/// The record of the project file: the columns of the services view that it reads and the line it writes.
namespace vlm::projects {

/// States of the services provided that have accesses and amounts of their own in the line.
inline constexpr double kStateFirst = 1;
inline constexpr double kStateSecond = 10;

/// A row of the services view. Numbers are as the view has them; dates are nothing for Null and for blank text.
struct Record {
    // Of every row of a project.
    double Stato = 0;
    double NumeroAccessi = 0;
    double ImportoTotale = 0;
    // Of its first row.
    std::optional<Date> DataRevoca;
    std::string NumeroASL;
    std::string CodiceRegionale;
    std::string Anno;
    std::string Periodo;
    double Protocollo = 0;
    std::string Cognome;
    std::string Nome;
    std::string CodiceFiscale;
    std::string Sesso;
    std::optional<Date> DataNascita;
    double CodiceISTAT = 0;
    double NumeroAslPaziente = 0;
    double CodiceIstatCittadinanza = 0;
    double ProvenienzaPaziente = 0;
    std::optional<Date> DataScelta;
    double Trattamento = 0;
    std::string CodicePatologia;
    std::string NumeroAutorizzazione;
    std::optional<Date> DataAutorizzazione;
    double NumPrestAutor = 0;
    double TipoDimissione = 0;
    std::optional<Date> DataInizio;

    // What the line makes of them.
    Currency ImportoPerAccesso;
    Currency Totale;  // of the project's rows so far
};

/// The date of a cell that may also hold a date as text; nothing for Null and for blank text.
inline constexpr auto kDateOfCell = [](std::optional<Date>& member, const data::Recordset& rows, int at) {
    member = text::Trim(rows.TextOf(at)).empty() ? std::nullopt : rows.DateOf(at);
};

/// In the order in which they are looked up.
inline constexpr std::tuple kColumnsOfEveryRow{
    Column{"IDStatoPrestazioneErogata", &Record::Stato},
    Column{"NumeroAccessi", &Record::NumeroAccessi},
    Column{"ImportoTotale", &Record::ImportoTotale},
};
inline constexpr std::tuple kColumnsOfFirstRow{
    Column{"DataRevoca", &Record::DataRevoca, kDateOfCell},
    Column{"NumeroASL", &Record::NumeroASL},
    Column{"CodiceRegionale", &Record::CodiceRegionale},
    Column{"Anno", &Record::Anno},
    Column{"Periodo", &Record::Periodo},
    Column{"Protocollo", &Record::Protocollo},
    Column{"Cognome", &Record::Cognome},
    Column{"Nome", &Record::Nome},
    Column{"CodiceFiscale", &Record::CodiceFiscale},
    Column{"Sesso", &Record::Sesso},
    Column{"DataNascita", &Record::DataNascita, kDateOfCell},
    Column{"CodiceISTAT", &Record::CodiceISTAT},
    Column{"NumeroAslPaziente", &Record::NumeroAslPaziente},
    Column{"CodiceIstatCittadinanza", &Record::CodiceIstatCittadinanza},
    Column{"ProvenienzaPaziente", &Record::ProvenienzaPaziente},
    Column{"DataScelta", &Record::DataScelta, kDateOfCell},
    Column{"Trattamento", &Record::Trattamento},
    Column{"CodicePatologia", &Record::CodicePatologia},
    Column{"NumeroAutorizzazione", &Record::NumeroAutorizzazione},
    Column{"DataAutorizzazione", &Record::DataAutorizzazione, kDateOfCell},
    Column{"NumPrestAutor", &Record::NumPrestAutor},
    Column{"TipoDimissione", &Record::TipoDimissione},
    Column{"DataInizio", &Record::DataInizio, kDateOfCell},
};

inline constexpr Derived kCodiceFiscale{&Record::CodiceFiscale,
                                        [](const Record& row) { return text::ToUpper(row.CodiceFiscale); }};
inline constexpr Derived kSesso{&Record::Sesso,
                                [](const Record& row) -> std::string_view { return row.Sesso == "M" ? "1" : "2"; }};
/// 100 is Italy.
inline constexpr Derived kCittadinanza{&Record::CodiceIstatCittadinanza, [](const Record& row) {
                                           return row.CodiceIstatCittadinanza > 0 ? row.CodiceIstatCittadinanza : 100;
                                       }};
inline constexpr Derived kTipoDimissione{
    &Record::TipoDimissione,
    [](const Record& row) { return row.DataRevoca ? text::NumberText(row.TipoDimissione) : std::string(); }};
/// Only the rows in that state write their accesses and amounts; rows of other states leave what stands there.
template <class Member>
constexpr auto InState(double state, Member Record::*member) {
    return Only{member, [state](const Record& row) { return row.Stato == state; }};
}

/// From the first of these positions to the second stands what every row of a project completes; the rest is written
/// for its first row.
inline constexpr int kAmountsPosition = 155;
inline constexpr int kAmountsEnd = 187;
inline constexpr FieldPlace kTotale{180, 8, FieldRule::Amount};

inline constexpr Layout kLayout(
    195, kCommonFields,  //
    Field(1, 6, FieldRule::Text, "NumeroASL", &Record::NumeroASL),
    Field(7, 6, FieldRule::Text, "CodiceRegionale", &Record::CodiceRegionale), Constant(13, 1, FieldRule::Text, "1"),
    Field(14, 4, FieldRule::Number, "Anno", &Record::Anno),
    Field(18, 2, FieldRule::Number, "Periodo", &Record::Periodo),
    Field(20, 6, FieldRule::Number, "Protocollo", &Record::Protocollo),
    Field(26, 30, FieldRule::Text, "Cognome", &Record::Cognome), Field(56, 20, FieldRule::Text, "Nome", &Record::Nome),
    Field(76, 16, FieldRule::Text, "CodiceFiscale", kCodiceFiscale, "maiuscolo"),
    Field(92, 1, FieldRule::Text, "Sesso", kSesso, "1 per M, altrimenti 2"),
    Field(93, 8, FieldRule::Date, "DataNascita", &Record::DataNascita),
    Field(101, 6, FieldRule::Number, "CodiceISTAT", &Record::CodiceISTAT),
    Field(107, 3, FieldRule::Number, "NumeroAslPaziente", &Record::NumeroAslPaziente),
    Field(110, 3, FieldRule::Number, "CodiceIstatCittadinanza", kCittadinanza, "100 (Italia) se manca"),
    Field(113, 1, FieldRule::Number, "ProvenienzaPaziente", &Record::ProvenienzaPaziente),
    Field(114, 8, FieldRule::Date, "DataScelta", &Record::DataScelta), Constant(122, 1, FieldRule::Number, "3"),
    Field(123, 1, FieldRule::Number, "Trattamento", &Record::Trattamento),
    Field(124, 5, FieldRule::Text, "CodicePatologia", &Record::CodicePatologia),
    Field(129, 6, FieldRule::Text, "NumeroAutorizzazione", &Record::NumeroAutorizzazione),
    Field(135, 8, FieldRule::Date, "DataAutorizzazione", &Record::DataAutorizzazione),
    Field(143, 3, FieldRule::Number, "NumPrestAutor", &Record::NumPrestAutor),
    Field(146, 1, FieldRule::Text, "TipoDimissione", kTipoDimissione, "solo con DataRevoca"),
    Field(147, 8, FieldRule::Date, "DataRevoca", &Record::DataRevoca),
    Field(kAmountsPosition, 3, FieldRule::Number, "NumeroAccessi", InState(kStateFirst, &Record::NumeroAccessi),
          "dell'ultima riga in stato 1"),
    Field(158, 3, FieldRule::Number, "NumeroAccessi", InState(kStateSecond, &Record::NumeroAccessi),
          "dell'ultima riga in stato 10"),
    Constant(161, 1, FieldRule::Number, "0"),
    Field(162, 6, FieldRule::Amount, "importo per accesso", InState(kStateFirst, &Record::ImportoPerAccesso),
          "ImportoTotale diviso NumeroAccessi dell'ultima riga in stato 1"),
    Field(168, 6, FieldRule::Amount, "importo per accesso", InState(kStateSecond, &Record::ImportoPerAccesso),
          "ImportoTotale diviso NumeroAccessi dell'ultima riga in stato 10"),
    Field(174, 6, FieldRule::Amount, "importo 0", Currency{}, "costante"),
    Field(kTotale.position, kTotale.length, kTotale.rule, "totale di ImportoTotale", &Record::Totale,
          "di tutte le righe del progetto"),
    Field(188, 8, FieldRule::Date, "DataInizio", &Record::DataInizio));

}  // namespace vlm::projects
