#include <cstdlib>
#include <gtest/gtest.h>
#include <random>

#include "PrescriptionRecord.h"
#include "ProjectRecord.h"
#include "PugliaColumns.h"
#include "SiciliaColumns.h"
#include "record/LayoutPage.h"
#include "support/TempFolder.h"

namespace vlm {
namespace {

/// Values that a record may hold, whatever a run would put there.
class AnyValue {
public:
    template <std::size_t Width>
    void Into(FixedText<Width>& member) {
        member = Text();
    }
    void Into(std::string& member) { member = Text(); }
    void Into(std::int16_t& member) { member = static_cast<std::int16_t>(Number(-3, 32767)); }
    void Into(std::int32_t& member) { member = static_cast<std::int32_t>(Number(-3, 2000000000)); }
    void Into(double& member) { member = static_cast<double>(Number(-30, 2000000000)) / 4; }
    void Into(Currency& member) { member = Currency::FromUnits(Number(-2000000000, 200000000000)); }
    void Into(Date& member) { member = *Date::FromYmd(static_cast<int>(Number(1880, 2090)), 2, 3); }
    void Into(std::optional<Date>& member) {
        member.reset();
        if (Number(0, 3) > 0) Into(member.emplace());
    }
    void Into(std::array<puglia::Prestazione, puglia::kMostPrestazioni>& slots) {
        for (puglia::Prestazione& slot : slots) {
            Into(slot.Codice);
            Into(slot.Quantita);
        }
    }
    std::int64_t Number(std::int64_t least, std::int64_t most) {
        return std::uniform_int_distribution<std::int64_t>(least, most)(random_);
    }

private:
    std::string Text() {
        static const std::vector<std::string> kLetters{"A", "b", "7", "0", " ", ".", "à", "€", "Ò"};
        std::string text;
        for (std::int64_t left = Number(0, 40); left > 0; --left) text += kLetters[Number(0, 8)];
        return text;
    }
    std::mt19937 random_{20110410};
};

/// Cutting a line and putting its texts again gives the line, whatever its record holds.
template <const auto& kLayout, class Record, class Set>
void ExpectRebuilt(const char* name, const Set& set) {
    AnyValue any;
    for (int round = 0; round < 300; ++round) {
        Record record;
        set(record, any);
        ForEachField<kLayout>([&](auto index) {
            const auto member = MemberOf(std::get<index>(kLayout.fields));
            if constexpr (std::is_member_object_pointer_v<std::remove_cv_t<decltype(member)>>) any.Into(record.*member);
        });
        std::string line;
        WriteLine<kLayout>(line, record);
        ASSERT_EQ(text::Length(line), static_cast<std::size_t>(kLayout.length)) << name << '|' << line << '|';
        const auto fields = CutLine<kLayout>(line);
        std::string again;
        FixedLine rebuilt(again, kLayout.length);
        ForEachField<kLayout>([&](auto index) { rebuilt.Put(std::get<index>(kLayout.fields), fields[index]); });
        ASSERT_EQ(again, line) << name;
    }
}

TEST(LayoutsTest, TheTextsOfALinesFieldsRebuildIt) {
    const auto nothing = [](auto&, AnyValue&) {};
    ExpectRebuilt<sicilia::kLayoutM, sicilia::Record>("M", [](sicilia::Record& record, AnyValue& any) {
        record.IDConsenso = static_cast<std::int32_t>(any.Number(1, 2));
    });
    ExpectRebuilt<sicilia::kLayoutM, sicilia::Record>("M99", nothing);
    ExpectRebuilt<sicilia::kLayoutS, sicilia::Record>("S", nothing);
    ExpectRebuilt<puglia::kLayout, puglia::Ricetta>(
        "Puglia", [](puglia::Ricetta& record, AnyValue& any) { any.Into(record.Prestazioni); });
    ExpectRebuilt<prescriptions::kLayout, ASLPanoramicoLine>("ricette", nothing);
    ExpectRebuilt<projects::kLayout, projects::Record>("progetti", [](projects::Record& record, AnyValue& any) {
        record.Stato = any.Number(0, 1) == 0 ? projects::kStateFirst : projects::kStateSecond;
    });
}

/// The pages under docs/layouts; with VLM_WRITE_LAYOUTS in the environment they are written instead of compared.
template <const auto& kLayout, const auto&... kColumns>
void ExpectPage(const char* file, const std::string& title, const std::string& text) {
    const std::string page = LayoutPage(title, text, kLayout.length, DescribeFields<kLayout, kColumns...>());
    const std::string path = std::string(VLM_LAYOUT_PAGES) + "/" + file;
    if (std::getenv("VLM_WRITE_LAYOUTS") != nullptr) test::WriteBytes(path, page);
    EXPECT_EQ(test::ReadBytes(path), page) << "docs/layouts is stale: make layouts";
}

TEST(LayoutsTest, ThePagesSayWhatTheTablesSay) {
    const std::string common = " Gli importi hanno la virgola e due decimali.";
    ExpectPage<sicilia::kLayoutM, sicilia::kColumns>("sicilia-m.md", "Sicilia, prestazioni: tracciato mensile M",
                                                     "Una riga per prestazione e una riga di chiusura per documento "
                                                     "(ProgressivoRicetta 99), che per il resto ripete "
                                                     "l'ultima prestazione." +
                                                         common);
    ExpectPage<sicilia::kLayoutS>("sicilia-s.md", "Sicilia, prestazioni: tracciato trimestrale S",
                                  "Una riga per mese." + common);
    ExpectPage<puglia::kLayout, puglia::kColumns>(
        "puglia.md", "Puglia, prestazioni",
        "Una riga per ricetta, con al massimo otto prestazioni. I testi sono maiuscoli; gli importi hanno tre decimali "
        "senza virgola; una data che manca è di zeri.");
    ExpectPage<prescriptions::kLayout, prescriptions::kColumns>(
        "ricette.md", "Ricette farmaci", "Una riga per ricetta prescrivibile a carico del servizio sanitario.");
    ExpectPage<projects::kLayout, projects::kColumnsOfEveryRow, projects::kColumnsOfFirstRow>(
        "progetti.md", "Progetti",
        "Una riga per progetto; le posizioni da 155 a 187 sono completate da ogni riga della vista che appartiene al "
        "progetto." +
            common);
}

}  // namespace
}  // namespace vlm
