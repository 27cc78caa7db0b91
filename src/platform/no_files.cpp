#include "platform/no_files.h"

#include "automation/error.h"

namespace tarncom32::platform {

using automation::Error;

automation::ObjectRef NoFiles::create() {
    throw Error(automation::errors::CannotCreateObject);
}
void NoFiles::openExclusively(automation::StringView) {
    throw Error(automation::errors::FileNotFound);
}

} // namespace tarncom32::platform
