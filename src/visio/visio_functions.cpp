#include "visio/visio_functions.h"

#include "automation/collection.h"
#include "frame/native_helper.h"
#include "frame/report.h"
#include "visio/addon_string.h"

namespace tarncom32::visio {

using automation::Boolean;
using automation::deref;
using automation::Object;
using automation::ObjectRef;
using automation::String;
using automation::StringView;
using automation::Variant;
using frame::eTEST_DOCUMENT_COMPATIBILITY;

namespace {

constexpr StringView kVisio = u"Visio.Application";
constexpr StringView kVersionCell = u"User.Version";

ObjectRef object(const Variant& value) {
    return automation::toObject(value);
}

/// The item `index` of the collection that `owner` has under `collection`.
template <class Index>
ObjectRef itemOf(const ObjectRef& owner, const automation::MemberName& collection, Index index) {
    return object(deref(object(deref(owner).get(collection))).call(u"Item", index));
}

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
    if (!frame::silently([&] { document = itemOf(application, u"Documents", addon.document); })) return;
    ovDoc = document;
    if (addon.page == 0) return;
    ObjectRef page;
    if (!frame::silently([&] { page = itemOf(document, u"Pages", addon.page); })) return;
    ovPage = page;
    if (addon.shape.empty()) return;
    frame::silently([&] {
        const ObjectRef shapes = object(deref(page).get(u"Shapes"));
        ovShape = object(addon.shapeIsUniversalName ? deref(shapes).call(u"ItemU", addon.shape)
                                                    : deref(shapes).call(u"Item", addon.shape));
    });
}

Boolean VisioFunctions::testForDocumentVersionCompatibility(const ObjectRef& ovDocument, StringView sVersion,
                                                            eTEST_DOCUMENT_COMPATIBILITY eFailureCode,
                                                            StringView sOldVersionMsg, StringView sNewVersionMsg,
                                                            const Variant& sApplicationName) {
    const ObjectRef sheet = object(deref(ovDocument).get(u"DocumentSheet"));
    const Variant exists = deref(sheet).call(u"CellExists", kVersionCell, std::int16_t{0});
    if (!automation::toBoolean(exists).isNonZero()) return false;
    const ObjectRef cell = object(deref(sheet).get(u"Cells", kVersionCell));
    const String formula = automation::toText(deref(cell).get(u"Formula"));
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
        const String text = automation::toText(deref(ovAppVisio).get(u"Version"));
        version = automation::roundToInteger(automation::leadingNumber(text));
    });
    return version;
}

void VisioFunctions::moveDocumentToVisio(const ObjectRef& ovDocToMove) {
    frame::reportAndStop(platform_.messageBox, describe(), [&] {
        const ObjectRef target = platform_.applications.start(kVisio);
        Object& document = deref(ovDocToMove);
        const String fullName = automation::toText(document.get(u"FullName"));
        const String templateName = automation::toText(document.get(u"Template"));
        document.call(u"Close");
        const bool saved = fullName.find(u'.') != String::npos;
        deref(object(deref(target).get(u"Documents"))).call(u"Open", saved ? fullName : templateName);
    });
}

/// What stays the same all the way down a walk.
struct VisioFunctions::Walk {
    const ObjectRef& collection;
    Boolean includeSubShapes;
    Boolean filter;
    StringView applicationName;
    bool entersKeptShapes; ///< with the filter on, whatever `includeSubShapes` says
};

void VisioFunctions::walk(Object& container, const Walk& walk) {
    const ObjectRef shapes = object(container.get(u"Shapes"));
    if (automation::toLong(deref(shapes).get(u"Count")) < 1) return;
    const bool filtered = walk.filter.isTrue();
    const bool descends = walk.includeSubShapes.isTrue() || (filtered && walk.entersKeptShapes);
    automation::forEach(*shapes, [&](const Variant& item) {
        const ObjectRef shape = object(item);
        if (filtered && !frame::weCareAboutThisShape(platform_.codePage, deref(shape), walk.applicationName)) return;
        deref(walk.collection).call(u"Add", shape);
        if (!descends) return;
        const ObjectRef inner = object(deref(shape).get(u"Shapes"));
        if (automation::toLong(deref(inner).get(u"Count")) < 1) return;
        getAllTheShapesFromTheShape(shape, walk.collection, walk.includeSubShapes, walk.filter, walk.applicationName);
    });
}

void VisioFunctions::getAllTheShapesFromThePage(const ObjectRef& ovPage, const ObjectRef& oCollection,
                                                Boolean bIncludeSubShapes, Boolean bWeCareAboutThisShape,
                                                StringView sApplicationName) {
    frame::reportAndStop(platform_.messageBox, describe(), [&] {
        walk(deref(ovPage), {oCollection, bIncludeSubShapes, bWeCareAboutThisShape, sApplicationName, false});
    });
}

void VisioFunctions::getAllTheShapesFromTheShape(const ObjectRef& ovShape, const ObjectRef& oCollection,
                                                 Boolean bIncludeSubShapes, Boolean bWeCareAboutThisShape,
                                                 StringView sApplicationName) {
    frame::reportAndStop(platform_.messageBox, describe(), [&] {
        walk(deref(ovShape), {oCollection, bIncludeSubShapes, bWeCareAboutThisShape, sApplicationName, true});
    });
}

} // namespace tarncom32::visio
