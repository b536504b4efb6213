#include <gtest/gtest.h>

#include "SheetDump.h"
#include "XlsBytes.h"
#include "support/TempFolder.h"

namespace vlm::test {

namespace {

constexpr const char* kDamaged = "il file è incompleto o danneggiato";

class XlsFaultTest : public testing::Test {
protected:
    std::string Fault(const std::string& bytes) {
        WriteBytes(path_, bytes);
        return FaultOf(path_);
    }
    /// The good file with a number of four bytes put in.
    std::string With(std::size_t at, std::uint32_t number) const {
        std::string bytes = good_;
        return bytes.replace(at, 4, Le32(number));
    }

    TempFolder folder_;
    const std::string path_ = folder_ / "a.xls";
    const std::string good_ =
        XlsOf({{BiffRecordOf(0xFD, CellAt(0, 0) + Le32(0)) + BiffRecordOf(0x203, CellAt(0, 1) + LeDouble(1.5)) +
                BiffRecordOf(0x205, CellAt(1, 0) + "\1" + '\0')}},
              BiffRecordOf(0xFC, Le32(1) + Le32(1) + Le16(7) + '\0' + "Cognome"));
};

TEST_F(XlsFaultTest, BrokenCompoundFiles) {
    ASSERT_EQ(Fault(good_), "");
    std::string endless = With(68, 0);  // a list of tables that never ends: the first sector follows itself
    endless.replace(kTableAt + 508, 4, Le32(0));
    std::string circle = With(kWorkbookAt + 68, 3);  // a directory whose entry leads to itself
    circle.replace(kWorkbookAt, 1, "X");
    const std::vector<std::pair<std::string, std::string>> cases = {
        {circle, "non contiene fogli"},
        {With(28, 0x0008FFFE), kDamaged},  // sectors of 256 bytes
        {With(28, 0x0020FFFE), kDamaged},  // sectors of 4 GB
        {With(48, 99), kDamaged},          // the directory outside the file
        {With(48, 0xFFFFFFFE), kDamaged},  // no directory
        {endless, kDamaged},
        {With(76, 0xFFFFFFFF), kDamaged},                 // no table
        {With(76, 0x00FFFFFF), kDamaged},                 // the table outside the file
        {With(60, 0), kDamaged},                          // a table of the mini stream that is no chain
        {With(kTableAt + 4, 1), kDamaged},                // a directory that goes in a circle
        {With(kTableAt + 12, 2), kDamaged},               // a stream that goes in a circle, shorter than it says
        {With(kTableAt + 8, 0x7FFFFFFF), kDamaged},       // a chain that leaves the file
        {With(kTableAt + 8, 0xFFFFFFFE), kDamaged},       // a chain that ends early
        {With(kWorkbookAt + 120, 0x7FFFFFFF), kDamaged},  // a stream longer than the file
        {With(kWorkbookAt + 120, 100), kDamaged},         // a stream in a mini stream that is not there
        {With(kWorkbookAt + 116, 0xFFFFFFFF), kDamaged},
        {With(kDirectoryAt + 76, 0xFFFFFFFF), "non contiene fogli"},
        {With(kDirectoryAt + 76, 1), "non contiene fogli"},
        {With(kDirectoryAt + 76, 0x7FFFFFFF), "non contiene fogli"},
        {CompoundFileOf("WordDocument", std::string(5000, 'x')), "non contiene fogli"},
        {CompoundFileOf("EncryptedPackage", std::string(5000, 'x')), "è protetto da una password"}};
    for (std::size_t i = 0; i < cases.size(); ++i) {
        EXPECT_EQ(Fault(cases[i].first), Unreadable(path_, cases[i].second)) << i;
    }
}

TEST_F(XlsFaultTest, BrokenRecords) {
    const auto global = [](const std::string& records) { return XlsOf({{}}, records); };
    const auto sheet = [](const std::string& records) { return XlsOf({{records}}); };
    const auto stream = [](const std::string& bytes) { return CompoundFileOf("Workbook", bytes); };
    const std::string place = CellAt(0, 1), texts = Le32(1) + Le32(1);
    const std::string open = BiffRecordOf(0x809, Le16(0x600) + Le16(5));
    const std::string filler = BiffRecordOf(0x1234, std::string(3000, 'x'));
    const std::vector<std::pair<std::string, std::string>> cases = {
        {stream("testo"), kDamaged},
        {stream(""), kDamaged},
        {stream(BiffRecordOf(0x809, "")), kDamaged},
        {stream(BiffRecordOf(0x809, Le16(0x400) + Le16(5))), "la sua versione non è prevista"},
        {stream(open), kDamaged},
        {stream(open + Le16(0xFC) + Le16(0xFFFF)), kDamaged},
        {stream(open + BiffRecordOf(0x85, Le32(5000) + std::string(6, '\0')) + BiffRecordOf(0x0A, "")), kDamaged},
        {stream(open + BiffRecordOf(0x85, Le32(8) + std::string(6, '\0')) + BiffRecordOf(0x0A, "")),
         "un foglio non è dove dovrebbe essere"},
        {stream(open + BiffRecordOf(0x85, Le32(40) + std::string(6, '\0')) +
                BiffRecordOf(0x85, Le32(40) + std::string(6, '\0')) + BiffRecordOf(0x0A, "") + BiffRecordOf(0x809, "") +
                filler + BiffRecordOf(0x0A, "")),
         "i suoi fogli si sovrappongono"},
        {global(BiffRecordOf(0x2F, "")), "è protetto da una password"},
        {global(BiffRecordOf(0x85, "abc")), kDamaged},
        {global(BiffRecordOf(0x22, "")), kDamaged},
        {global(BiffRecordOf(0xE0, "abc")), kDamaged},
        {global(BiffRecordOf(0x41E, Le16(200) + Le16(50) + '\0' + "dd")), "un testo è incompleto"},
        {global(BiffRecordOf(0xFC, Le32(1))), "un testo è incompleto"},
        {global(BiffRecordOf(0xFC, texts + Le16(9) + '\0' + "Rossi")), "un testo è incompleto"},
        {global(BiffRecordOf(0xFC, texts + Le16(2) + '\1' + "abc")), "un testo è incompleto"},
        {global(BiffRecordOf(0xFC, texts + Le16(1) + '\4' + Le32(0x7FFFFFFF) + "a")), "un testo è incompleto"},
        {global(BiffRecordOf(0xFC, texts + Le16(1) + '\0') + BiffRecordOf(0x3C, "")), "un testo è incompleto"},
        {XlsOf({{}}, BiffRecordOf(0x42, Le16(10000)), true), "la codifica dei caratteri 10000 non è prevista"},
        {sheet(BiffRecordOf(0xFD, place + Le32(0))), "la cella B1 rimanda a un testo che non c'è"},
        {sheet(BiffRecordOf(0xFD, place)), kDamaged},
        {sheet(BiffRecordOf(0x203, place + "1234567")), kDamaged},
        {sheet(BiffRecordOf(0x203, place + Le32(0) + Le32(0x7FF00000))), "la cella B1 non contiene un numero valido"},
        {sheet(BiffRecordOf(0x203, Le16(0) + Le16(0xFFFF) + Le16(0) + LeDouble(1))), "una cella sta fuori dal foglio"},
        {sheet(BiffRecordOf(0x205, place + "\x63\1")), "una cella contiene un errore non previsto"},
        {sheet(BiffRecordOf(0x06, place)), kDamaged},
        {sheet(BiffRecordOf(0x204, place + Le16(9) + '\0' + "Ross")), "un testo è incompleto"},
        {sheet(BiffRecordOf(0x201, "ab")), kDamaged},
        {sheet(BiffRecordOf(0x809, "")), kDamaged}};
    for (std::size_t i = 0; i < cases.size(); ++i) {
        EXPECT_EQ(Fault(cases[i].first), Unreadable(path_, cases[i].second)) << i;
    }
}

/// The good file, one in a short stream, whose table stands last and mostly free, and one in an archive.
TEST_F(XlsFaultTest, ADamagedFileIsAnErrorOrReadAndNeverMore) {
    const std::string mini = ReadBytes(std::string(kSourceFolder) + "/fuzz/corpus/workbook/mini.xls");
    for (const std::string& whole : {good_, mini, ReadBytes(DataFile("values.xlsx"))}) {
        for (std::size_t length = 0; length < whole.size() - (whole == mini ? kSector : 0); length += 64) {
            EXPECT_EQ(Fault(whole.substr(0, length)).find("Il file " + path_), 0U) << length;
        }
        for (std::size_t at = 0; at < whole.size(); at += 9) {
            std::string flipped = whole;
            flipped[at] = static_cast<char>(flipped[at] ^ (whole.starts_with("PK") ? 0x41 : 0x81));
            const std::string fault = Fault(flipped);
            EXPECT_TRUE(fault.empty() || fault.find(path_) != std::string::npos) << at;
        }
        EXPECT_EQ(Fault(whole), "");
    }
}

}  // namespace

}  // namespace vlm::test
