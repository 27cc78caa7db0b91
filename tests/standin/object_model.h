#pragma once

#include "standin/application.h"
#include "standin/drawing_package.h"
#include "support/error_of.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

namespace tarncom32::tests {

using automation::ObjectRef;
using automation::Ref;
using automation::String;
using automation::StringView;
using automation::Variant;

/// What member calls give, as the object or text it is.
ObjectRef objectIn(const Variant& value);
std::string textIn(const Variant& value);

/// A property's text.
std::string get(const ObjectRef& object, StringView member);
/// An item of a collection that a property holds.
ObjectRef itemOf(const ObjectRef& object, StringView collection, const Variant& index);
/// The document of a file that is opened.
ObjectRef open(const ObjectRef& application, const String& path);

/// An application with one blank drawing, and what is in it.
struct BlankDrawing {
    Ref<standin::Application> application = standin::startApplication();
    ObjectRef document = objectIn(objectIn(application->get(u"Documents"))->call(u"Add", u""));
    ObjectRef page = itemOf(document, u"Pages", 1);
    ObjectRef shapes() const { return objectIn(page->get(u"Shapes")); }
    ObjectRef shape(const Variant& index) const { return itemOf(page, u"Shapes", index); }
    /// A unit square; on the page unless `in` is a group.
    ObjectRef square(const ObjectRef& in = nullptr) const;
    ObjectRef group(const ObjectRef& in = nullptr) const;
};

class DrawingTest : public testing::Test {
protected:
    BlankDrawing drawing;
};

/// A file in a folder of its own that goes at the end of the scope.
class TemporaryFile {
public:
    explicit TemporaryFile(const Parts& parts, const std::string& name = "drawing.vsdx");
    explicit TemporaryFile(const std::string& content, const std::string& name = "drawing.vsdx");
    String path() const { return path_.u16string(); }
    const std::filesystem::path& location() const { return path_; }

private:
    TemporaryFolder folder_;
    std::filesystem::path path_;
};

} // namespace tarncom32::tests
