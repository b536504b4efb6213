#include <QFont>
#include <QImage>
#include <QPainter>
#include <algorithm>
#include <chrono>
#include <filesystem>
#include <iostream>
#include <map>
#include <sstream>

#include "console/JsonEventLog.h"
#include "demo/DemoClinic.h"
#include "desktop/WindowedProgramStarter.h"
#include "host/AslHost.h"
#include "qt/QtApplication.h"
#include "support/GivenToolkit.h"
#include "support/QtUser.h"
#include "support/TempFolder.h"

/// Pictures of every dialog at work on the demo clinic, for the documentation: vlm_screenshots FOLDER
namespace {

namespace fs = std::filesystem;
using namespace vlm;
using Words = std::vector<std::string>;

/// A user who takes a picture whenever a state is asked for ("cmdFoto?" in spirit: any control does) and of every
/// message, under the names in their order; "" takes none.
class Photographer : public ui::test::QtUser {
public:
    Photographer(ui::QtToolkit& toolkit, const Words& steps, ui::EventLog& log, fs::path folder, Words names)
        : QtUser(toolkit, steps, log), folder_(std::move(folder)), names_(std::move(names)) {}

    std::size_t Missing() const { return names_.size() - next_; }

protected:
    void Look(QWidget& window) override {
        if (next_ == names_.size()) throw std::runtime_error("a picture without a name");
        const std::string name = names_[next_++];
        if (name.empty()) return;
        QCoreApplication::processEvents();
        const QImage picture = InFewColours(WithTitleBar(window.grab(), window.windowTitle()));
        if (!picture.save(QString::fromStdString((folder_ / (name + ".png")).string()), "PNG", 0)) {
            throw std::runtime_error("cannot write " + name);
        }
    }

private:
    /// Without a desktop nobody draws one.
    static QImage WithTitleBar(const QPixmap& inside, const QString& title) {
        constexpr int kHeight = 26;
        QImage picture(inside.width() + 2, inside.height() + kHeight + 1, QImage::Format_RGB32);
        picture.fill(QColor(70, 82, 96));
        QPainter painter(&picture);
        painter.drawPixmap(1, kHeight, inside);
        painter.setPen(Qt::white);
        painter.drawText(QRect(10, 0, picture.width() - 20, kHeight), Qt::AlignVCenter, title);
        return picture;
    }

    /// The colours met most often make a small picture that looks the same.
    static QImage InFewColours(const QImage& picture) {
        std::map<QRgb, int> counts;
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x) ++counts[picture.pixel(x, y)];
        }
        std::vector<std::pair<int, QRgb>> colours;
        for (const auto& [colour, count] : counts) colours.emplace_back(count, colour);
        std::sort(colours.rbegin(), colours.rend());
        QList<QRgb> table;
        for (const auto& [count, colour] : colours) {
            if (table.size() < 64) table << colour;
        }
        return picture.convertToFormat(QImage::Format_Indexed8, table, Qt::ThresholdDither);
    }

    fs::path folder_;
    Words names_;
    std::size_t next_ = 0;
};

class PhotoDesktop : public host::Desktop {
public:
    PhotoDesktop(fs::path folder, Words steps, Words names)
        : folder_(std::move(folder)), steps_(std::move(steps)), names_(std::move(names)) {}

    std::string Hindrance() const override { return {}; }
    std::string ToolkitName() const override { return test::kGivenToolkit; }
    void Open(sys::SettingsStore& settings) override {
        toolkit_ = std::make_unique<ui::QtToolkit>(settings);
        user_ = std::make_unique<Photographer>(*toolkit_, steps_, log_, folder_, names_);
        VlmGiveToolkit(user_.get());
        programs_ = std::make_unique<host::WindowedProgramStarter>(*user_, machine_);
    }
    ui::Toolkit& Toolkit() override { return *user_; }
    sys::ProgramStarter& Programs() override { return *programs_; }
    std::size_t Missing() const { return user_->Missing(); }
    std::string Events() const { return out_.str(); }

private:
    struct Nothing : sys::ProgramStarter {
        void Start(const std::string&) override {}
    };

    fs::path folder_;
    Words steps_, names_;
    std::ostringstream out_;
    ui::JsonEventLog log_{out_};
    Nothing machine_;
    std::unique_ptr<ui::QtToolkit> toolkit_;
    std::unique_ptr<Photographer> user_;
    std::unique_ptr<host::WindowedProgramStarter> programs_;
};

struct Scene {
    const char* component;
    const char* clinic;
    Words steps;
    Words pictures;
};

