#include "databases/MasterSchema.h"

namespace vlm::host {

const DatabaseSchema& MasterSchema() {
    static const DatabaseSchema schema{
        {
            {"Studi",
             {Key("IDStudio"), Int("IDASL"), Int("IDDistrettoASL"), Int("IDRegioneTariffario"),
              Text("RagioneSociale", 100), Text("Nome", 100), Int("IDEquipe")}},
            {"ASL", {Key("IDASL"), Text("NumeroASL", 3)}},
            {"DistrettoASL", {Key("IDDistrettoASL"), Text("Codice", 2)}},
            {"Mese", {Key("IDMese"), Text("Mese", 20)}},
            {"TipoRevocaPaziente", {Key("IDTipoRevocaPaziente"), Text("TipoRevocaPaziente", 50)}},
            {"Comune",
             {Key("IDComune"), Text("Comune", 100), Text("CodiceISTAT", 6), Text("CodiceCatastale", 4),
              Text("Sigla", 2), Text("Cap", 5)}},
            {"Esenzione", {Key("IDEsenzione"), Int("IDTipoEsenzione")}},
            {"TipoEsenzione", {Key("IDTipoEsenzione"), Text("TipoEsenzione", 50), Int("IDPosizioneTicket")}},
            {"Patologia", {Key("IDPatologia"), Text("CodificaCompleta", 10), Text("Patologia", 100)}},
        },
        {
            {"IX_Comune_Nome", "Comune", {{"Comune", IndexUse::NameText}}},
            {"IX_Comune_CodiceCatastale", "Comune", {{"CodiceCatastale", IndexUse::CodeText}}},
        }};
    return schema;
}

}  // namespace vlm::host
