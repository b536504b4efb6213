#include <array>

#include "HostOfRuns.h"
#include "Win32User.h"
#include "support/RowText.h"
#include "support/Words.h"
#include "values/Utf16.h"

/// Whole runs of the registered library on a host's own data objects. What comes of them, byte for byte, is what comes
/// of the same steps when the library has the embedded engine to itself.
namespace vlm::test {
namespace {

using namespace server;

/// What came of jobs: events by job, bytes by file, rows by table.
using Outcome = std::map<std::string, std::string>;

/// How clients call: by name.
struct Late {
    static void Show(const com::Ref<IDispatch>& component, _Connection* connection) {
        const com::LateBound late(component);
        late.PutRef("Connection", connection);
        late.Call("ShowDialog");
    }
    static std::string LineOf(const com::Ref<IDispatch>& record, _Connection* connection, _Recordset* rows) {
        const com::LateBound late(record);
        late.PutRef("Connection", connection);
        late.PutRef("Rs", rows);
        late.Call("ReadData");
        return late.Call("GetFormattedLine").Text();
    }
};

/// By the tables of the interfaces.
struct Early {
    static void Show(const com::Ref<IDispatch>& component, _Connection* connection) {
        const auto show = [&](const auto& early) {
            if (!early) return 0;
            EXPECT_EQ(early->putref_Connection(connection), S_OK);
            EXPECT_EQ(early->ShowDialog(), S_OK);
            return 1;
        };
        IDispatch* const object = component.Get();
        EXPECT_EQ(show(com::Query<_ASLExport>(object)) + show(com::Query<_ASLPanoramico>(object)) +
                      show(com::Query<_ExportProgetti>(object)) + show(com::Query<_ASLImportPatient>(object)),
                  1);
    }
    static std::string LineOf(const com::Ref<IDispatch>& record, _Connection* connection, _Recordset* rows) {
        const auto early = com::Query<_ASLPanoramicoLine>(record.Get());
        VARIANT_BOOL done = VARIANT_FALSE;
        com::Bstr line;
        EXPECT_EQ(early->putref_Connection(connection), S_OK);
        EXPECT_EQ(early->putref_Rs(rows), S_OK);
        EXPECT_EQ(early->ReadData(&done), S_OK);
        EXPECT_EQ(early->GetFormattedLine(line.Receive()), S_OK);
        return line.Text();
    }
};

/// Hears how far a source is read.
class Listener final : public com::DispatchObject<IDispatch> {
public:
    explicit Listener(std::string& heard) : heard_(heard) {}

private:
    HRESULT STDMETHODCALLTYPE Hear(std::int32_t percent) {
        heard_ += std::to_string(percent) + " ";
        return S_OK;
    }
    std::span<const com::Member> Members() const noexcept override {
        static constexpr std::array kMembers = {
            com::Method<&Listener::Hear>("ReadingFile", kReadingFileId, VT_EMPTY, {{"Value", VT_I4}})};
        return kMembers;
    }
    void* Find(const IID& iid) noexcept override {
        return com::Same(iid, k__ASLImportPatientId) ? static_cast<IDispatch*>(this) : DispatchObject::Find(iid);
    }

