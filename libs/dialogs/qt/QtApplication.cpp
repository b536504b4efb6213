#include "qt/QtApplication.h"

#include <QLocale>
#include <QTranslator>
#include <array>
#include <clocale>
#include <cstring>

namespace vlm::ui {

namespace {

struct Entry {
    const char* source;
    const char* italian;
};

// One meaning for each text, wherever the toolkit uses it.
constexpr std::array kTexts = {
    Entry{"OK", "OK"},
    Entry{"&OK", "OK"},
    Entry{"Cancel", "Annulla"},
    Entry{"&Cancel", "Annulla"},
    Entry{"&Yes", "&Sì"},
    Entry{"&No", "&No"},
    Entry{"Close", "Chiudi"},
    Entry{"Open", "Apri"},
    Entry{"&Open", "&Apri"},
    Entry{"Save", "Salva"},
    Entry{"&Save", "&Salva"},
    Entry{"&Choose", "&Scegli"},
    Entry{"Save As", "Salva con nome"},
    Entry{"Look in:", "Cerca in:"},
    Entry{"File &name:", "&Nome del file:"},
    Entry{"Files of type:", "Tipo di file:"},
    Entry{"Directory:", "Cartella:"},
    Entry{"Directories", "Cartelle"},
    Entry{"All Files (*)", "Tutti i file (*)"},
    Entry{"All files (*)", "Tutti i file (*)"},
    Entry{"Find Directory", "Trova la cartella"},
    Entry{"Back", "Indietro"},
    Entry{"Forward", "Avanti"},
    Entry{"Go back", "Torna indietro"},
    Entry{"Go forward", "Vai avanti"},
    Entry{"Parent Directory", "Cartella superiore"},
    Entry{"Go to the parent directory", "Vai alla cartella superiore"},
    Entry{"Create New Folder", "Nuova cartella"},
    Entry{"Create a New Folder", "Crea una nuova cartella"},
    Entry{"New Folder", "Nuova cartella"},
    Entry{"&New Folder", "&Nuova cartella"},
    Entry{"List View", "Elenco"},
    Entry{"Change to list view mode", "Mostra l'elenco"},
    Entry{"Detail View", "Dettagli"},
    Entry{"Change to detail view mode", "Mostra i dettagli"},
    Entry{"Sidebar", "Luoghi"},
    Entry{"List of places and bookmarks", "Luoghi e segnalibri"},
    Entry{"Files", "File"},
    Entry{"Name", "Nome"},
    Entry{"Size", "Dimensione"},
    Entry{"Type", "Tipo"},
    Entry{"Kind", "Tipo"},
    Entry{"Date Modified", "Ultima modifica"},
    Entry{"Computer", "Computer"},
    Entry{"My Computer", "Computer"},
    Entry{"Folder", "Cartella"},
    Entry{"File Folder", "Cartella"},
    Entry{"File", "File"},
    Entry{"%1 File", "File %1"},
    Entry{"Drive", "Unità"},
    Entry{"Alias", "Collegamento"},
    Entry{"Shortcut", "Collegamento"},
    Entry{"Recent Places", "Luoghi recenti"},
    Entry{"&Rename", "&Rinomina"},
    Entry{"&Delete", "&Elimina"},
    Entry{"Show &hidden files", "Mostra i file &nascosti"},
    Entry{"Remove", "Togli"},
    Entry{"Delete", "Elimina"},
    Entry{"Are you sure you want to delete '%1'?", "Eliminare davvero \"%1\"?"},
    Entry{"'%1' is write protected.\nDo you want to delete it anyway?",
          "\"%1\" è protetto da scrittura.\nEliminarlo comunque?"},
    Entry{"Could not delete directory.", "Impossibile eliminare la cartella."},
    Entry{"%1\nDirectory not found.\nPlease verify the correct directory name was given.",
          "%1\nLa cartella non esiste.\nControllarne il nome."},
    Entry{"%1\nFile not found.\nPlease verify the correct file name was given.",
          "%1\nIl file non esiste.\nControllarne il nome."},
    Entry{"%1 already exists.\nDo you want to replace it?", "%1 esiste già.\nSostituirlo?"},
    Entry{"%1 bytes", "%1 byte"},
    Entry{"%1 byte(s)", "%1 byte"},
    Entry{"%1 KB", "%1 KB"},
    Entry{"%1 KiB", "%1 KB"},
    Entry{"%1 MB", "%1 MB"},
    Entry{"%1 MiB", "%1 MB"},
    Entry{"%1 GB", "%1 GB"},
    Entry{"%1 GiB", "%1 GB"},
    Entry{"Invalid filename", "Nome non valido"},
    Entry{"<b>The name \"%1\" cannot be used.</b><p>Try using another name, with fewer characters or no punctuation "
          "marks.",
          "<b>Il nome \"%1\" non può essere usato.</b><p>Provare con un altro, più corto o senza segni particolari."},
    Entry{"&Undo", "&Annulla"},
    Entry{"&Redo", "&Ripeti"},
    Entry{"Cu&t", "&Taglia"},
    Entry{"&Copy", "&Copia"},
    Entry{"&Paste", "&Incolla"},
    Entry{"Select All", "Seleziona tutto"},
    Entry{"Clear", "Cancella"},
    Entry{"Insert Unicode control character", "Inserisci un carattere di controllo"},
    Entry{"&Step up", "&Aumenta"},
    Entry{"Step &down", "&Diminuisci"},
    Entry{"&Select All", "&Seleziona tutto"},
    Entry{"Previous Month", "Mese precedente"},
    Entry{"Next Month", "Mese successivo"},
};

/// The toolkit's own texts (buttons, choosers, menus of a text field) in Italian, without a translation file that a
/// machine may lack.
class ItalianTexts : public QTranslator {
public:
    QString translate(const char* /*context*/, const char* source, const char* /*disambiguation*/,
                      int /*count*/) const override {
        for (const Entry& entry : kTexts) {
            if (std::strcmp(entry.source, source) == 0) return QString::fromUtf8(entry.italian);
        }
        return {};  // the toolkit falls back on its own text
    }
    bool isEmpty() const override { return false; }
};

}  // namespace

QtApplication::QtApplication(int& argc, char** argv)
    : texts_(std::make_unique<ItalianTexts>()), application_(argc, argv) {
    std::setlocale(LC_NUMERIC, "C");  // the application takes over the machine's, decimal comma and all
    std::setlocale(LC_TIME, "C");
    QLocale::setDefault(QLocale(QLocale::Italian, QLocale::Italy));
    QApplication::setApplicationDisplayName("Aldra");
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::installTranslator(texts_.get());
}

QtApplication::~QtApplication() { QApplication::removeTranslator(texts_.get()); }

std::string QtApplication::Hindrance() {
    const QByteArray platform = qgetenv("QT_QPA_PLATFORM");
    const bool needsDisplay = platform.isEmpty() || platform.startsWith("xcb") || platform.startsWith("wayland");
    if (!needsDisplay || !qgetenv("DISPLAY").isEmpty() || !qgetenv("WAYLAND_DISPLAY").isEmpty()) return {};
    return "Nessuno schermo su cui aprire finestre: usare --ui console.";
}

}  // namespace vlm::ui
