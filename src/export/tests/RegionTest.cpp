#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <map>

#include "console/ConsoleToolkit.h"
#include "console/JsonEventLog.h"
#include "export/RegionRun.h"
#include "support/Events.h"
#include "support/FakeConnection.h"
#include "support/FakeServices.h"
#include "support/Words.h"
#include "values/Error.h"

namespace vlm::test {
namespace {

/// What goes wrong in the made-up region while documents are marked.
std::function<void()> whileMarking;

/// A line for each service of a quarter; a cancelled one is an anomaly, and goes out all the same.
class MadeUpRun : public RegionRun {
public:
    MadeUpRun(ASLExport& component, const std::string& folder, bool simulation)
        : RegionRun(component, {true, true, true, "Fatto"}, folder, simulation) {}

protected:
    std::string FileName(bool anomalies) const override {
        return Component().CodiceRegionale + (anomalies ? "Err.txt" : ".txt");
    }
    void WriteRecords(data::Recordset& rows) override {
        for (; !rows.AtEnd(); rows.MoveNext()) {
            WriteLine(rows.TextOf(rows.Ordinal("NumeroDocumento")));
            if (rows.NumberOf(rows.Ordinal("IDTipoOperazione")) == 3) WriteAnomalies("cancellata");
        }
    }
    std::optional<std::int64_t> MarkDocuments(data::Connection& connection) override {
        connection.Execute("UPDATE Parcella SET ProgressivoRicetta = 1");
        if (whileMarking) whileMarking();
        return std::nullopt;
    }
    void ShowDecoded(const std::string&) override {}
};

class MadeUpRegion : public IRegionASLExport {
public:
    explicit MadeUpRegion(const Library&) {}
    bool ViewAsDecoded(const std::string&, std::int32_t) override { return false; }
    std::int32_t Export(ASLExport& component, const std::string& folder, std::int32_t, bool simulation) override {
        return static_cast<std::int32_t>(MadeUpRun(component, folder, simulation).Execute());
    }
    std::string GetFileName(std::int32_t, const std::string&, std::int32_t, std::int16_t, const std::string& code,
                            bool) override {
        return code + ".txt";
    }
    void InitGrid(ViewGrid&, std::int32_t) override {}
    void FillLine(files::LineReader&, ViewGrid&, std::int32_t) override {}
};

constexpr RegionDescription kRegions[] = {{.title = "every other"},
                                          {.idRegioneTariffario = 77,
                                           .title = "made up",
                                           .make = MakeRegion<MadeUpRegion>,
                                           .monthly = false,
                                           .operationTypes = false,
                                           .needsBranch = false}};

class RegionTest : public ::testing::Test {
protected:
    struct Watching : FakeServices::Silent {
        explicit Watching(const RegionTest& region) : test(region) {}
        ui::Answer Show(const ui::Message& message) override {
            seen += test.Files();
            return Silent::Show(message);
        }
        const RegionTest& test;
        std::string seen;
    };

    void SetUp() override {
        clinic.idRegioneTariffario = 77;
        clinic.Create({Service("ElaborataASL=1"), Service("ElaborataASL=1; IDParcella=2; NumeroDocumento=9")});
        services.utility = PlainHostUtility(clinic.work);
        for (const std::string& folder : {clinic.out, clinic.work}) WriteBytes(folder + "/700007.txt", "earlier");
        WriteBytes(clinic.work + "/700007Err.txt", "earlier too");
    }
    void TearDown() override { whileMarking = nullptr; }
    /// The component without a dialog, with what the dialog would hand over for the first quarter of 2011.
    std::int32_t Export(ui::Toolkit& toolkit) {
        Library library(services.With(toolkit));
        library.SetConnection(clinic.Connect());
        ASLExport component(library, kRegions);
        component.Filter.periodo = 1;
        component.Filter.anno = 2011;
        component.CodiceRegionale = "700007";
        return component.Export(clinic.out, ttS, false);
    }
    HostRun Show(const Lines& steps) {
        std::ostringstream log;
        ui::JsonEventLog events(log);
        ui::ConsoleToolkit toolkit(ui::ConsoleScript(steps), events);
        Library library(services.With(toolkit));
        library.SetConnection(clinic.Connect());
        ASLExport(library, kRegions).ShowDialog();
        return {0, LinesOf(log.str()), ""};
    }
    std::string Files() const {
        return ReadBytes(clinic.out + "/700007.txt") + "|" + ReadBytes(clinic.work + "/700007.txt") + "|" +
               ReadBytes(clinic.work + "/700007Err.txt");
    }
    Lines Marked() const {
        return clinic.Query("SELECT IDParcella FROM Parcella WHERE ProgressivoRicetta = 1 ORDER BY IDParcella");
    }

