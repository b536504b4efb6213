#pragma once

#include "support/Positions.h"

namespace vlm::test {

inline Positions ServiceLine() {
    return Positions(222,
                     {At(1, "190201"), At(7, "123456"), At(13, "08"), At(15, "MDCFSC60A01F205X"), At(31, "NICOL\xD2"),
                      At(61, "MARIA GRAZIA"), At(81, "NCLMGR70E41G273K"), At(97, "2"), At(98, "01051970"),
                      At(106, "082053"), At(112, "206"), At(115, "28022011"), At(123, "1234567890123456")})
        .With({At(139, "01"), At(146, "15032011"), At(154, "x"), At(155, "897"), At(162, "002"), At(167, "E02"),
               At(173, "0000,00"), At(180, "00020,66"), At(189, "2011"), At(193, "201"), At(196, "123456"),
               At(202, "0000125")});
}

/// What a closing line has otherwise than the document's last service line.
inline Positions ClosingLine(Positions line = ServiceLine()) {
    return line.With({At(139, "99"), At(146, "        "), At(155, "       "), At(162, "000"), At(165, "1 "),
                      At(173, "0003,50"), At(180, "00017,16"), At(188, "2")});
}

}  // namespace vlm::test
