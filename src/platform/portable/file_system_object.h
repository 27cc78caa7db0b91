#pragma once

#include "automation/members.h"
#include "platform/code_page.h"
#include "platform/file_system_objects.h"
#include "platform/portable/drive_map.h"
#include "platform/portable/text_stream.h"

namespace tarncom32::platform::portable {

/// A folder, as `GetSpecialFolder` gives it.
class Folder final : public automation::Described<Folder> {
public:
    static constexpr automation::StringView kClassName = u"Folder";
    static const automation::ClassInfo& describe();

    explicit Folder(automation::String path) : path_(std::move(path)) {}
    /// Without a separator at the end, a drive's root excepted.
    automation::String path() { return path_; }

private:
    automation::String path_;
};

/// The scripting file-system object, as far as this library uses it. Failures have the host's numbers.
class FileSystemObject final : public automation::Described<FileSystemObject> {
public:
    static constexpr automation::StringView kClassName = u"FileSystemObject";
    static const automation::ClassInfo& describe();

    /// Both arguments must outlive the object and the streams that it makes.
    FileSystemObject(const DriveMap& drives, const CodePage& codePage) : drives_(drives), codePage_(codePage) {}

    /// What follows the last "." of the last component; empty when there is none.
    automation::String getExtensionName(automation::StringView Path);
    /// The last component.
    automation::String getFileName(automation::StringView Path);
    /// For 2 the folder of temporary files. Raises 5 for every other number: Windows' own folders are not here.
    automation::Ref<Folder> getSpecialFolder(std::int32_t SpecialFolder);
    /// "rad", five hexadecimal digits by chance and ".tmp". No file is made or looked for.
    automation::String getTempName();
    /// Creates the file, or empties it. Raises 58 when it exists and `Overwrite` is false (0), 76 for a folder that
    /// does not exist, 70 where writing is not allowed.
    automation::Ref<TextStream> createTextFile(automation::StringView FileName, automation::Boolean Overwrite);

private:
    const DriveMap& drives_;
    const CodePage& codePage_;
};

/// Makes those objects.
class PortableFileSystemObjects final : public FileSystemObjects {
public:
    PortableFileSystemObjects(const DriveMap& drives, const CodePage& codePage)
        : drives_(drives), codePage_(codePage) {}
    automation::ObjectRef create() override { return automation::make<FileSystemObject>(drives_, codePage_); }

private:
    const DriveMap& drives_;
    const CodePage& codePage_;
};

} // namespace tarncom32::platform::portable