    std::string& heard_;
};

class WholeRunsTest : public ::testing::Test {
protected:
    std::vector<Job> Jobs() const {
        const std::string sources = places.data + "\\Sorgenti\\";
        const auto steps = [&](const std::string& text, const std::string& path = {}) {
            return std::vector{"txtPath=" + (path.empty() ? places.out : path)} + WordsOf(text);
        };
        const auto choosing = [](const std::string& list) { return std::vector{"cboASL=" + list}; };
        return {
            {12, "ASLExport", &kASLExportClass,
             steps("cboBranca=1 cboMese=3 numAnno=2011 chkIncludiPrecedenti=1 cmdConferma!")},
            {12, "ASLExport", &kASLExportClass, steps("cboBranca=2 cboMese=3 numAnno=2011 answer:yes cmdConferma!")},
            {12, "ASLExport", &kASLExportClass,
             steps("optTipoExport=1 cboBranca=1 cboTrimestre=#0 numAnnoTrimestre=2011 cmdConferma!")},
            prescriptions,
            {12, "ExportProgetti", &kExportProgettiClass,
             steps("cboStatoProgetto=#1 cboDaTrimestre=#0 cboATrimestre=#0 numAnno=2011 cmdConferma!")},
            {16, "ASLExport", &kASLExportClass,
             steps("cboBranca=1 cboMese=3 numAnno=2011 chkVisualizza=1 cmdConferma!")},
            {16, "ASLExport", &kASLExportClass, steps("cboBranca=2 cboMese=3 numAnno=2011 answer:yes cmdConferma!")},
            {12, "ASLImportPatient", &kASLImportPatientClass,
             choosing("Elenco assistiti") +
                 steps("cmdElabora! cboFiltro=#1 lblSelezionati? cmdConferma!", sources + "assistiti.txt")},
            {12, "ASLImportPatient", &kASLImportPatientClass,
             choosing("Catania") +
                 steps("cmdElabora! cboFiltro=#2 lblConteggio? in:frmRevoca chkRevocato=1 dtDataRevoca=31/03/2011 "
                       "cboTipoRevocaPaziente=#1 cmdConferma! end: grdList2!1 cmdConferma!",
                       sources + "catania.txt")},
            {12, "ASLImportPatient", &kASLImportPatientClass,
             WordsOf("cboImportazione=#1 cboASL=#0") +
                 steps("cmdElabora! cmdSelezionaTutti! cmdConferma!", sources + "esenti.txt")},
        };
    }
    /// Every job in its order, on databases as they were made.
    template <typename Player>
    Outcome After(Player play) const {
        places.Renew();
        Outcome outcome;
        for (const Job& job : Jobs()) {
            std::string& events = outcome[std::to_string(outcome.size()) + " " + job.component];
            for (const std::string& event : play(job)) events += event + "\n";
        }
        for (const std::string& folder : {places.work, places.out}) {
            for (const auto& [name, bytes] : FilesIn(folder)) outcome[folder + "\\" + name] = bytes;
        }
        for (const int clinic : {12, 16}) {
            const data::ConnectionPtr connection = places.Connect(clinic);
            for (const char* table : {"Parcella", "Paziente", "EsenzionePerPaziente", "Residenza", "BloccoRecord"}) {
                outcome[std::to_string(clinic) + " " + table] =
                    data::testing::RowText(*connection, std::string("SELECT * FROM ") + table);
            }
        }
        return outcome;
    }
    /// By way of the host's data objects.
    template <typename Client>
    Outcome Played() const {
        return After([this](const Job& job) {
            const Host host(places, job.clinic, job.steps);
            Client::Show(host.Create(*job.classId), host.Connection());
            return host.Events();
        });
    }
    static void ExpectSame(const Outcome& outcome, const Outcome& expected) {
        for (const auto& [what, content] : expected) {
            const auto found = outcome.find(what);
            EXPECT_TRUE(found != outcome.end() && found->second == content) << what;
        }
        EXPECT_EQ(outcome.size(), expected.size());
    }

