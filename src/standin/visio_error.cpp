#include "standin/visio_error.h"

namespace tarncom32::standin::visio_error {

using automation::String;

namespace {

constexpr std::int32_t visio(std::uint32_t code) {
    return static_cast<std::int32_t>(0x86DB0000u + code);
}
constexpr auto kInvalidArgument = static_cast<std::int32_t>(0x80070057u);

String withReason(StringView text, StringView reason) {
    return String(text) + u" (" + String(reason) + u")";
}

} // namespace

Error unexpectedEndOfFile() {
    return Error(visio(0x03E9), u"Unexpected end of file");
}
Error invalidSheetIdentifier() {
    return Error(visio(0x08A4), u"Invalid sheet identifier");
}
Error objectNameNotFound() {
    return Error(visio(0x0904), u"Object name not found");
}
Error positionOutOfRange() {
    return Error(visio(0x08A7), u"Invalid parameter");
}
Error inappropriateSource(StringView reason) {
    return Error(visio(0x089D), withReason(u"Inappropriate source object for this action", reason));
}
Error inappropriateTarget(StringView reason) {
    return Error(visio(0x089E), withReason(u"Inappropriate target object for this action", reason));
}
Error presentlyDisabled(StringView reason) {
    return Error(visio(0x089A), withReason(u"Requested operation is presently disabled", reason));
}
Error invalidParameter(StringView reason) {
    return Error(kInvalidArgument, withReason(u"Invalid parameter", reason));
}
Error nameInUse(StringView name) {
    return Error(kInvalidArgument, u"The name '" + String(name) + u"' is already in use.");
}
Error cannotOpen(StringView text) {
    return Error(visio(0x089B), text);
}

} // namespace tarncom32::standin::visio_error