const Scene kScenes[] = {
    {"", "12", {"txtDati?"}, {"inizio"}},
    {"ASLExport",
     "12",
     {"cboBranca=1", "cboMese=3", "numAnno=2011", "chkIncludiPrecedenti=1", "txtPath=invio", "cboBranca?",
      "cmdConferma!"},
     {"prestazioni-mensile", "messaggio"}},
    {"ASLExport",
     "12",
     {"optTipoExport=1", "cboTrimestre=#0", "cboBranca=2", "lstTipoOperazione=0,1", "cboBranca?", "in:frmSelectFile",
      "txtPath=invio/2010311M.txt", "txtPath?", "cmdConferma!", "end:", "in:frmTesto", "grdTesto!9", "grdTesto?",
      "end:", "optTipoExport=0", "cmdVisualizza!"},
     {"prestazioni-trimestrale", "selezione-file", "file-leggibile"}},
    {"ASLExport",
     "12",
     {"cboBranca=2", "cboMese=3", "numAnno=2011", "answer:yes", "in:frmAnomalie", "grdAnomalie!2", "grdAnomalie?",
      "end:", "cmdConferma!"},
     {"domanda", "anomalie"}},
    {"ASLExport",
     "16",
     {"cboBranca=1", "cboMese=3", "numAnno=2011", "in:frmViewData", "grdList!3", "grdList?", "end:", "chkVisualizza=1",
      "cmdConferma!"},
     {"visualizzatore-puglia"}},
    {"ASLPanoramico",
     "12",
     {"cboBranca=3", "dtFromDate=01/03/2011", "dtToDate=31/03/2011", "txtPath=invio/ricette.txt", "cboBranca?"},
     {"ricette"}},
    {"ExportProgetti",
     "12",
     {"cboStatoProgetto=#1", "numAnno=2011", "cboDaTrimestre=#0", "cboATrimestre=#0", "txtPath=invio", "numAnno?"},
     {"progetti"}},
    {"ASLImportPatient",
     "12",
     {"cboASL=Elenco assistiti", "txtPath=dati/Sorgenti/assistiti.txt", "cmdElabora!", "grdList!3", "grdList?",
      "cboFiltro=#2", "grdList2!2", "in:frmRevoca", "chkRevocato=1", "dtDataRevoca=10/04/2011",
      "cboTipoRevocaPaziente=#0", "txtNoteRevoca=Ha scelto un altro medico.", "txtNoteRevoca?", "cmdAnnulla!",
      "end:", "cmdConferma!"},
     {"importazione", "revoca"}},
    {"ASLImportPatient",
     "12",
     {"cboImportazione=#1", "cboASL=Esenti per reddito", "txtPath=dati/Sorgenti/esenti.txt", "cmdElabora!",
      "grdList1!1", "grdList1?"},
     {"importazione-esenti"}},
    {"ASLImportPatient",
     "12",
     {"cboTipoImportazione=#1", "cboSpecialista=#0", "in:frmInpsPIN", "txtConferma=1234567890", "txtConferma?",
      "cmdAnnulla!", "end:", "cmdElabora!"},
     {"pin"}},
};

int Play(const Scene& scene, const fs::path& pictures) {
    PhotoDesktop desktop(pictures, scene.steps, scene.pictures);
    Words arguments{"--ui",   "qt",     "--data",  "dati",       "--clinic",   scene.clinic,
                    "--work", "lavoro", "--today", "2011-04-10", "--settings", "impostazioni.ini"};
    if (*scene.component != '\0') arguments.emplace_back(scene.component);
    std::ostringstream out;
    const int status = host::RunHost(arguments, out, std::cerr, true, &desktop);
    if (status == 0 && desktop.Missing() == 0) return 0;
    std::cerr << scene.component << ": " << desktop.Missing() << " pictures missing\n" << desktop.Events();
    return 1;
}

/// The pictures of another day are the same.
void GiveFilesADay() {
    const auto day = std::chrono::sys_days(std::chrono::year(2011) / 4 / 10) + std::chrono::seconds(12 * 3600);
    for (const fs::directory_entry& file : fs::directory_iterator("invio")) {
        fs::last_write_time(file, std::chrono::file_clock::from_sys(day));
    }
}

/// A screen as large as a desk's.
std::string ScreenFile() {
    test::WriteBytes("schermo.json",
                     R"({"screens":[{"name":"Schermo","x":0,"y":0,"width":1280,"height":1024,"dpi":96}]})");
    return "offscreen:configfile=" + fs::absolute("schermo.json").string();
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "vlm_screenshots FOLDER\n";
        return 2;
    }
    const fs::path pictures = fs::absolute(argv[1]);
    const test::TempFolder desk;  // relative paths in the pictures
    fs::current_path(desk.Path());
    qputenv("QT_QPA_PLATFORM", QByteArray::fromStdString(ScreenFile()));
    ui::QtApplication application(argc, argv);
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    QApplication::setDoubleClickInterval(0);
    QApplication::setFont(QFont("DejaVu Sans", 9));
    for (const char* folder : {"lavoro", "invio"}) fs::create_directories(folder);
    fs::create_directories(pictures);
    host::CreateDemo("dati", *Date::FromYmd(2011, 4, 10));
    int failed = 0;
    for (const Scene& scene : kScenes) {
        failed += Play(scene, pictures);
        GiveFilesADay();
    }
    return failed == 0 ? 0 : 1;
}
