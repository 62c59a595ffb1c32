#ifndef ORAVANE_POSHOWNPART_H
#define ORAVANE_POSHOWNPART_H

/// \file
/// For kits that draw several things, each with an appearance of its own. A shown part `name` is a group of
/// three in the kit's catalog: a separator `nameSep`, and in it an appearance kit `nameApp`, which programs
/// set, and the part `name`, which the kit generates.
///
/// \code
///   class PoGauge : public PoKestrava {
///       SO_KIT_HEADER(PoGauge);
///       ORAVANE_SHOWN_PART_HEADER(needle);        // needleSep, needleApp, needle
///       ...
///   };
///   PoGauge::PoGauge() {
///       SO_KIT_CONSTRUCTOR(PoGauge);
///       ORAVANE_SHOWN_PART(needle, SoGroup, FALSE);
///       ...
///   }
///   gauge->set("needleApp.material { diffuseColor 1 0 0 }");
/// \endcode
///
/// All three hang below `alternateRep` and start null. `sepIsPublic` tells whether programs may reach the
/// separator by `getPart`.

// clang-format off
#define ORAVANE_SHOWN_PART_HEADER(part)                                                                      \
    SO_KIT_CATALOG_ENTRY_HEADER(part##Sep);                                                                  \
    SO_KIT_CATALOG_ENTRY_HEADER(part##App);                                                                  \
    SO_KIT_CATALOG_ENTRY_HEADER(part)

#define ORAVANE_SHOWN_PART(part, partClass, sepIsPublic)                                                     \
    SO_KIT_ADD_CATALOG_ENTRY(part##Sep, SoSeparator, TRUE, alternateRep, , sepIsPublic);                     \
    SO_KIT_ADD_CATALOG_ENTRY(part##App, SoAppearanceKit, TRUE, part##Sep, , TRUE);                           \
    SO_KIT_ADD_CATALOG_ENTRY(part, partClass, TRUE, part##Sep, , TRUE)
// clang-format on

#endif