    const Places places;
    const dataobjects::RecordsetClass recordsets;
    const Job prescriptions{12, "ASLPanoramico", &kASLPanoramicoClass,
                            WordsOf("cboBranca=3 dtFromDate=01/03/2011 dtToDate=31/03/2011 txtPath=" + places.out +
                                    "\\ricette.txt cmdConferma!")};
};

TEST_F(WholeRunsTest, AreTheSameOnAHostsDataObjects) {
    const Outcome expected = After([this](const Job& job) { return places.PlayDirectly(job); });
    EXPECT_EQ(NamesIn(PathOf(places.out)), WordsOf("2010111S.txt 2010311M.txt C160201.txt C160203.txt "
                                                   "S20110120110100.txt ricette.txt"));
    EXPECT_NE(expected.at("7 ASLImportPatient").find("Pazienti scritti: 13"), std::string::npos);
    ExpectSame(Played<Late>(), expected);
    const dataobjects::WithoutBlocks rowByRow;
    ExpectSame(Played<Early>(), expected);
}

/// The prescriptions by hand: each entry's keys once what those before brought about is over.
TEST_F(WholeRunsTest, AUserReachesTheSameFileByTheKeyboard) {
    places.Renew();
    places.PlayDirectly(prescriptions);
    const std::string path = places.out + "\\ricette.txt";
    const std::string expected = ReadBytes(path);
    places.Renew();
    for (const char* toolkit : {"win32", static_cast<const char*>(nullptr)}) {
        std::filesystem::remove(PathOf(path));
        const Host host(places, 12, {}, toolkit);
        std::vector<std::string> titles;
        const std::vector<std::string> keys{"F4",  "Home",     "Down",        "Down",   "Return",
                                            "Tab", "Tab",      "'01/03/2011", "Tab",    "'31/03/2011",
                                            "Tab", "'" + path, "Alt+A",       "Return", "Escape"};
        std::size_t next = 0;
        const ui::test::Ticks user([&] {
            const HWND top = ui::test::TopWindow();
            if (top == nullptr || next == keys.size()) return next == keys.size();
            const std::string title = text::FromUtf16(std::wstring_view(ui::test::TextOf(top)));
            if (titles.empty() || titles.back() != title) titles.push_back(title);
            ui::test::Keys(keys[next++]);
            return false;
        });
        Late::Show(host.Create(kASLPanoramicoClass), host.Connection());
        EXPECT_EQ(titles,
                  (std::vector<std::string>{"Esportazione ricette farmaci", "Aldra", "Esportazione ricette farmaci"}));
        EXPECT_EQ(ReadBytes(path), expected);
    }
}

TEST_F(WholeRunsTest, ARecordReadsTheHostsRows) {
    places.Renew();
    places.PlayDirectly(prescriptions);
    const Host host(places, 12, {});
    const auto open = [&](const std::string& sql) {
        com::Ref<_Recordset> rows;
        EXPECT_EQ(host.Connection()->Execute(com::Bstr(sql).Get(), nullptr, -1, rows.Receive()), S_OK);
        return rows;
    };
    std::string lines;
    const data::RecordsetPtr found = places.Connect(12)->Open(
        "SELECT IDRicettaFarmaci FROM RicettaFarmaci WHERE IDBrancaPerStudio = 3 AND DataRicetta >= '2011-03-01' AND"
        " DataRicetta < '2011-04-01' ORDER BY DataRicetta");
    for (; !found->AtEnd(); found->MoveNext()) {
        const com::Ref<_Recordset> rows = open("SP_RicettaFarmaci2005 " + std::string(found->TextOf(0)));
        const com::Ref<IDispatch> record = host.Create(kASLPanoramicoLineClass);
        const std::string line = Late::LineOf(record, host.Connection(), rows.Get());
        EXPECT_EQ(Early::LineOf(record, host.Connection(), rows.Get()), line);
        lines += line + (line.empty() ? "" : "\r\n");  // one is not for the authority
    }
    EXPECT_EQ(lines, ReadBytes(places.out + "\\ricette.txt"));
}

TEST_F(WholeRunsTest, AListIsHeardAsItIsReadAndItsPatientsAreCreated) {
    places.Renew();
    std::string source = "N;Tessera;CF\n", heard;
    for (int i = 1; i <= 11; ++i) {
        const std::string number = std::to_string(i);
        source += number + ";NUOVA" + number + ";;D'Al\xF2" + number + ";Lia;03/02/1961;;;04/03/2001;;;;VIA ROMA\n";
    }
    WriteBytes(places.work + "\\elenco.txt", source);
    {
        const Host host(places, 12, {});
        const com::LateBound import(host.Create(kASLImportPatientClass));
        import.PutRef("Connection", host.Connection());
        com::Ref<IConnectionPoint> point;
        DWORD cookie = 0;
        ASSERT_EQ(com::Query<IConnectionPointContainer>(import.Object().Get())
                      ->FindConnectionPoint(k__ASLImportPatientId, point.Receive()),
                  S_OK);
        EXPECT_EQ(point->Advise(com::Make<Listener>(heard).Get(), &cookie), S_OK);
        const com::LateBound elements = import.ObjectOf("GetElementList", {com::Variant(places.work + "\\elenco.txt")});
        for (; elements.Get("EOF").Text() != "True"; elements.Call("MoveNext")) {
            EXPECT_NE(import.Call("CreatePatient", {com::Variant(elements.Object().Get())}).Text(), "0");
        }
        EXPECT_EQ(point->Unadvise(cookie), S_OK);
    }
    EXPECT_EQ(heard, "83 ");  // the tenth of twelve lines
    EXPECT_EQ(data::testing::RowText(*places.Connect(12),
                                     "SELECT Cognome, DataNascita, NumTesseraSanitaria FROM Paziente WHERE"
                                     " NumTesseraSanitaria LIKE 'NUOVA1%' ORDER BY IDPaziente"),
              "D'Alò1|03/02/1961|NUOVA1;D'Alò10|03/02/1961|NUOVA10;D'Alò11|03/02/1961|NUOVA11");
}

}  // namespace
}  // namespace vlm::test
