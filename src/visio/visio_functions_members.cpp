#include "visio/visio_functions.h"

namespace tarncom32::visio {

using automation::Boolean;
using automation::ClassInfo;
using automation::in;
using automation::inOut;
using automation::ObjectRef;
using automation::optional;
using automation::StringView;
using automation::operator""_guid;
namespace member = automation::member;

const ClassInfo& VisioFunctions::describe() {
    static const ClassInfo info(
        kClassName, u"Visio's object model: add-on strings, versions of documents, walks over shapes.",
        "0a9b7d53-5d0c-4e2b-8b5f-7f1c3c2e9a41"_guid, "c6c3a1de-93c4-4f86-a1b5-51f7c1f0d2b8"_guid,
        {
            member::method<&VisioFunctions::moveDocumentToVisio>(
                1, u"MoveDocumentToVisio", {in(u"ovDocToMove")},
                u"Closes a document and opens its file in a new instance of Visio."),
            member::silent(member::method<&VisioFunctions::getVisioObjectsFromAddonString>(
                2, u"GetVisioObjectsFromAddonString",
                {in(u"sAddonString"), inOut(u"sParameters"), optional(in(u"ovAppVisio"), ObjectRef()),
                 optional(inOut(u"ovShape"), ObjectRef()), optional(inOut(u"ovPage"), ObjectRef()),
                 optional(inOut(u"ovDoc"), ObjectRef())},
                u"Finds the document, page and shape that an add-on's command line names.")),
            member::method<&VisioFunctions::getAllTheShapesFromThePage>(
                3, u"GetAllTheShapesFromThePage",
                {in(u"ovPage"), in(u"oCollection"), optional(in(u"bIncludeSubShapes"), Boolean(false)),
                 optional(in(u"bWeCareAboutThisShape"), Boolean(false)), optional(in(u"sApplicationName"), u"")},
                u"Appends the shapes of a page to a collection."),
            member::method<&VisioFunctions::getAllTheShapesFromTheShape>(
                4, u"GetAllTheShapesFromTheShape",
                {in(u"ovShape"), in(u"oCollection"), optional(in(u"bIncludeSubShapes"), Boolean(false)),
                 optional(in(u"bWeCareAboutThisShape"), Boolean(false)), optional(in(u"sApplicationName"), u"")},
                u"Appends the shapes inside a shape to a collection."),
            member::method<&VisioFunctions::testForDocumentVersionCompatibility>(
                5, u"TestForDocumentVersionCompatibility",
                {in(u"ovDocument"), in(u"sVersion"), in(u"eFailureCode"), in(u"sOldVersionMsg"), in(u"sNewVersionMsg"),
                 in(u"sApplicationName")},
                u"Tells the user, and returns True, when a document's version does not suit the add-in."),
            member::method<&VisioFunctions::whichVisioMajorVersionIsThis>(
                6, u"WhichVisioMajorVersionIsThis", {in(u"ovAppVisio")},
                u"Returns Visio's major version, rounded half to even."),
        });
    return info;
}

} // namespace tarncom32::visio
