#include "frame/report.h"

#include <stdexcept>

namespace tarncom32::frame {

using automation::String;
using automation::StringView;

namespace {

const CurrentError kNoError{};
thread_local const CurrentError* threadError = &kNoError;

} // namespace

const CurrentError& currentError() {
    return *threadError;
}

CurrentErrorScope::CurrentErrorScope(const automation::Error& error)
    : error_{error.number(), String(error.description())}, previous_(threadError) {
    threadError = &error_;
}

CurrentErrorScope::~CurrentErrorScope() {
    threadError = previous_;
}

void reportError(platform::MsgBox& messageBox, StringView componentName, StringView procedureName) {
    const CurrentError& error = currentError();
    String text = u"Problem in ";
    text.append(componentName).append(u".").append(procedureName);
    text.append(u"\r\nError Number: ").append(automation::decimalText(error.number));
    text.append(u"\r\nError Description: ").append(error.description);
    messageBox.show(text, platform::message_style::kInformation, kLibraryName);
}

StringView memberNameOf(const automation::ClassInfo& component, const char* function) {
    const String name = automation::fromUtf8(function);
    if (const automation::MemberInfo* member = component.findAny(automation::MemberName(name))) return member->name;
    throw std::logic_error(automation::toUtf8(component.name) + " has no member " + function +
                           "; say under which name it reports");
}

} // namespace tarncom32::frame
