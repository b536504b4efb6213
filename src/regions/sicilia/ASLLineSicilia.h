#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "SiciliaLayouts.h"
#include "database/Recordset.h"
#include "frame/ExportTypes.h"
#include "record/FieldFormat.h"
#include "record/FixedText.h"

namespace vlm {

/// The record of the Sicily service export. For a detailed export (`ttM`) every ReadData takes one row of the services
/// and counts and sums the rows of the current billing document; a summary (`ttS`) is set through its properties.
/// Either gives its line, and reads a written line back into readable form.
///
/// Every column is read with nulls as empty text and 0; a document number, date or amount that cannot be read throws.
class ASLLineSicilia {
public:
    explicit ASLLineSicilia(std::int32_t tipoTracciato) : TipoTracciato(tipoTracciato) {}

    const std::int32_t TipoTracciato;
    /// 222 or 60 characters; 0 for any other kind.
    int LineLenght() const noexcept;

    /// The row set to read from; null releases it. Its columns are bound here, a missing one throws.
    void SetRs(data::Recordset* rs);
    void ReadData();
    /// The record's line, valid until the next call; empty for a kind that has none.
    const std::string& GetFormattedLine();
    /// The anomalies of the current row, a line each; empty when there is none, and always for a summary.
    std::string GetErrors() const;
    /// The readable form of a written line: mode 1 the header, 2 the line, 3 the legend.
    std::string DecodedLine(std::string_view line, int mode);

    std::int16_t ProgressivoRicetta() const noexcept { return progressivoRicetta_; }
    /// Writing 0 starts a new document and clears its total.
    void SetProgressivoRicetta(std::int16_t value);
    std::int32_t IDParcella() const noexcept { return idParcella_; }

    // Summary, and the clinic's identity.
    void SetNumeroASLStudio(std::string_view value) { numeroASLStudio_ = value; }
    void SetDistrettoASLStudio(std::string_view value) { distrettoASLStudio_ = value; }
    std::string CodiceStruttura;
    std::string CodiceBranca;
    Currency ImportoLordo;
    Currency Ticket;
    std::int32_t NumeroPrestazioni = 0;  // a run counts in 16 bits, a written line may hold six digits
    std::int16_t Mese = 0;               // 0 while no month is open
    std::int16_t Anno = 0;

private:
    friend struct SiciliaChecks;

    struct Columns {
        int codiceRegione, codiceRegionale, codiceBranca, medico, medicoFiducia, cognome, nome, codiceFiscale, sesso,
            dataNascita, codiceISTAT, numeroASL, numRicetta1, numRicetta2, prestazione, quantita, dataConvenzione,
            posizioneTicket, esenzione, quotaTicket, quotaRicetta, totale, posizioneContabile, idParcella,
            numeroDocumento, dataDocumento, idConsenso, idTipoDocumento, prefisso, dataPrenotazione;
    };

    void ReadPatient();
    void ReadService();
    void ReadDocument();
    bool IsClosingLine() const noexcept { return progressivoRicetta_ == sicilia::kClosingLine; }
    void PutField(FixedLine& line, const FieldPlace& place, sicilia::Field field) const;
    void PutPatient(FixedLine& line, const FieldPlace& place, sicilia::Field field) const;
    void PutService(FixedLine& line, const FieldPlace& place, sicilia::Field field) const;
    void PutSummary(FixedLine& line, const FieldPlace& place, sicilia::Field field) const;
    template <std::size_t N>
    void Write(std::string& out, const std::array<sicilia::Row, N>& layout, int length) const {
        WriteFields(
            out, layout, length, IsClosingLine(),
            [this](FixedLine& line, const FieldPlace& place, sicilia::Field field) { PutField(line, place, field); });
    }

    std::string DecodedLineFlussoM(std::string_view line, int mode);
    std::string DecodedLineFlussoS(std::string_view line, int mode);
    void ParseLineFlussoM(std::string_view line);
    void ParseLineFlussoS(std::string_view line);

    FieldFormat format_{kCommonFields};
    data::Recordset* rs_ = nullptr;
    Columns columns_{};
    std::string line_;

    FixedText<6> codiceAzienda_;
    FixedText<6> codiceRegionale_;
    FixedText<16> medicoPrescrittore_;
    FixedText<30> cognome_;
    FixedText<20> nome_;
    FixedText<16> codiceFiscale_;
    FixedText<8> dataNascita_;
    FixedText<3> aslResidenza_;
    FixedText<16> numeroRicetta_;
    FixedText<5> riservato_;
    FixedText<8> dataConvenzione_;
    FixedText<1> codiceNomenclatore_;
    FixedText<7> codicePrestazione_;
    FixedText<2> posizioneUtente_;
    FixedText<6> esenzione_;
    FixedText<1> posizioneContabile_;
    FixedText<8> dataPrenotazione_;
    FixedText<20> identificativoRecord_;
    FixedText<3> numeroASLStudio_;
    FixedText<2> distrettoASLStudio_;
    std::string prefissoNumerazione_;
    std::int16_t brancaSpecialistica_ = 0;
    std::int16_t sesso_ = 0;
    std::int32_t comuneISTAT_ = 0;
    std::int16_t progressivoRicetta_ = 0;
    std::int16_t quantita_ = 0;
    Currency ticketRicetta_;
    Currency importoPrestazione_;
    Currency totaleRicetta_;
    std::int32_t idParcella_ = 0;
    std::int32_t idTipoDocumento_ = 0;
    std::int32_t numeroDocumento_ = 0;
    Date::Civil dataDocumento_;
    std::int32_t idConsenso_ = 0;
};

}  // namespace vlm
