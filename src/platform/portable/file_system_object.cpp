#include "platform/portable/file_system_object.h"

#include "platform/portable/component_names.h"
#include "platform/portable/file_error.h"
#include "platform/portable/user_folders.h"

#include <cerrno>
#include <fcntl.h>
#include <random>
#include <sys/stat.h>

namespace tarncom32::platform::portable {

using automation::Boolean;
using automation::ClassInfo;
using automation::Error;
using automation::in;
using automation::optional;
using automation::Ref;
using automation::String;
using automation::StringView;
using automation::operator""_guid;
namespace member = automation::member;
namespace errors = automation::errors;

const ClassInfo& Folder::describe() {
    static const ClassInfo info(kClassName, u"A folder.", {}, "f0492bc7-790b-47b7-bec1-3c0dc59897be"_guid,
                                {
                                    member::get<&Folder::path>(automation::kDispidValue, u"Path", {}, u"Its path."),
                                });
    return info;
}

const ClassInfo& FileSystemObject::describe() {
    using F = FileSystemObject;
    static const ClassInfo info(
        kClassName, u"Names and text files.", {}, "d5176494-3cf6-4bcc-968b-d1e7a1d7f00d"_guid,
        {
            member::method<&F::getExtensionName>(1, u"GetExtensionName", {in(u"Path")},
                                                 u"The extension of the last component, without its dot."),
            member::method<&F::getFileName>(2, u"GetFileName", {in(u"Path")}, u"The last component."),
            member::method<&F::getSpecialFolder>(3, u"GetSpecialFolder", {in(u"SpecialFolder")},
                                                 u"The folder of temporary files, for 2."),
            member::method<&F::getTempName>(4, u"GetTempName", {}, u"A name for a temporary file."),
            member::method<&F::createTextFile>(5, u"CreateTextFile",
                                               {in(u"FileName"), optional(in(u"Overwrite"), Boolean(true))},
                                               u"Creates a text file, or empties it."),
        });
    return info;
}

String FileSystemObject::getExtensionName(StringView Path) {
    return String(extensionOf(Path));
}

String FileSystemObject::getFileName(StringView Path) {
    return String(lastComponent(Path));
}

Ref<Folder> FileSystemObject::getSpecialFolder(std::int32_t SpecialFolder) {
    if (SpecialFolder != 2) throw Error(errors::InvalidProcedureCall);
    String path = drives_.toAutomation(temporaryFolder());
    if (path.size() > 3 && path.back() == u'\\') path.pop_back();
    return automation::make<Folder>(std::move(path));
}

String FileSystemObject::getTempName() {
    static constexpr StringView kDigits = u"0123456789ABCDEF";
    thread_local std::minstd_rand random(std::random_device{}());
    String name = u"rad";
    for (int i = 0; i < 5; ++i)
        name.push_back(kDigits[std::uniform_int_distribution<std::size_t>(0, 15)(random)]);
    return name + u".tmp";
}

Ref<TextStream> FileSystemObject::createTextFile(StringView FileName, Boolean Overwrite) {
    const auto native = drives_.toNative(FileName);
    if (!native) throw Error(FileName.empty() ? errors::InvalidProcedureCall : errors::PathNotFound);
    const int flags = O_WRONLY | O_CREAT | O_CLOEXEC | O_NOCTTY | (Overwrite.isNonZero() ? O_TRUNC : O_EXCL);
    FileDescriptor file(open(native->c_str(), flags, S_IRUSR | S_IWUSR | S_IRGRP | S_IWGRP | S_IROTH | S_IWOTH));
    if (!file.isOpen()) throw fileError(errno, *native);
    return automation::make<TextStream>(std::move(file), *native, codePage_);
}

} // namespace tarncom32::platform::portable
