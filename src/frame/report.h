#pragma once

#include "automation/class_info.h"
#include "automation/error.h"
#include "platform/platform.h"

#include <new>

/// Failure styles. A public member shows at the top of its body which one it has: `reportAndStop` around the whole,
/// `silently` around each step, or neither, and then its failures go to the caller.
namespace tarncom32::frame {

/// The title of the library's message boxes and the name of its type library.
inline constexpr automation::StringView kLibraryName = u"TarnCom32";

/// The error that the calling thread is dealing with.
struct CurrentError {
    std::int32_t number = 0;
    automation::String description{};
};

/// The calling thread's current error; number 0 and no description when there is none.
const CurrentError& currentError();

/// Makes `error` the calling thread's current error as long as the scope lives, then the one before again.
class CurrentErrorScope {
public:
    explicit CurrentErrorScope(const automation::Error& error);
    ~CurrentErrorScope();
    CurrentErrorScope(const CurrentErrorScope&) = delete;
    CurrentErrorScope& operator=(const CurrentErrorScope&) = delete;

private:
    CurrentError error_;
    const CurrentError* previous_;
};

/// Tells the user, in a modal message box titled with the library's name, that `procedureName` of `componentName`
/// failed with the current error. Reads the error and leaves it as it is; with no error it shows number 0.
void reportError(platform::MsgBox& messageBox, automation::StringView componentName,
                 automation::StringView procedureName);

/// Calls `body` and hands every failure, those of the C++ library included, to `handle` as an `Error`.
template <class Body, class Handler>
void trap(Body&& body, Handler&& handle) {
    try {
        body();
    } catch (const automation::Error& error) {
        handle(error);
    } catch (const std::bad_alloc&) {
        handle(automation::Error(automation::errors::OutOfMemory));
    } catch (const std::exception& error) {
        handle(automation::Error(automation::errors::InternalError, automation::fromUtf8(error.what())));
    }
}

/// Report and stop: runs `body` up to its first failure, which is reported and goes no further. What `body` assigned
/// before stays. The form for a routine that is no member; members use the one below.
template <class Body>
void reportAndStop(platform::MsgBox& messageBox, automation::StringView componentName,
                   automation::StringView procedureName, Body&& body) {
    trap(std::forward<Body>(body), [&](const automation::Error& error) {
        const CurrentErrorScope scope(error);
        reportError(messageBox, componentName, procedureName);
    });
}

/// The published name of the member of `component` that the C++ function of that name implements: the same but for the
/// case of its letters. Throws `std::logic_error` when the table has no such member.
automation::StringView memberNameOf(const automation::ClassInfo& component, const char* function);

/// Report and stop for the body of a public member, which is reported under its published name. `function` is the C++
/// function that calls this; its name is looked up once for each body, so that one that is no member's shows at the
/// first call, failing or not.
template <class Body>
void reportAndStop(platform::MsgBox& messageBox, const automation::ClassInfo& component, Body&& body,
                   const char* function = __builtin_FUNCTION()) {
    static const automation::StringView name = memberNameOf(component, function);
    reportAndStop(messageBox, component.name, name, std::forward<Body>(body));
}

/// Silent: a step that fails is skipped; whether it succeeded.
template <class Step>
bool silently(Step&& step) {
    bool succeeded = true;
    trap(std::forward<Step>(step), [&](const automation::Error&) { succeeded = false; });
    return succeeded;
}

} // namespace tarncom32::frame
