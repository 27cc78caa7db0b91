#pragma once

#include "automation/members.h"
#include "platform/code_page.h"
#include "platform/portable/file_descriptor.h"

#include <filesystem>

namespace tarncom32::platform::portable {

/// A text file that is being written, in the 8-bit code page. Writing and closing raise 61 when the disk is full, 57
/// when the file cannot be written otherwise.
class TextStream final : public automation::Described<TextStream> {
public:
    static constexpr automation::StringView kClassName = u"TextStream";
    static const automation::ClassInfo& describe();

    TextStream(FileDescriptor file, std::filesystem::path path, const CodePage& codePage)
        : file_(std::move(file)), path_(std::move(path)), codePage_(codePage) {}

    /// Appends the text as it is; characters that the code page lacks become "?". Raises 52 once the stream is closed.
    void write(automation::StringView Text);
    /// Ends the writing; a stream that is closed already stays so.
    void close();

private:
    FileDescriptor file_;
    std::filesystem::path path_;
    const CodePage& codePage_;
};

} // namespace tarncom32::platform::portable
