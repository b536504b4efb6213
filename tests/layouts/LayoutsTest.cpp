#include <cstdlib>
#include <gtest/gtest.h>

#include "PrescriptionRecord.h"
#include "ProjectRecord.h"
#include "PugliaColumns.h"
#include "SiciliaColumns.h"
#include "record/LayoutPage.h"
#include "support/TempFolder.h"

namespace vlm {
namespace {

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
