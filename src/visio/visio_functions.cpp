#include "visio/visio_functions.h"

#include "automation/late_bound.h"
#include "frame/native_helper.h"
#include "frame/report.h"
#include "visio/addon_string.h"

#include <unordered_set>
#include <vector>

namespace tarncom32::visio {

using automation::Boolean;
using automation::deref;
using automation::LateBound;
using automation::Object;
using automation::ObjectRef;
using automation::String;
using automation::StringView;
using automation::Variant;
using frame::eTEST_DOCUMENT_COMPATIBILITY;

namespace {

constexpr StringView kVisio = u"Visio.Application";
constexpr StringView kVersionCell = u"User.Version";
constexpr StringView kShapesOfShape = u"GetAllTheShapesFromTheShape";

} // namespace

void VisioFunctions::getVisioObjectsFromAddonString(StringView sAddonString, String& sParameters,
                                                    const ObjectRef& ovAppVisio, ObjectRef& ovShape, ObjectRef& ovPage,
                                                    ObjectRef& ovDoc) {
    ObjectRef application = ovAppVisio;
    if (!application) frame::silently([&] { application = platform_.applications.attach(kVisio); });
    if (!application) return;

    const AddonString addon = parseAddonString(sAddonString);
    sParameters += addon.others;
    if (addon.document == 0) return;
    ObjectRef document;
    if (!frame::silently(
            [&] { document = LateBound(application).get(u"Documents").call(u"Item", addon.document).object(); }))
        return;
    ovDoc = document;
    if (addon.page == 0) return;
    ObjectRef page;
    if (!frame::silently([&] { page = LateBound(document).get(u"Pages").call(u"Item", addon.page).object(); })) return;
    ovPage = page;
    if (addon.shape.empty()) return;
    frame::silently([&] {
        const LateBound shapes = LateBound(page).get(u"Shapes");
        ovShape = (addon.shapeIsUniversalName ? shapes.call(u"ItemU", addon.shape) : shapes.call(u"Item", addon.shape))
                      .object();
    });
}

Boolean VisioFunctions::testForDocumentVersionCompatibility(const ObjectRef& ovDocument, StringView sVersion,
                                                            eTEST_DOCUMENT_COMPATIBILITY eFailureCode,
                                                            StringView sOldVersionMsg, StringView sNewVersionMsg,
                                                            const Variant& sApplicationName) {
    const LateBound sheet = LateBound(ovDocument).get(u"DocumentSheet");
    if (!automation::toBoolean(sheet.call(u"CellExists", kVersionCell, std::int16_t{0})).isNonZero()) return false;
    const String formula = automation::toText(sheet.get(u"Cells", kVersionCell).get(u"Formula"));
    const double actual = automation::parseNumber(frame::stringFromVisio(platform_.codePage, formula));
    const double wanted = automation::parseNumber(sVersion);

    const bool mindsOlder = eFailureCode == eTEST_DOCUMENT_COMPATIBILITY::FAIL_ON_OLDER ||
                            eFailureCode == eTEST_DOCUMENT_COMPATIBILITY::FAIL_ON_BOTH;
    const bool mindsNewer = eFailureCode == eTEST_DOCUMENT_COMPATIBILITY::FAIL_ON_NEWER ||
                            eFailureCode == eTEST_DOCUMENT_COMPATIBILITY::FAIL_ON_BOTH;
    const auto fail = [&](StringView message) {
        platform_.messageBox.show(message, platform::message_style::kExclamation, automation::toText(sApplicationName));
        return true;
    };
    if (mindsNewer && wanted < actual) return fail(sNewVersionMsg);
    if (mindsOlder && wanted > actual) return fail(sOldVersionMsg);
    return false;
}

std::int16_t VisioFunctions::whichVisioMajorVersionIsThis(const ObjectRef& ovAppVisio) {
    std::int16_t version = 0;
    frame::reportAndStop(platform_.messageBox, describe(), [&] {
        const String text = automation::toText(LateBound(ovAppVisio).get(u"Version"));
        version = automation::roundToInteger(automation::leadingNumber(text));
    });
    return version;
}

void VisioFunctions::moveDocumentToVisio(const ObjectRef& ovDocToMove) {
    frame::reportAndStop(platform_.messageBox, describe(), [&] {
        const LateBound target(platform_.applications.start(kVisio));
        const LateBound document(ovDocToMove);
        const String fullName = automation::toText(document.get(u"FullName"));
        const String templateName = automation::toText(document.get(u"Template"));
        document.call(u"Close");
        const bool saved = fullName.find(u'.') != String::npos;
        target.get(u"Documents").call(u"Open", saved ? fullName : templateName);
    });
}

/// What stays the same all the way down a walk.
struct VisioFunctions::Walk {
    const ObjectRef& collection;
    Boolean includeSubShapes;
    Boolean filter;
    StringView applicationName;
    bool entersKeptShapes; ///< with the filter on, whatever `includeSubShapes` says; in inner levels it always holds
};

/// One call of the members below within another: the visit to the shapes of a container.
struct VisioFunctions::Level {
    ObjectRef container;
    bool isAncestor = false; ///< whether it is known among the ancestors
    ObjectRef shapes{};
    std::unique_ptr<automation::Enumerator> rest{}; ///< null before the first shape
};

/// The levels from the outermost to the one that is visited. They stand here and not on the call stack, which groups
/// nested deeply enough would exhaust.
struct VisioFunctions::Path {
    std::vector<Level> levels;
    std::unordered_set<const Object*> ancestors;