    const std::string kEarlier = "earlier|earlier|earlier too";
    const std::string kWritten = "125\r\n9\r\n";
    ServiceClinic clinic;
    FakeServices services;
};

TEST_F(RegionTest, TheDialogOffersWhatTheRegionSaysAndRunsIt) {
    const HostRun run =
        Show(WordsOf("optTipoExport? fraTipoExport? cboMese? cboTrimestre? numAnno? numAnnoTrimestre? cboBranca? "
                     "cboSpecialista? lstTipoOperazione? chkIncludiPrecedenti? cboTrimestre=#0 numAnnoTrimestre=2011") +
             std::vector{"txtPath=" + clinic.out, std::string("cmdConferma!")});
    EXPECT_EQ(FlagsOf(run, "enabled"), "---+-+++-+");
    EXPECT_EQ(FlagsOf(run, "visible"), "++-+-++++-");
    EXPECT_EQ(StateOf(run, "optTipoExport", "value") + StateOf(run, "cboBranca", "value"), "10");
    EXPECT_EQ(run.Of("message"), std::vector{DoneEvent("Fatto", 2)});
    EXPECT_EQ(Files(), kWritten + "|" + kWritten + "|");
}

TEST_F(RegionTest, TheCodeIsTheChosenSpecialistsOrElseTheBranchs) {
    for (const auto& [steps, code] : std::vector<std::pair<std::string, std::string>>{
             {"", "700007"},
             {"cboBranca=1", "700007"},
             {"cboBranca=1 cboSpecialista=8", "800008"},
             {"cboBranca=2", "900009"},
             {"cboBranca=1 cboSpecialista=8 cmdConferma! cboSpecialista=7", "700007"}}) {
        const HostRun run = Show(std::vector{"txtPath=" + clinic.out} + WordsOf(steps) +
                                 WordsOf("in:frmSelectFile txtPath? end: cmdVisualizza!"));
        EXPECT_EQ(StateOf(run, "txtPath", "value"), "\"" + InJson(clinic.out + "\\") + code + ".txt\"") << steps;
    }
    Show({"txtPath=" + clinic.out, "cboBranca=1", "cboSpecialista=7", "cmdConferma!"});
    EXPECT_EQ(Files(), kWritten + "|" + kWritten + "|");
}

TEST_F(RegionTest, OtherNumbersGoToTheRegionOfEveryOther) {
    for (const auto& [number, title] :
         std::map<double, std::string>{{0, "every other"}, {13, "every other"}, {77, "made up"}}) {
        const auto connection = std::make_shared<FakeConnection>();
        connection->tables["SELECT IDRegioneTariffario FROM Aldra..Studi WHERE IDStudio = 12"] = {
            {"IDRegioneTariffario"}, {{number}}};
        services.library.SetConnection(connection);
        EXPECT_EQ(ASLExport(services.library, kRegions).Region().title, title);
    }
    ASLExport none(services.library, {});
    EXPECT_EQ(none.Export(clinic.out, ttM, false), 0);
    EXPECT_EQ(none.GetFileName(ttM, "201", 3, 2011, false), "");
    EXPECT_FALSE(none.ViewAsDecoded(clinic.out + "/700007.txt"));
    EXPECT_TRUE(services.toolkit.messages.empty());
}

TEST_F(RegionTest, ARunTellsWhatItCameTo) {
    EXPECT_EQ(Export(services.toolkit), 2);
    EXPECT_EQ(Marked(), (Lines{"1", "2"}));
    const auto connection = clinic.Connect();
    connection->Execute("UPDATE VwPrestazionePerASL SET IDTipoOperazione = 3 WHERE IDParcella = 2");
    EXPECT_EQ(Export(services.toolkit), 3);
    EXPECT_EQ(Files(), kWritten + "|" + kWritten + "|cancellata\r\n");
    connection->Execute("UPDATE VwPrestazionePerASL SET ElaborataASL = 0");
    EXPECT_EQ(Export(services.toolkit), 1);
}

/// Whatever it had come to before: everything stands as it stood before anything is said.
TEST_F(RegionTest, ARunThatFailsHasFailedAndTakesEverythingBackFirst) {
    const std::pair<std::function<void()>, std::string> failures[] = {
        {[] { throw Error("vietato"); }, kEarlier},
        // The destination goes away; Windows, which keeps a folder with an open file, fails to take it away.
        {[this] { std::filesystem::remove_all(clinic.out); },
         std::filesystem::path::preferred_separator == '/' ? "<missing>|earlier|earlier too" : kEarlier}};
    for (const auto& [failure, files] : failures) {
        for (const char* type : {"1", "3"}) {
            clinic.Connect()->Execute(std::string("UPDATE VwPrestazionePerASL SET IDTipoOperazione = ") + type);
            whileMarking = failure;
            Watching toolkit(*this);
            EXPECT_EQ(Export(toolkit), 0);
            EXPECT_EQ(toolkit.seen + "; " + Files(), files + "; " + files);
            EXPECT_TRUE(Marked().empty());
            std::filesystem::create_directory(clinic.out);
        }
    }
}

}  // namespace
}  // namespace vlm::test
