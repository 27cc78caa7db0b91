#pragma once

#include "platform/platform.h"
#include "support/test_registry.h"

#include <memory>
#include <vector>

namespace tarncom32::tests {

/// Keeps what would have been shown, and answers every question alike.
class RecordingMessageBox final : public platform::MsgBox {
public:
    struct Shown {
        automation::String text;
        int style;
        automation::String title;
        friend bool operator==(const Shown&, const Shown&) = default;
    };

    platform::MessageAnswer show(automation::StringView text, int style, automation::StringView title) override {
        shown.push_back({automation::String(text), style, automation::String(title)});
        return answer;
    }

    /// The first lines of what was shown.
    std::vector<std::string> headings() const {
        std::vector<std::string> lines;
        for (const Shown& box : shown)
            lines.push_back(automation::toUtf8(box.text.substr(0, box.text.find(u'\r'))));
        return lines;
    }

    std::vector<Shown> shown;
    platform::MessageAnswer answer = platform::MessageAnswer::Ok;
};

/// A platform on which nothing happens but what the test does; `Files` are the only files there.
template <class Files>
struct PlatformWith {
    /// With applications to attach to, if any, which must outlive it.
    explicit PlatformWith(platform::RunningApplications& running = platform::noApplications())
        : applications(running) {}

    RecordingMessageBox messageBox;
    platform::RunningApplications& applications;
    std::shared_ptr<platform::Registry> registry = testRegistry();
    Files files;
    platform::Platform platform{
        .messageBox = messageBox, .applications = applications, .registry = *registry, .files = files.ports()};
};
using TestPlatform = PlatformWith<platform::NoFiles>;

} // namespace tarncom32::tests
