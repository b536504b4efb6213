#pragma once

#include "support/FakeConnection.h"

namespace vlm::test {

/// A connection to an archive without rows.
class EmptyArchive final : public FakeConnection {
public:
    data::RecordsetPtr Open(std::string_view) override {
        return RowsOf({{"IDPaziente", "NumTesseraSanitaria", "NumAssistito", "CodiceFiscale", "Comune", "Cap"}, {}});
    }
};

}  // namespace vlm::test
