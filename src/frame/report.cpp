#include "frame/report.h"

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

void reportError(platform::MessageBox& messageBox, StringView componentName, StringView procedureName) {
    const CurrentError& error = currentError();
    String text = u"Problem in ";
    text.append(componentName).append(u".").append(procedureName);
    text.append(u"\r\nError Number: ").append(automation::decimalText(error.number));
    text.append(u"\r\nError Description: ").append(error.description);
    messageBox.show(text, platform::message_style::kInformation, kLibraryName);
}

} // namespace tarncom32::frame
