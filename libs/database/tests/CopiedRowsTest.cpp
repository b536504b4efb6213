#include "database/MemoryRecordset.h"
#include "support/DatabaseFolder.h"
#include "support/RowText.h"

namespace vlm::data::testing {
namespace {

TEST(CopiedRows, KeepTypesAndValuesOfTheirColumns) {
    DatabaseFolder folder;
    folder.Run("Studio0012", "CREATE TABLE T (N INT, Nome VARCHAR(20), Giorno DATETIME)");
    folder.Run("Studio0012", "INSERT INTO T VALUES (1, 'a', '3/31/2011'), (2, 'b', NULL), (3, 'A', NULL)");
    const ConnectionPtr connection = folder.Connect();
    const auto copy = MemoryRecordset::CopyOf(*connection->Open("SELECT *, N AS Nome FROM T"));
    EXPECT_EQ(copy->TypeOf(2), FieldType::Date);
    EXPECT_EQ(RowText(*copy), "1|a|31/03/2011|1;2|b|NULL|2;3|A|NULL|3");
    copy->SetFilter("Nome = 'a'");
    EXPECT_EQ(RowText(*copy), "1|a|31/03/2011|1;3|A|NULL|3");
    copy->SetFilter("N = 0");
    EXPECT_TRUE(copy->AtEnd());
    folder.Run("Studio0012", "INSERT INTO T VALUES ('x', 'c', NULL)");
    EXPECT_EQ(ErrorText([&] { MemoryRecordset::CopyOf(*connection->Open("SELECT * FROM T")); }),
              "Il valore 'x' della colonna N non è un numero.");
}

}  // namespace
}  // namespace vlm::data::testing
