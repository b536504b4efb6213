#pragma once

#include "readers/SourceFormat.h"

/// The formats of the authorities that hand out one of their own, as their record descriptions have them.
namespace vlm::asl {

// Delimited text
extern const SourceFormat kLazio;
extern const SourceFormat kSardegna;

// Fixed-width text
extern const SourceFormat kCatania;
extern const SourceFormat kCaltanissetta;
extern const SourceFormat kEnna;
extern const SourceFormat kMarche;
extern const SourceFormat kPalermo;
extern const SourceFormat kSassari;
extern const SourceFormat kSavona;
extern const SourceFormat kToscana;

// Workbooks
extern const SourceFormat kNapoli;
extern const SourceFormat kRagusa;

/// The format of an entry of the import dialog's list of authorities, by its position from 0; null for an entry that a
/// template describes.
const SourceFormat* FormatOfEntry(int position) noexcept;

}  // namespace vlm::asl
