#include "platform/portable/text_stream.h"

#include "platform/portable/file_error.h"

#include <cerrno>

namespace tarncom32::platform::portable {

using automation::ClassInfo;
using automation::Error;
using automation::in;
using automation::StringView;
using automation::operator""_guid;
namespace member = automation::member;

const ClassInfo& TextStream::describe() {
    static const ClassInfo info(
        kClassName, u"A text file that is being written.", {}, "fb46de25-d500-479d-982e-c7de7a9da777"_guid,
        {
            member::method<&TextStream::write>(1, u"Write", {in(u"Text")}, u"Appends the text."),
            member::method<&TextStream::close>(2, u"Close", {}, u"Closes the file."),
        });
    return info;
}

void TextStream::write(StringView Text) {
    if (!file_.isOpen()) throw Error(automation::errors::BadFileName);
    const std::string bytes = codePage_.encode(Text);
    for (std::size_t done = 0; done < bytes.size();) {
        const ssize_t written = ::write(file_.get(), bytes.data() + done, bytes.size() - done);
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) throw fileError(errno, path_);
        done += static_cast<std::size_t>(written);
    }
}

void TextStream::close() {
    // The descriptor is gone after an interrupted close as well.
    if (file_.close() != 0 && errno != EINTR) throw fileError(errno, path_);
}

} // namespace tarncom32::platform::portable
