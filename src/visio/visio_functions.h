#pragma once

#include "automation/members.h"
#include "frame/enumerations.h"
#include "platform/platform.h"

namespace tarncom32::visio {

/// Helper operations over Visio's object model. Stateless. Visio objects are reached by member name, so those of a
/// running Visio and those of the stand-in serve alike.
class VisioFunctions final : public automation::Described<VisioFunctions> {
public:
    static constexpr automation::StringView kClassName = u"VisioFunctions";
    static const automation::ClassInfo& describe();

    explicit VisioFunctions(platform::Platform& platform) : platform_(platform) {}

    /// Finds the objects that an add-on's command line names ("/doc=1 /page=2 /shape=Sheet.5 rest"). Its fields are
    /// told apart by single blanks and recognised in exactly this spelling:
    ///   /doc=N     1-based number of the document; the number at the start of the rest, none is 0
    ///   /page=N    1-based number of the page; a rest that is no number leaves the page number as it was
    ///   /shape=T   local name of the shape
    ///   /shapeu=T  universal name of the shape
    /// A later field of a kind overrides an earlier one. Every other field is appended to `sParameters`, each followed
    /// by one blank; what the caller had in there stays in front. Without `ovAppVisio` the running Visio is asked, and
    /// when there is none nothing is written at all. `ovDoc` needs the document, `ovPage` document and page, `ovShape`
    /// all three; an object that is not named or not found keeps the caller's value. Never raises, never reports.
    void getVisioObjectsFromAddonString(automation::StringView sAddonString, automation::String& sParameters,
                                        const automation::ObjectRef& ovAppVisio, automation::ObjectRef& ovShape,
                                        automation::ObjectRef& ovPage, automation::ObjectRef& ovDoc);

    /// Tests the version in the document sheet's "User.Version" cell against `sVersion` and, where `eFailureCode`
    /// minds the difference, shows the fitting message under the title `sApplicationName`. True when the document
    /// failed and the user was told; false also for a document without the cell and for an unknown failure code.
    /// Both versions are numbers by the user's locale: raises 13 when one is none, and whatever Visio raises.
    automation::Boolean testForDocumentVersionCompatibility(const automation::ObjectRef& ovDocument,
                                                            automation::StringView sVersion,
                                                            frame::eTEST_DOCUMENT_COMPATIBILITY eFailureCode,
                                                            automation::StringView sOldVersionMsg,
                                                            automation::StringView sNewVersionMsg,
                                                            const automation::Variant& sApplicationName);

    /// The leading number of `Application.Version`, rounded half to even: "11.5" gives 12, "10.5" gives 10. Reports
    /// its failures and then returns 0.
    std::int16_t whichVisioMajorVersionIsThis(const automation::ObjectRef& ovAppVisio);

    /// Closes the document where it is open and opens its file in a new instance of Visio. A document whose full name
    /// has no "." was never saved; the new instance then opens the template it came from. Reports its failures.
    void moveDocumentToVisio(const automation::ObjectRef& ovDocToMove);

    /// Appends the shapes of a page to `oCollection`, in the page's order. `bIncludeSubShapes` (true is exactly -1)
    /// follows each shape with the shapes inside it, whatever their depth. With `bWeCareAboutThisShape` (likewise)
    /// only shapes that belong to `sApplicationName` by their "User.Application" cell are kept, and a shape that is
    /// not kept hides all inside it. Reports its failures; shapes appended before stay. A failure inside a shape ends
    /// that shape only, and so does a shape that is inside itself.
    void getAllTheShapesFromThePage(const automation::ObjectRef& ovPage, const automation::ObjectRef& oCollection,
                                    automation::Boolean bIncludeSubShapes, automation::Boolean bWeCareAboutThisShape,
                                    automation::StringView sApplicationName);

    /// The same for the shapes inside `ovShape`, which is not appended itself. With the filter on, a shape that is
    /// kept is always entered, whatever `bIncludeSubShapes` says: this is meant, callers collect all they own from a
    /// group this way.
    void getAllTheShapesFromTheShape(const automation::ObjectRef& ovShape, const automation::ObjectRef& oCollection,
                                     automation::Boolean bIncludeSubShapes, automation::Boolean bWeCareAboutThisShape,
                                     automation::StringView sApplicationName);

private:
    struct Walk;
    struct Level;
    struct Path;
    /// An inner level reports its own failures and ends with them; the one outside it goes on with its next shape.
    void walk(const automation::ObjectRef& container, const Walk& walk);
    bool visit(Path& path, const Walk& walk);

    platform::Platform& platform_;
};

} // namespace tarncom32::visio
