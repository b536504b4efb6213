#include <bit>

#include "WorkbookTest.h"

namespace vlm::test {

namespace {

std::string Le16(std::uint32_t value) {
    return {static_cast<char>(value & 0xFF), static_cast<char>((value >> 8) & 0xFF)};
}
std::string Le32(std::uint32_t value) { return Le16(value & 0xFFFF) + Le16(value >> 16); }
std::string LeDouble(double value) {
    const auto bits = std::bit_cast<std::uint64_t>(value);
    return Le32(static_cast<std::uint32_t>(bits)) + Le32(static_cast<std::uint32_t>(bits >> 32));
}

std::string Record(std::uint16_t type, const std::string& data = {}) {
    return Le16(type) + Le16(static_cast<std::uint32_t>(data.size())) + data;
}
std::string CellAt(std::uint32_t row, std::uint32_t column, std::uint32_t style = 0) {
    return Le16(row) + Le16(column) + Le16(style);
}
std::string Shared(std::uint32_t column) { return Record(0xFD, CellAt(0, column) + Le32(column)); }

std::string Seed(const std::string& name) {
    return ReadBytes(std::string(VLM_SOURCE_FOLDER) + "/fuzz/corpus/workbook/" + name);
}
constexpr std::uint32_t kLastOfChain = 0xFFFFFFFE;
constexpr std::uint32_t kFree = 0xFFFFFFFF;
constexpr std::size_t kSector = 512;
// Where the parts of long.xls stand: a file of one stream beside a folder with a "Workbook" of somebody else's.
constexpr std::size_t kTableAt = kSector, kDirectoryAt = 2 * kSector, kWorkbookAt = kDirectoryAt + 3 * 128;
constexpr std::size_t kStreamAt = 3 * kSector;

/// That file with another stream of up to 4 KB.
std::string CompoundFileOf(const std::string& name, const std::string& stream) {
    std::string wide;
    for (const char c : name) wide += std::string{c, '\0'};
    wide.resize(64, '\0');
    const std::string entry = wide + Le16(static_cast<std::uint32_t>(name.size() * 2 + 2));
    return Seed("long.xls").replace(kWorkbookAt, entry.size(), entry).substr(0, kStreamAt) + stream +
           std::string(4096 - stream.size(), '\0');
}

struct XlsSheet {
    std::string records = {};
    char kind = 0;  // 0 a sheet of cells, 2 a chart, 6 a module
};

/// A workbook of sheets given by their records, and further records of its own.
std::string XlsOf(const std::vector<XlsSheet>& sheets, const std::string& globals = {}, bool version5 = false) {
    const std::string closing = Record(0x0A);
    const auto opening = [&](std::uint32_t kind) {
        return Record(0x809, Le16(version5 ? 0x500 : 0x600) + Le16(kind) + std::string(12, '\0'));
    };
    std::string stream = opening(5) + globals, parts;
    constexpr std::size_t kListed = 12;  // bytes of a sheet's record in the list
    const std::size_t start = stream.size() + sheets.size() * kListed + closing.size();
    for (const XlsSheet& sheet : sheets) {
        const auto offset = static_cast<std::uint32_t>(start + parts.size());
        stream += Record(0x85, Le32(offset) + '\0' + sheet.kind + Le16(0));
        parts += opening(0x10) + sheet.records + closing;
    }
    return CompoundFileOf(version5 ? "Book" : "Workbook", stream + closing + parts);
}

/// A formula whose result is told by eight bytes.
std::string Formula(std::uint32_t column, const std::string& result) {
    return Record(0x06, CellAt(0, column) + result + std::string(8, '\0'));
}

std::string Special(char kind, char value) { return std::string{kind, '\0', value, '\0', '\0', '\0'} + "\xFF\xFF"; }

class XlsTest : public WorkbookTest {
protected:
    std::string Row(const std::string& records, const std::string& globals = {}) {
        return Read(XlsOf({{records}}, globals), 3).at(0);
    }
    template <typename... Files>
    void AllFail(const std::string& reason, const Files&... files) {
        int at = 0;
        for (const std::string& bytes : {files...}) EXPECT_EQ(Fault(bytes), reason) << at++;
    }
    std::string With(std::size_t at, std::uint32_t number) const {
        return std::string(good_).replace(at, 4, Le32(number));
    }

