#pragma once

#include "automation/convert.h"
#include "files/file_operations.h"
#include "support/error_of.h"
#include "support/test_platform.h"

#include <functional>
#include <gmock/gmock.h>
#include <map>

namespace tarncom32::files {

using namespace automation;
using tests::errorOf;

/// A foreign object: it answers by name only, and writes down every access.
class NamedObject final : public Object {
public:
    using Arguments = std::span<Variant>;
    using Members = std::map<String, std::function<Variant(Arguments)>>;

    explicit NamedObject(Members members) : members_(std::move(members)) {}
    String typeName() const override { return u"Foreign"; }
    bool hasMember(const MemberName& name) override { return members_.contains(String(name.text())); }
    Variant invoke(const MemberName& name, Access, Arguments arguments, std::uint32_t) override {
        accessed.emplace_back(name.text());
        if (!hasMember(name)) throw Error(errors::NoSuchMember);
        return members_.at(accessed.back())(arguments);
    }
    Variant invokeNamed(const MemberName& name, const MemberName& parameter, Arguments arguments) override {
        named.emplace_back(parameter.text());
        return Object::invokeNamed(name, parameter, arguments);
    }

    std::vector<String> accessed;
    std::vector<String> named; ///< the parameters that were given by name

private:
    Members members_;
};

/// Files that are what the test says.
class FakeFiles final : public platform::NoFiles {
public:
    ObjectRef create() override {
        ++created;
        return object ? object : NoFiles::create();
    }
    std::uint32_t attributes(StringView) override { return attributeWord; }
    void openExclusively(StringView) override {
        if (openError != 0) throw Error(openError);
    }
    String special(std::int32_t number) override { return number == 5 ? specialFolder : String(); }
    String ownFolder() override { return u"C:\\Library"; }
    platform::SystemVersion version() const override { return systemVersion; }
    std::size_t shortPath(const std::string& path, std::span<char> buffer) override { return convert(path, buffer); }
    std::size_t shortPath(const String& path, std::span<char16_t> buffer) override { return convert(path, buffer); }
    std::size_t longPath(const std::string& path, std::span<char> buffer) override { return convert(path, buffer); }
    std::size_t longPath(const String& path, std::span<char16_t> buffer) override { return convert(path, buffer); }
    std::optional<std::string> findFirst(const std::string& path) override {
        failIfToldTo();
        searched.push_back(path);
        return stored.contains(path) ? std::optional(stored.at(path)) : std::nullopt;
    }
    platform::FileDialogAnswer showOpen(const platform::FileDialogRequest& request) override {
        requests.push_back(request);
        return answer;
    }
    platform::FileDialogAnswer showSave(const platform::FileDialogRequest& request) override {
        saved = true;
        return showOpen(request);
    }

    ObjectRef object; ///< what `create` makes
    int created = 0;
    std::uint32_t attributeWord = platform::file_attribute::kNone;
    std::int32_t openError = 0;
    std::int32_t callError = 0; ///< of every call about a path's form
    String specialFolder;
    platform::SystemVersion systemVersion{10, 0};
    std::string form;                          ///< what every conversion gives; empty: it fails
    std::vector<std::string> converted;        ///< "8" or "16", the capacity and the path of each conversion
    std::map<std::string, std::string> stored; ///< directory entries by the path that finds them
    std::vector<std::string> searched;
    platform::FileDialogAnswer answer;
    std::vector<platform::FileDialogRequest> requests;
    bool saved = false;

private:
    void failIfToldTo() const {
        if (callError != 0) throw Error(callError);
    }
    template <class Text, class Char>
    std::size_t convert(const Text& path, std::span<Char> buffer) {
        failIfToldTo();
        const std::string start = (sizeof(Char) == 1 ? "8 " : "16 ") + std::to_string(buffer.size()) + " ";
        if constexpr (sizeof(Char) == 1)
            converted.push_back(start + path);
        else
            converted.push_back(start + toUtf8(path));
        if (form.size() >= buffer.size()) return form.size() + 1;
        std::ranges::copy(form, buffer.begin());
        return form.size();
    }
};

/// A test of an object of this folder over such files.
class FilesTest : public testing::Test {
protected:
    tests::PlatformWith<FakeFiles> fakes_;
    FakeFiles& files_ = fakes_.files;
    Ref<FileOperations> operations_ = make<FileOperations>(fakes_.platform);
    std::vector<std::string> reports() const { return fakes_.messageBox.headings(); }
};

} // namespace tarncom32::files
