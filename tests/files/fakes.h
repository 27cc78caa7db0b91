#pragma once

#include "automation/member_name.h"
#include "automation/variant.h"
#include "platform/no_files.h"
#include "support/test_platform.h"

#include <functional>
#include <map>
#include <vector>

namespace tarncom32::files {

/// A foreign object: it answers by name only, and writes down every access.
class NamedObject final : public automation::Object {
public:
    using Arguments = std::span<automation::Variant>;
    using Member = std::function<automation::Variant(Arguments)>;

    explicit NamedObject(std::map<automation::String, Member> members) : members_(std::move(members)) {}
    automation::String typeName() const override { return u"Foreign"; }
    bool hasMember(const automation::MemberName& name) override {
        return members_.contains(automation::String(name.text()));
    }
    automation::Variant invoke(const automation::MemberName& name, automation::Access, Arguments arguments,
                               std::uint32_t) override {
        accessed.emplace_back(name.text());
        const auto member = members_.find(automation::String(name.text()));
        if (member == members_.end()) throw automation::Error(automation::errors::NoSuchMember);
        return member->second(arguments);
    }

    automation::Variant invokeNamed(const automation::MemberName& name, const automation::MemberName& parameter,
                                    Arguments arguments) override {
        named.emplace_back(parameter.text());
        return Object::invokeNamed(name, parameter, arguments);
    }

    std::vector<automation::String> accessed;
    std::vector<automation::String> named; ///< the parameters that were given by name

private:
    std::map<automation::String, Member> members_;
};

/// Surroundings whose files are what the test says.
class FakeFiles final : public platform::NoFiles {
public:
    automation::ObjectRef create() override {
        ++created;
        return object ? object : NoFiles::create();
    }
    std::uint32_t attributes(automation::StringView) override { return attributeWord; }
    void openExclusively(automation::StringView) override {
        if (openError != 0) throw automation::Error(openError);
    }
    automation::String special(std::int32_t number) override {
        return number == 5 ? specialFolder : automation::String();
    }
    automation::String ownFolder() override { return u"C:\\Library"; }
    platform::SystemVersion version() const override { return systemVersion; }
    std::size_t shortPath(const std::string& path, std::span<char> buffer) override { return convert(path, buffer); }
    std::size_t shortPath(const automation::String& path, std::span<char16_t> buffer) override {
        return convert(path, buffer);
    }
    std::size_t longPath(const std::string& path, std::span<char> buffer) override { return convert(path, buffer); }
    std::size_t longPath(const automation::String& path, std::span<char16_t> buffer) override {
        return convert(path, buffer);
    }
    std::optional<std::string> findFirst(const std::string& path) override {
        searched.push_back(path);
        const auto found = stored.find(path);
        return found == stored.end() ? std::nullopt : std::optional(found->second);
    }
    platform::FileDialogAnswer showOpen(const platform::FileDialogRequest& request) override {
        requests.push_back(request);
        return answer;
    }
    platform::FileDialogAnswer showSave(const platform::FileDialogRequest& request) override {
        saved = true;
        return showOpen(request);
    }

    automation::ObjectRef object; ///< what `create` makes
    int created = 0;
    std::uint32_t attributeWord = platform::file_attribute::kNone;
    std::int32_t openError = 0;
    automation::String specialFolder;
    platform::SystemVersion systemVersion{10, 0};
    std::string form;                          ///< what every conversion gives; empty: it fails
    std::vector<std::string> converted;        ///< "8" or "16", the capacity and the path of each conversion
    std::map<std::string, std::string> stored; ///< directory entries by the path that finds them
    std::vector<std::string> searched;
    platform::FileDialogAnswer answer;
    std::vector<platform::FileDialogRequest> requests;
    bool saved = false;

private:
    template <class Text, class Char>
    std::size_t convert(const Text& path, std::span<Char> buffer) {
        if constexpr (sizeof(Char) == 1)
            converted.push_back("8 " + std::to_string(buffer.size()) + " " + path);
        else
            converted.push_back("16 " + std::to_string(buffer.size()) + " " + automation::toUtf8(path));
        if (form.size() >= buffer.size()) return form.size() + 1;
        for (std::size_t i = 0; i < form.size(); ++i)
            buffer[i] = static_cast<Char>(form[i]);
        return form.size();
    }
};

struct FakePlatform {
    tests::RecordingMessageBox messageBox;
    platform::NoApplications applications;
    platform::portable::Windows1252 codePage;
    tests::TestRegistry registry;
    FakeFiles files;
    platform::Platform platform{messageBox, applications, codePage, registry, files.ports()};
};

} // namespace tarncom32::files
