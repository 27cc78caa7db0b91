#include "automation/error.h"
#include "platform/message_box.h"
#include "platform/no_files.h"
#include "platform/portable/windows_1252.h"
#include "platform/registry.h"
#include "platform/running_applications.h"

// What stands behind the ports that a platform does not name. All of it is without state, and shared.
namespace tarncom32::platform {

using automation::Error;
using automation::ObjectRef;
using automation::StringView;

MsgBox& noMessageBox() {
    static class NoMessageBox final : public MsgBox {
        MessageAnswer show(StringView, int style, StringView) override {
            return style == message_style::kQuestionYesNo ? MessageAnswer::No : MessageAnswer::Ok;
        }
    } none;
    return none;
}

RunningApplications& noApplications() {
    static class NoApplications final : public RunningApplications {
        ObjectRef attach(StringView) override { throw Error(automation::errors::CannotCreateObject); }
        ObjectRef start(StringView) override { throw Error(automation::errors::CannotCreateObject); }
    } none;
    return none;
}

const CodePage& westernCodePage() {
    static const portable::Windows1252 western;
    return western;
}

Registry& noRegistry() {
    static class NoRegistry final : public Registry {
        std::unique_ptr<RegistryKey> open(std::int32_t, std::string_view, RegistryAccess) override { return nullptr; }
        std::unique_ptr<RegistryKey> create(std::int32_t, std::string_view) override {
            throw Error(automation::errors::PathFileAccess, u"There is no registry here");
        }
    } none;
    return none;
}

NoFiles& noFiles() {
    static NoFiles none;
    return none;
}

ObjectRef NoFiles::create() {
    throw Error(automation::errors::CannotCreateObject);
}
void NoFiles::openExclusively(StringView) {
    throw Error(automation::errors::FileNotFound);
}

} // namespace tarncom32::platform
