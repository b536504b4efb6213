#include "ImportSources.h"

#include <cstdio>
#include <fstream>

#include "databases/DatabaseSchema.h"
#include "databases/SqliteWriter.h"

namespace vlm::bench {

namespace {

constexpr long kPatients = 1000000;

std::string Numbered(const char* pattern, long number) {
    char text[40];
    std::snprintf(text, sizeof text, pattern, number);
    return text;
}

/// Neighbours are far apart in the archive, as they are in a real list.
long PatientOfLine(long line) { return line * 7919 % (kPatients * 3 / 2) + 1; }

void WriteList(const std::string& path, long lines) {
    static constexpr const char* kComuni[] = {"PALERMO", "CATANIA", "ROMA", "CANTU", "MILANO", "NAPOLI", "BARI"};
    std::ofstream file(path, std::ios::binary);
    for (long line = 0; line < lines; ++line) {
        const long patient = PatientOfLine(line);
        file << Numbered("T%08ld", patient) << ";ROSSI" << patient % 5000 << ";MARIO;M;0102" << 1930 + patient % 80
             << ';' << Numbered("RSSMRA70A%07ld", patient) << ";01012010;" << kComuni[patient % 7] << ";VIA ROMA "
             << patient % 300 << ";091" << 600000 + patient % 300000 << "\r\n";
    }
}

void WriteMaster(const std::filesystem::path& folder) {
    host::SqliteWriter master(folder / "Aldra.sqlite");
    master.CreateTables(host::MasterSchema());
    host::DatabaseWriter::Rows rows(master, "Comune", "IDComune,Comune,CodiceISTAT,Cap");
    long id = 0;
    for (const char* name : {"PALERMO", "CATANIA", "ROMA", "CANTU", "MILANO", "NAPOLI", "BARI"}) {
        rows.Add({++id, name, Numbered("%06ld", id), "90100"});
    }
    for (; id < 7900;) rows.Add({++id, Numbered("COMUNE %ld", id), Numbered("%06ld", id), "00100"});
    master.CreateIndices(host::MasterSchema());
    master.Commit();
}

void WriteClinic(const std::filesystem::path& folder) {
    host::SqliteWriter clinic(folder / "Studio0012.sqlite");
    clinic.CreateTables(host::ClinicSchema());
    host::DatabaseWriter::Rows rows(clinic, "Paziente",
                                    "IDPaziente,Cognome,Nome,NumTesseraSanitaria,NumAssistito,CodiceFiscale");
    for (long id = 1; id <= kPatients; ++id) {
        // One of ten has no card and is found by fiscal code.
        const std::string card = id % 10 == 0 ? std::string() : Numbered("T%08ld", id);
        rows.Add({id, "ROSSI", "MARIO", host::OrNull(card), host::OrNull(card), Numbered("RSSMRA70A%07ld", id)});
    }
    clinic.CreateIndices(host::ClinicSchema());
    clinic.Commit();
}

}  // namespace

void WriteImportSources(const std::filesystem::path& folder) {
    if (std::filesystem::exists(folder / "fatto")) return;
    std::filesystem::remove_all(folder);
    std::filesystem::create_directories(folder);
    WriteMaster(folder);
    WriteClinic(folder);
    std::ofstream(TemplateOf(folder.string()))
        << "[FILETYPE]=TD\n[DELIMITER]=;\n[Codice]=1\n[Cognome]=2\n[Nome]=3\n[Sesso]=4\n[DataNascita]=5\n"
           "[CodiceFiscale]=6\n[DataScelta]=7\n[Comune]=8\n[Indirizzo]=9\n[Telefono]=10\n[DATEFORMAT]=GGMMAAAA\n";
    for (const long lines : {10000L, 100000L, 1000000L}) WriteList(ListOf(folder.string(), lines), lines);
    std::ofstream(folder / "fatto") << "1";
}

std::string ListOf(const std::string& folder, long lines) { return folder + "/" + std::to_string(lines) + ".csv"; }

std::string TemplateOf(const std::string& folder) { return folder + "/modello.ACF"; }

}  // namespace vlm::bench