    /// Whether the innermost container has shapes to visit. Raises 5 when it is inside itself.
    bool enter() {
        Level& level = levels.back();
        Object& container = deref(level.container);
        level.isAncestor = ancestors.insert(&container).second;
        if (!level.isAncestor)
            throw automation::Error(automation::errors::InvalidProcedureCall,
                                    u"The shape is inside itself: its Shapes lead back to it. They are left out.");
        level.shapes = LateBound(level.container).get(u"Shapes").object();
        if (automation::toLong(LateBound(level.shapes).get(u"Count")) < 1) return false;
        level.rest = level.shapes->enumerate();
        return true;
    }
    void leave() {
        if (levels.back().isAncestor) ancestors.erase(levels.back().container.get());
        levels.pop_back();
    }
};

/// Visits the innermost container's shapes up to one that is to be entered, which becomes the innermost container;
/// false when there is none.
bool VisioFunctions::visit(Path& path, const Walk& walk) {
    if (!path.levels.back().rest && !path.enter()) return false;
    const bool filtered = walk.filter.isTrue();
    const bool entersKept = walk.entersKeptShapes || path.levels.size() > 1;
    for (Variant item; path.levels.back().rest->next(item);) {
        const ObjectRef shape = automation::toObject(item);
        if (filtered && !frame::weCareAboutThisShape(platform_.codePage, deref(shape), walk.applicationName)) continue;
        deref(walk.collection).call(u"Add", shape);
        if (!walk.includeSubShapes.isTrue() && !(filtered && entersKept)) continue;
        if (automation::toLong(LateBound(shape).get(u"Shapes").get(u"Count")) < 1) continue;
        path.levels.push_back({shape});
        return true;
    }
    return false;
}

void VisioFunctions::walk(const ObjectRef& container, const Walk& walk) {
    Path path;
    path.levels.push_back({container});
    while (!path.levels.empty()) {
        bool entered = false;
        // The failures of the outermost level are those of the member that was called.
        if (path.levels.size() == 1)
            entered = visit(path, walk);
        else
            frame::reportAndStop(platform_.messageBox, kClassName, kShapesOfShape,
                                 [&] { entered = visit(path, walk); });
        if (!entered) path.leave();
    }
}

void VisioFunctions::getAllTheShapesFromThePage(const ObjectRef& ovPage, const ObjectRef& oCollection,
                                                Boolean bIncludeSubShapes, Boolean bWeCareAboutThisShape,
                                                StringView sApplicationName) {
    frame::reportAndStop(platform_.messageBox, describe(), [&] {
        walk(ovPage, {oCollection, bIncludeSubShapes, bWeCareAboutThisShape, sApplicationName, false});
    });
}

void VisioFunctions::getAllTheShapesFromTheShape(const ObjectRef& ovShape, const ObjectRef& oCollection,
                                                 Boolean bIncludeSubShapes, Boolean bWeCareAboutThisShape,
                                                 StringView sApplicationName) {
    frame::reportAndStop(platform_.messageBox, describe(), [&] {
        walk(ovShape, {oCollection, bIncludeSubShapes, bWeCareAboutThisShape, sApplicationName, true});
    });
}

} // namespace tarncom32::visio
