#pragma once

#include "cli/commands.h"
#include "library/library.h"

#include <optional>

namespace tarncom32::cli {

/// A shape as an add-in meets it.
struct SessionShape {
    automation::ObjectRef shape{};
    int depth = 0;    ///< groups around it
    bool kept = true; ///< the filter keeps it; always so without a filter
};

/// The document's version against the one that the add-in expects.
struct VersionCheck {
    automation::String documentVersion{};
    bool failed = false; ///< the document does not suit, and the user was told
};

/// What an add-in has in its hands as its session goes on. Each step fills in a
/// part and needs those before it.
struct Session {
    platform::Platform& platform;
    library::Library& library;
    const SessionOptions& options;

    automation::ObjectRef application{};
    std::int16_t majorVersion = 0;    ///< of Visio
    automation::String parameters{};  ///< the fields of the add-on string that name no object
    automation::ObjectRef document{}; ///< null when the add-on string does not
                                      ///< lead to one; the next two likewise
    automation::ObjectRef page{};
    automation::ObjectRef shape{};
    std::optional<VersionCheck> version{}; ///< absent when nothing was checked
    bool entersGroups = false;             ///< `shapes` has those inside groups as well
    std::vector<SessionShape> shapes{};    ///< in the order in which the add-in gets them
};

/// The steps of an add-in's session, in their order. Each raises what Visio or
/// the library raises.

/// Starts Visio, opens the drawing in it and asks which Visio it is.
void openDrawing(Session& session);

/// Finds the document, page and shape that the add-on string names.
void resolveAddonString(Session& session);

/// Checks the document's version cell, where it has one and a version is
/// wanted.
void checkVersion(Session& session);

/// Collects the shapes: those inside the shape that the add-on string names,
/// else those of the page.
void walkShapes(Session& session);

/// All of them, one after the other.
void runSteps(Session& session);

} // namespace tarncom32::cli
