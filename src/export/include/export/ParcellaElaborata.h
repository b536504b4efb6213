#pragma once

#include <cstdint>

namespace vlm {

/// A billing document that a run has exported and will mark, with the prescription number that the run gave it.
struct ParcellaElaborata {
    std::int32_t IDParcella = 0;
    std::int16_t ProgressivoRicetta = 0;
};

}  // namespace vlm
