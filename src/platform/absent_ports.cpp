#include "platform/running_applications.h"

#include "automation/error.h"

namespace tarncom32::platform {

using automation::Error;
using automation::ObjectRef;
using automation::StringView;

ObjectRef NoApplications::attach(StringView) {
    throw Error(automation::errors::CannotCreateObject);
}
ObjectRef NoApplications::start(StringView) {
    throw Error(automation::errors::CannotCreateObject);
}

} // namespace tarncom32::platform
