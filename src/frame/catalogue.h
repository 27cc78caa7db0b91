#pragma once

#include "automation/class_info.h"

/// The catalogue: which classes the library has and how each may be obtained.
namespace tarncom32::frame {

enum class Instancing : std::uint8_t {
    Global,       ///< creatable; in addition its members can be called without creating an instance
    Creatable,    ///< every creation gives an independent instance
    NotCreatable, ///< published, but obtained only from another object of the library
    Internal,     ///< not published
};

/// "global", "creatable", "not creatable" or "internal".
automation::StringView instancingText(Instancing instancing);

/// What the catalogue says of a class, built already or not.
struct CatalogueEntry {
    automation::StringView name;
    Instancing instancing;
    automation::StringView role;

    /// "TarnCom32." and the name; empty for a class that cannot be created.
    automation::String progId() const;
    bool isCreatable() const { return instancing == Instancing::Global || instancing == Instancing::Creatable; }
};

/// Every class, in the published order.
std::span<const CatalogueEntry> catalogue();

/// The entry of that class name, without regard to case; null when there is none.
const CatalogueEntry* findClass(automation::StringView name);

/// The entry whose ProgID ("TarnCom32.X", or the versioned "TarnCom32.X.1") it is, without regard to case; null when
/// there is none.
const CatalogueEntry* findProgId(automation::StringView progId);

} // namespace tarncom32::frame
