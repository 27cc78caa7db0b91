#pragma once

#include "platform/no_files.h"
#include "platform/platform.h"
#include "platform/portable/windows_1252.h"
#include "support/test_registry.h"

#include <vector>

namespace tarncom32::tests {

/// Keeps what would have been shown, and answers every question alike.
class RecordingMessageBox final : public platform::MessageBox {
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

    std::vector<Shown> shown;
    platform::MessageAnswer answer = platform::MessageAnswer::Ok;
};

/// Surroundings in which nothing happens but what the test does.
struct TestPlatform {
    TestPlatform() : TestPlatform(noApplications) {}
    /// With applications to attach to, which must outlive it.
    explicit TestPlatform(platform::RunningApplications& running) : applications(running) {}

    RecordingMessageBox messageBox;
    platform::NoApplications noApplications;
    platform::RunningApplications& applications;
    platform::portable::Windows1252 codePage;
    TestRegistry registry;
    platform::NoFiles files;
    platform::Platform platform{messageBox, applications, codePage, registry, files.ports()};
};

/// The same surroundings with another registry.
inline platform::Platform withRegistry(const platform::Platform& surroundings, platform::Registry& registry) {
    return {surroundings.messageBox, surroundings.applications, surroundings.codePage, registry, surroundings.files};
}

} // namespace tarncom32::tests
