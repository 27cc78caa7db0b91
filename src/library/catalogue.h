#pragma once

#include "frame/published_library.h"
#include "platform/platform.h"

/// The catalogue: which classes the library has, how each may be obtained, and how it is made.
namespace tarncom32::library {

/// A class of the library, built already or not.
struct CatalogueEntry {
    automation::StringView name;
    frame::Instancing instancing;
    automation::StringView plan{}; ///< what a class that is not built yet will be for
    /// The description; null for a class that is not built yet.
    const automation::ClassInfo& (*describe)() = nullptr;
    /// Makes an object; null for a class that is not built yet or that others make objects of.
    automation::ObjectRef (*create)(platform::Platform& platform) = nullptr;

    bool isBuilt() const { return describe != nullptr; }
    bool isCreatable() const { return frame::isCreatable(instancing); }
    /// What the class is for, in a sentence.
    automation::StringView role() const { return isBuilt() ? describe().help : plan; }
    /// "TarnCom32." and the name; empty for a class that cannot be created.
    automation::String progId() const;
};

/// Every class, in the published order.
std::span<const CatalogueEntry> catalogue();

/// The entry of that class name, without regard to case; null when there is none.
const CatalogueEntry* findClass(automation::StringView name);

/// The entry whose ProgID ("TarnCom32.X", or the versioned "TarnCom32.X.1") it is, without regard to case; null when
/// there is none.
const CatalogueEntry* findProgId(automation::StringView progId);

/// What the library publishes: of its classes those that are built.
const frame::PublishedLibrary& publishedLibrary();

} // namespace tarncom32::library
