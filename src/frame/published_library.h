#pragma once

#include "automation/class_info.h"
#include "frame/enumerations.h"
#include "frame/records.h"

/// What a library publishes, as everything sees it that describes the library to others.
namespace tarncom32::frame {

/// How objects of a class are obtained.
enum class Instancing : std::uint8_t {
    Global,       ///< creatable; in addition its members can be called without creating an instance
    Creatable,    ///< every creation gives an independent instance
    NotCreatable, ///< published, but obtained only from another object of the library
    Internal,     ///< not published
};

/// "global", "creatable", "not creatable" or "internal".
automation::StringView instancingText(Instancing instancing);

/// Whether objects of such a class are created by ProgID.
constexpr bool isCreatable(Instancing instancing) {
    return instancing == Instancing::Global || instancing == Instancing::Creatable;
}

/// A class to publish. Of one that has no CLSID, and so cannot be created, only the interface is.
struct PublishedClass {
    const automation::ClassInfo* info;
    Instancing instancing = Instancing::NotCreatable;
};

/// A type library, version 1.0.
struct PublishedLibrary {
    automation::StringView name;
    automation::StringView help;
    automation::Guid guid;
    std::span<const EnumerationInfo> enumerations{};
    std::span<const RecordInfo> records{};
    std::vector<PublishedClass> classes{};
};

} // namespace tarncom32::frame
