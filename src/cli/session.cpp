#include "cli/session.h"

#include "automation/collection.h"
#include "automation/convert.h"
#include "frame/enumerations.h"

#include <unordered_map>
#include <unordered_set>

namespace tarncom32::cli {

using automation::Boolean;
using automation::Collection;
using automation::deref;
using automation::Object;
using automation::ObjectRef;
using automation::Ref;
using automation::String;
using automation::Variant;

namespace {

constexpr automation::StringView kVersionCell = u"User.Version";

ObjectRef objectOf(const Variant& value) {
    return automation::toObject(value);
}

ObjectRef visioFunctions(Session& session) {
    return session.library.global(u"VisioFunctions");
}

/// The shapes that one of the two walks collects.
Ref<Collection> collect(Session& session, bool subShapes, bool filter) {
    const auto collection = automation::make<Collection>();
    const String application = automation::fromUtf8(session.options.application);
    if (session.shape)
        visioFunctions(session)->call(u"GetAllTheShapesFromTheShape", session.shape, collection, Boolean(subShapes),
                                      Boolean(filter), application);
    else
        visioFunctions(session)->call(u"GetAllTheShapesFromThePage", session.page, collection, Boolean(subShapes),
                                      Boolean(filter), application);
    return collection;
}

/// How many groups each shape is in. Shapes come after the group around them,
/// whose depth is then known.
class Depths {
public:
    int of(const ObjectRef& shape) {
        if (const auto known = depths_.find(shape.get()); known != depths_.end()) return known->second;
        const ObjectRef parent = objectOf(deref(shape).get(u"Parent"));
        const int depth = parent && parent->typeName() == u"Shape" ? of(parent) + 1 : 0;
        depths_.emplace(shape.get(), depth);
        known_.push_back(shape);
        return depth;
    }

private:
    std::unordered_map<const Object*, int> depths_;
    std::vector<ObjectRef> known_; // an address stands for the same shape as long
                                   // as the object lives
};

} // namespace

void openDrawing(Session& session) {
    session.application = session.platform.applications.start(u"Visio.Application");
    const ObjectRef documents = objectOf(deref(session.application).get(u"Documents"));
    deref(documents).call(u"Open", automation::fromUtf8(session.options.drawing));
    session.majorVersion =
        automation::toInteger(visioFunctions(session)->call(u"WhichVisioMajorVersionIsThis", session.application));
}

void resolveAddonString(Session& session) {
    const automation::MemberName name(u"GetVisioObjectsFromAddonString");
    Variant arguments[] = {automation::fromUtf8(session.options.addonArgs),
                           String(),
                           session.application,
                           ObjectRef(),
                           ObjectRef(),
                           ObjectRef()};
    visioFunctions(session)->invoke(name, automation::Access::Method, arguments, 0b111010);
    session.parameters = automation::toText(arguments[1]);
    session.shape = objectOf(arguments[3]);
    session.page = objectOf(arguments[4]);
    session.document = objectOf(arguments[5]);
}

void checkVersion(Session& session) {
    if (!session.document || session.options.wantedVersion.empty()) return;
    const ObjectRef sheet = objectOf(session.document->get(u"DocumentSheet"));
    if (!automation::toBoolean(deref(sheet).call(u"CellExists", kVersionCell, std::int16_t{0})).isNonZero()) return;
    const ObjectRef cell = objectOf(deref(sheet).get(u"Cells", kVersionCell));
    VersionCheck check;
    check.documentVersion = automation::toText(deref(cell).get(u"ResultStr", u""));
    const String wanted = automation::fromUtf8(session.options.wantedVersion);
    const String application = automation::fromUtf8(session.options.application);
    const Variant failed = visioFunctions(session)->call(
        u"TestForDocumentVersionCompatibility", session.document, wanted,
        frame::eTEST_DOCUMENT_COMPATIBILITY::FAIL_ON_BOTH,
        u"The document's version " + check.documentVersion + u" is older than " + wanted + u".",
        u"The document's version " + check.documentVersion + u" is newer than " + wanted + u".",
        application.empty() ? String(u"tarn") : application);
    check.failed = automation::toBoolean(failed).isNonZero();
    session.version = check;
}

void walkShapes(Session& session) {
    if (!session.page) return;
    const bool filter = !session.options.application.empty();
    // With the filter on, a walk inside a shape enters every group that it keeps,
    // asked to or not.
    session.entersGroups = session.options.subShapes || (filter && session.shape);
    const Ref<Collection> all = collect(session, session.entersGroups, false);
    std::unordered_set<const Object*> kept;
    Ref<Collection> keptShapes; // its objects keep their addresses as long as it lives
    if (filter) {
        keptShapes = collect(session, session.options.subShapes, true);
        for (std::size_t i = 0; i < keptShapes->size(); ++i)
            kept.insert(objectOf((*keptShapes)[i]).get());
    }
    Depths depths;
    session.shapes.reserve(all->size());
    for (std::size_t i = 0; i < all->size(); ++i) {
        const ObjectRef shape = objectOf((*all)[i]);
        session.shapes.push_back({shape, depths.of(shape), !filter || kept.contains(shape.get())});
    }
}

void runSteps(Session& session) {
    openDrawing(session);
    resolveAddonString(session);
    checkVersion(session);
    walkShapes(session);
}

} // namespace tarncom32::cli
