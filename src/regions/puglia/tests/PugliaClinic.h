#pragma once

#include "support/Positions.h"
#include "support/ServiceClinic.h"
#include "support/Words.h"

namespace vlm::test {

/// A clinic in Puglia. Its first specialist's code names the file: C700007.txt.
struct PugliaClinic : ServiceClinic {
    PugliaClinic() {
        idRegioneTariffario = 13;
        clinic = 16;
    }
    explicit PugliaClinic(const std::vector<SqlRow>& services) : PugliaClinic() { Create(services); }
    HostRun Export(const std::string& before = {}) const {
        return Run(WordsOf(before) + std::vector{"txtPath=" + out, std::string("cmdConferma!")});
    }
    std::string Out() const { return ReadBytes(out + "/C700007.txt"); }
    std::string Report() const { return ReadBytes(work + "/C700007Err.txt"); }
    Lines Marks() const {
        return Query("SELECT IDParcella, ElaborataASL, ProgressivoRicetta FROM Parcella ORDER BY IDParcella");
    }
};

/// The line of the service that ServiceClinic::Service describes: its prescription has no other.
inline Positions PugliaLine() {
    Positions line(341);
    line.At(1, "123456").At(7, "077001").At(13, "NICOL\xD2").At(43, "MARIA GRAZIA").At(73, "ASS-4711");
    line.At(89, "NCLMGR70E41G273K").At(105, "2").At(106, "01051970").At(114, "082053").At(120, "190").At(123, "206");
    line.At(126, "1234567890123456").At(142, "27022011").At(150, "15032011").At(158, "00001").At(163, "00");
    line.At(165, "008").At(168, "  89702");
    for (std::size_t slot = 2; slot <= 8; ++slot) line.At(168 + 7 * (slot - 1), "     00");
    line.At(229, "00").At(231, "00000041320").At(242, "00000003000").At(253, "E").At(257, "E02").At(277, "B");
    line.At(278, "01").At(280, "01032011").At(288, "10032011").At(296, "14032011").At(304, "16032011");
    return line.At(312, "02032011").At(320, "GS");
}

}  // namespace vlm::test