    const std::string good_ =
        XlsOf({{Shared(0) + Record(0x203, CellAt(0, 1) + LeDouble(1.5)) + Record(0x205, CellAt(1, 0) + "\1" + '\0')}},
              Record(0xFC, Le32(1) + Le32(1) + Le16(7) + '\0' + "Cognome"));
};

/// In a stream of its own, with days from 1904, in the file's mini stream, of the version before.
TEST_F(XlsTest, ValuesComeBackAsTheyWereWritten) {
    EXPECT_EQ(Read(ReadBytes(DataFile("values.xls")), 4), ValuesShown());
    const auto shown = [](const std::string& name, const std::string& day) {
        return Lines{"\"Cognome|\"Nato il|#12,5|?Vero", "|||", '"' + name + '|' + day + " 12:00:00|#-7|?Falso",
                     "\"x|||"};
    };
    EXPECT_EQ(Read(Seed("long.xls"), 4), shown("D'Arrigo", "@11/04/2015"));
    EXPECT_EQ(Read(Seed("mini.xls"), 4), shown("D'Arrigo", "@10/04/2011"));
    std::string accented = Seed("version5.xls");
    accented.replace(accented.find("D'A"), 3, "D'\xC0");
    EXPECT_EQ(Read(accented, 4), shown("D'Àrrigo", "@10/04/2011"));
}

/// Files above 7 MB list the sectors of their table outside the header too.
TEST_F(XlsTest, TheListOfTheTableMayStandInSectorsOfItsOwn) {
    std::string bytes = XlsOf({{Record(0x27E, CellAt(0, 0) + Le32((7 << 2) | 2))}});
    const auto end = static_cast<std::uint32_t>(bytes.size() / kSector - 1);
    bytes.replace(76, 4, Le32(kFree)).replace(68, 4, Le32(end));
    for (const std::uint32_t next : {end + 1, kLastOfChain}) {
        std::string list = Le32(next == kLastOfChain ? 0 : kFree);
        while (list.size() < kSector - 4) list += Le32(kFree);
        bytes += list + Le32(next);
    }
    EXPECT_EQ(Read(bytes, 1), Lines{"#7"});
}

TEST_F(XlsTest, TextsGoOnInFurtherRecordsAtAnyCharacter) {
    const std::u16string text = u"cognome 7919 però";
    for (std::size_t cut = 0; cut < text.size(); ++cut) {
        for (const int wide : {0, 1, 2, 3}) {
            const bool wideFirst = wide % 2 != 0, wideThen = wide > 1;
            std::string head = Le16(static_cast<std::uint32_t>(text.size())) + (wideFirst ? '\1' : '\0'), rest;
            rest += wideThen ? '\1' : '\0';
            for (std::size_t i = 0; i < text.size(); ++i) {
                const std::string unit = Le16(text[i]);
                (i < cut ? head : rest) += unit.substr(0, (i < cut ? wideFirst : wideThen) ? 2 : 1);
            }
            const std::string next = Le16(1) + '\1' + Le16(0x141);  // the record goes on with another text
            const std::string list = Record(0xFC, Le32(2) + Le32(2) + head) + Record(0x3C, rest + next);
            EXPECT_EQ(Row(Shared(0) + Shared(1), list), "\"cognome 7919 però|\"Ł|") << cut << wide;
        }
    }
}

TEST_F(XlsTest, TextsOfTheListMayHaveRunsAndPhonetics) {
    const std::string rich = Le16(4) + '\x0C' + Le16(1) + Le32(6) + "Ros" + 's' + std::string(4, '\1') + "phonet";
    const std::string wide = Le16(2) + '\x01' + Le16(0xD800) + Le16('i'), pair = Le16(2) + '\1' + Le16(0xD834);
    EXPECT_EQ(
        Row(Shared(0) + Shared(1) + Shared(2), Record(0xFC, Le32(9) + Le32(9) + rich + wide + pair + Le16(0xDD1E))),
        "\"Ross|\"\xEF\xBF\xBDi|\"𝄞");
}

TEST_F(XlsTest, EveryKindOfCell) {
    const std::string text = Le16(3) + '\0' + "uno", at = CellAt(0, 0);
    const std::vector<std::pair<std::string, std::string>> cases = {
        {Record(0x204, at + text), "\"uno||"},
        {Record(0xD6, at + text + Le16(0)), "\"uno||"},
        {Record(0x204, at + Le16(3) + '\0' + 'u') + Record(0x3C, '\1' + Le16('n') + Le16(0x161)), "\"unš||"},
        {Record(0x27E, at + Le32((1250 << 2) | 3)), "#12,5||"},
        {Record(0x27E, at + Le32(0x40290000)), "#12,5||"},
        {Record(0x27E, at + Le32(0x40290001)), "#0,125||"},
        {Record(0x27E, at + Le32(static_cast<std::uint32_t>(-7 * 4) | 2)), "#-7||"},
        {Record(0xBD, CellAt(0, 1) + Le32((5 << 2) | 2) + Le16(0) + Le32((7 << 2) | 2) + Le16(2)), "|#5|#7"},
        {Record(0x205, at + "\1" + '\0') + Record(0x205, CellAt(0, 1) + "\x2A\1") +
             Record(0x205, CellAt(0, 2) + "\x17\1"),
         "?Vero|\"#N/D|\"#RIF!"},
        {Record(0x201, at), "||"},
        {Record(0xBE, at + Le16(0) + Le16(1)), "||"},
        {Formula(0, LeDouble(2.5)), "#2,5||"},
        {Formula(0, Special(0, 0)) + Record(0x207, text) + Formula(1, Special(3, 0)), "\"uno||"},
        {Formula(0, Special(0, 0)) + Record(0x4BC, "shared") + Record(0x207, text), "\"uno||"},
        {Formula(0, Special(1, 1)) + Formula(1, Special(1, 0)) + Formula(2, Special(2, 7)), "?Vero|?Falso|\"#DIV/0!"},
        {Formula(0, Special(0, 0)) + Formula(1, LeDouble(1)) + Record(0x207, text), "|#1|"}};
    for (const auto& [records, expected] : cases) EXPECT_EQ(Row(records), expected);
}

TEST_F(XlsTest, DatesAreNumbersOfADateStyle) {
    std::string records;
    for (std::uint32_t style = 0; style < 6; ++style) {
        records += Record(0x203, CellAt(0, style, style) + LeDouble(40643));
    }
    for (const bool version5 : {false, true}) {
        std::string globals;
        std::uint32_t format = 164;
        for (const std::string code : {"dd/mm/yyyy", "[Red]0.00", "[h]:mm"}) {
            const auto length = static_cast<std::uint32_t>(code.size());
            globals +=
                Record(0x41E, Le16(format++) +
                                  (version5 ? std::string(1, static_cast<char>(length)) : Le16(length) + '\0') + code);
        }
        for (const std::uint32_t each : {0, 14, 164, 165, 166}) globals += Record(0xE0, Le16(0) + Le16(each));
        EXPECT_EQ(Read(XlsOf({{records}}, globals, version5), 6),
                  Lines{"#40643|@10/04/2011|@10/04/2011|#40643|@10/04/2011|#40643"});
    }
}

TEST_F(XlsTest, SheetsChartsAndWhatLiesInsideASheet) {
    const std::string one = Record(0x27E, CellAt(2, 0) + Le32((1 << 2) | 2));
    const std::string chart =
        Record(0x809, Le16(0x600) + Le16(0x20)) + Record(0x203, CellAt(9, 9) + LeDouble(9)) + Record(0x0A);
    const auto workbook = Open(XlsOf({{chart, 2}, {one + chart}, {"", 6}, {}}));
    ASSERT_EQ(workbook->WorksheetCount(), 2);
    EXPECT_EQ(DumpOf(workbook->Sheet(1), 1), (Lines{"", "", "#1"}));
    EXPECT_EQ(workbook->Sheet(2).LastRow(), 0U);
}

constexpr const char* kDamaged = "il file è incompleto o danneggiato";

TEST_F(XlsTest, BrokenCompoundFiles) {
    ASSERT_EQ(Fault(good_), "");
    std::string endless = With(68, 0);  // a list of tables that never ends: the first sector follows itself
    endless.replace(kTableAt + 508, 4, Le32(0));
    std::string circle = With(kWorkbookAt + 68, 3);  // a directory whose entry leads to itself
    circle.replace(kWorkbookAt, 1, "X");
    // Sectors of 256 bytes and of 4 GB; the directory outside the file, none, in a circle; no table, one outside the
    // file; a table of the mini stream that is no chain; chains that go in a circle, leave the file, end early; a
    // stream longer than the file, in a mini stream that is not there, at no sector.
    AllFail(kDamaged, With(28, 0x0008FFFE), With(28, 0x0020FFFE), With(48, 99), With(48, 0xFFFFFFFE),
            With(kTableAt + 4, 1), With(76, 0xFFFFFFFF), With(76, 0x00FFFFFF), With(60, 0), With(kTableAt + 12, 2),
            With(kTableAt + 8, 0x7FFFFFFF), With(kTableAt + 8, 0xFFFFFFFE), With(kWorkbookAt + 120, 0x7FFFFFFF),
            With(kWorkbookAt + 120, 100), With(kWorkbookAt + 116, 0xFFFFFFFF), endless);
    AllFail("non contiene fogli", With(kDirectoryAt + 76, 0xFFFFFFFF), With(kDirectoryAt + 76, 1),
            With(kDirectoryAt + 76, 0x7FFFFFFF), circle, CompoundFileOf("WordDocument", "x"));
    EXPECT_EQ(Fault(CompoundFileOf("EncryptedPackage", "x")), "è protetto da una password");
}

TEST_F(XlsTest, BrokenRecords) {
    const auto global = [](const std::string& records) { return XlsOf({{}}, records); };
    const auto sheet = [](const std::string& records) { return XlsOf({{records}}); };
    const auto stream = [](const std::string& bytes) { return CompoundFileOf("Workbook", bytes); };
    const std::string place = CellAt(0, 1), texts = Le32(1) + Le32(1);
    const std::string open = Record(0x809, Le16(0x600) + Le16(5));
    const std::string filler = Record(0x1234, std::string(3000, 'x'));
    const std::string zeros(6, '\0'), end = Record(0x0A);
    AllFail(kDamaged, stream("testo"), stream(""), stream(Record(0x809)), stream(open),
            stream(open + Le16(0xFC) + Le16(0xFFFF)), stream(open + Record(0x85, Le32(5000) + zeros) + end),
            global(Record(0x85, "abc")), global(Record(0x22)), global(Record(0xE0, "abc")), sheet(Record(0xFD, place)),
            sheet(Record(0x203, place + "1234567")), sheet(Record(0x06, place)), sheet(Record(0x201, "ab")),
            sheet(Record(0x809)));
    AllFail("un testo è incompleto", global(Record(0x41E, Le16(200) + Le16(50) + '\0' + "dd")),
            global(Record(0xFC, Le32(1))), global(Record(0xFC, texts + Le16(9) + '\0' + "Rossi")),
            global(Record(0xFC, texts + Le16(2) + '\1' + "abc")),
            global(Record(0xFC, texts + Le16(1) + '\4' + Le32(0x7FFFFFFF) + "a")),
            global(Record(0xFC, texts + Le16(1) + '\0') + Record(0x3C)),
            sheet(Record(0x204, place + Le16(9) + '\0' + "Ross")));
    const std::pair<std::string, std::string> cases[] = {
        {stream(Record(0x809, Le16(0x400) + Le16(5))), "la sua versione non è prevista"},
        {stream(open + Record(0x85, Le32(8) + zeros) + end), "un foglio non è dove dovrebbe essere"},
        {stream(open + Record(0x85, Le32(40) + zeros) + Record(0x85, Le32(40) + zeros) + end + Record(0x809) + filler +
                end),
         "i suoi fogli si sovrappongono"},
        {global(Record(0x2F)), "è protetto da una password"},
        {XlsOf({{}}, Record(0x42, Le16(10000)), true), "la codifica dei caratteri 10000 non è prevista"},
        {sheet(Record(0xFD, place + Le32(0))), "la cella B1 rimanda a un testo che non c'è"},
        {sheet(Record(0x203, place + Le32(0) + Le32(0x7FF00000))), "la cella B1 non contiene un numero valido"},
        {sheet(Record(0x203, Le16(0) + Le16(0xFFFF) + Le16(0) + LeDouble(1))), "una cella sta fuori dal foglio"},
        {sheet(Record(0x205, place + "\x63\1")), "una cella contiene un errore non previsto"}};
    for (const auto& [bytes, reason] : cases) AllFail(reason, bytes);
}

/// The good file, one in a short stream, whose table stands last and mostly free, and one in an archive.
TEST_F(XlsTest, ADamagedFileIsAnErrorOrReadAndNeverMore) {
    const std::string mini = Seed("mini.xls");
    for (const std::string& whole : {good_, mini, ReadBytes(DataFile("values.xlsx"))}) {
        for (std::size_t length = 0; length < whole.size() - (whole == mini ? kSector : 0); length += 64) {
            EXPECT_NE(Fault(whole.substr(0, length)), "") << length;
        }
        for (std::size_t at = 0; at < whole.size(); at += 9) {
            std::string flipped = whole;
            flipped[at] = static_cast<char>(flipped[at] ^ (whole.starts_with("PK") ? 0x41 : 0x81));
            Fault(flipped);
        }
        EXPECT_EQ(Fault(whole), "");
    }
}

}  // namespace

}  // namespace vlm::test
