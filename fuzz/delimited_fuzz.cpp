#include "ImportReading.h"

/// A delimited list, read by the authorities' delimited formats and by a template with every column.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static vlm::fuzz::ImportReading reading;
    static const std::string format = reading.Write(
        "modello.ACF",
        "[FILETYPE]=TD\n[DELIMITER]=;\n[Codice]=1\n[Cognome]=2\n[Nome]=3\n[CodiceFiscale]=4\n[DataNascita]=5\n"
        "[Comune]=6\n[Esenzione]=7\n[EsenzioneDataInizio]=8\n[DATEFORMAT]=AAMMGG\n");
    const std::string list = reading.Write("elenco.txt", std::string(reinterpret_cast<const char*>(data), size));
    reading.ReadAs(list, vlm::SourceKind::Delimited);
    reading.ReadWith(list, format);
    return 0;
}
