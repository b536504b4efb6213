#pragma once

#include "support/FakeConnection.h"

namespace vlm::test {

class EmptyArchive final : public FakeConnection {
public:
    data::RecordsetPtr Open(std::string_view) override {
        return RowsOf({{"IDPaziente", "NumTesseraSanitaria", "NumAssistito", "CodiceFiscale", "Comune", "Cap"}, {}});
    }
};

}  // namespace vlm::test
