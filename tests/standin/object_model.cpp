#include "standin/object_model.h"

#include "automation/convert.h"

namespace tarncom32::tests {

ObjectRef objectIn(const Variant& value) {
    return automation::toObject(value);
}

std::string textIn(const Variant& value) {
    return automation::toUtf8(automation::toText(value));
}

std::string get(const ObjectRef& object, StringView member) {
    return textIn(object->get(automation::MemberName(member)));
}

ObjectRef itemOf(const ObjectRef& object, StringView collection, const Variant& index) {
    return objectIn(objectIn(object->get(automation::MemberName(collection)))->call(u"Item", index));
}

ObjectRef open(const ObjectRef& application, const String& path) {
    return objectIn(objectIn(application->get(u"Documents"))->call(u"Open", path));
}

ObjectRef BlankDrawing::square(const ObjectRef& in) const {
    return objectIn((in ? in : page)->call(u"DrawRectangle", 0, 0, 1, 1));
}

ObjectRef BlankDrawing::group(const ObjectRef& in) const {
    const ObjectRef shape = square(in);
    shape->call(u"ConvertToGroup");
    return shape;
}

TemporaryFile::TemporaryFile(const std::string& content, const std::string& name)
    : path_(folder_.write(name, content)) {}

TemporaryFile::TemporaryFile(const Parts& parts, const std::string& name) {
    const std::vector<std::byte> bytes = zipped(parts);
    path_ = folder_.write(name, {reinterpret_cast<const char*>(bytes.data()), bytes.size()});
}

} // namespace tarncom32::tests
