#pragma once

#include "platform/running_applications.h"
#include "standin/application.h"

namespace tarncom32::standin {

/// The applications that run in this process, for programs that look for Visio by its class name. It answers to
/// "Visio.Application" and "TarnVisioStandIn.Application", with or without a version behind (".16").
class Host final : public platform::RunningApplications {
public:
    /// `defaults` are what `start` starts an application with.
    explicit Host(ApplicationOptions defaults = {}) : defaults_(std::move(defaults)) {}
    Host(const Host&) = delete;
    Host& operator=(const Host&) = delete;
    /// Quits the applications that still run.
    ~Host() override;

    /// The application that has been running longest. Raises 429 when none runs or the class is another.
    ObjectRef attach(StringView progId) override;
    /// A new application. Raises 429 when the class is another.
    ObjectRef start(StringView progId) override;

    /// A new application, which runs until it quits.
    Ref<Application> startApplication(ApplicationOptions options);
    Ref<Application> startApplication() { return startApplication(defaults_); }
    const std::vector<Ref<Application>>& running() const { return running_; }

private:
    ApplicationOptions defaults_;
    std::vector<Ref<Application>> running_;
};

} // namespace tarncom32::standin
