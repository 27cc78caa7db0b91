#pragma once

#include "automation/members.h"
#include "standin/drawing/limits.h"
#include "standin/forward.h"

#include <filesystem>
#include <functional>

namespace tarncom32::standin {

/// What an application is started with.
struct ApplicationOptions {
    String version = u"16.0"; ///< what `Version` gives
    drawing::Limits limits{}; ///< what a file may ask for
    /// Where a file of that name is. Left empty: paths of this system, and those that begin with Z:\ and have
    /// backslashes, where Z:\ is the root.
    std::function<std::filesystem::path(StringView fileName)> locate{};
};

/// Visio itself. It holds its open documents; they end when it quits or when the last reference to it goes.
class Application final : public automation::Described<Application> {
public:
    static constexpr StringView kClassName = u"Application";
    static const automation::ClassInfo& describe();

    explicit Application(ApplicationOptions options = {});

    /// The document that was opened, added or asked for last; Nothing when none is open.
    Ref<Document> activeDocument();
    Ref<Application> application() { return Ref<Application>(this); }
    /// The open documents. Raises "Inappropriate source object" once the application has quit, as all members do that
    /// need documents.
    Ref<Documents> documents();
    /// "Microsoft Visio".
    String name() { return u"Microsoft Visio"; }
    /// 3.
    std::int16_t objectType() { return 3; }
    /// Closes all documents without asking and ends the application.
    void quit();
    /// As started, "16.0" unless told otherwise.
    String version() { return options_.version; }

    const ApplicationOptions& options() const { return options_; }
    /// The open documents in order; their positions count from 0 here.
    const std::vector<Ref<Document>>& openDocuments() const { return documents_; }
    /// Opens a file, or finds it open already. Raises when it is not there or no drawing; nothing is opened then.
    Ref<Document> open(StringView fileName);
    /// A new document: blank for "", "vsd", "vst" and "vss", else a copy of the file.
    Ref<Document> add(StringView fileName);
    /// Takes a closed document off the list.
    void forget(Document& document);

    /// Called once, when the application quits.
    std::function<void()> onQuit;

private:
    ~Application() override;
    /// The whole path of a file.
    std::filesystem::path locate(StringView fileName) const;
    Ref<Document> keep(Ref<Document> document);
    void requireRunning() const;
    void closeAll();

    ApplicationOptions options_;
    std::vector<Ref<Document>> documents_;
    std::int32_t lastDocumentId_ = 0;
    int drawingsAdded_ = 0;
    int stencilsAdded_ = 0;
    bool hasQuit_ = false;
};

/// Starts an application that nobody can attach to; it lives as long as references to it.
Ref<Application> startApplication(ApplicationOptions options = {});

} // namespace tarncom32::standin
