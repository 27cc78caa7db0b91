#include "platform/portable/portable_file_status.h"

#include "platform/portable/file_descriptor.h"
#include "platform/portable/file_error.h"

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

namespace tarncom32::platform::portable {

using automation::Error;
using automation::StringView;
namespace errors = automation::errors;

namespace {

bool isLockedByAnother(int descriptor) {
    if (flock(descriptor, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK) return true;
    struct flock wanted {};
    wanted.l_type = F_WRLCK;
    wanted.l_whence = SEEK_SET;
    return fcntl(descriptor, F_GETLK, &wanted) == 0 && wanted.l_type != F_UNLCK;
}

// A write lease is given only for a file that nobody else has open.
bool isOpenElsewhere(int descriptor) {
#ifdef F_SETLEASE
    // Whoever opens the file while the lease lasts sets off a signal: one that processes ignore unless they ask for it.
    if (fcntl(descriptor, F_SETSIG, SIGURG) != 0) return false;
    if (fcntl(descriptor, F_SETLEASE, F_WRLCK) != 0) return errno == EAGAIN;
    fcntl(descriptor, F_SETLEASE, F_UNLCK);
#else
    static_cast<void>(descriptor);
#endif
    return false;
}

} // namespace

std::uint32_t PortableFileStatus::attributes(StringView path) {
    const auto native = drives_.toNative(path);
    struct stat status {};
    if (!native || stat(native->c_str(), &status) != 0) return file_attribute::kNone;
    std::uint32_t word = 0;
    if ((status.st_mode & S_IWUSR) == 0) word |= file_attribute::kReadOnly;
    if (S_ISDIR(status.st_mode)) word |= file_attribute::kDirectory;
    return word == 0 ? file_attribute::kNormal : word;
}

void PortableFileStatus::openExclusively(StringView path) {
    const auto native = drives_.toNative(path);
    if (!native) throw Error(path.empty() ? errors::PathFileAccess : errors::PathNotFound);
    // Without waiting for the other end of a pipe.
    const FileDescriptor file(open(native->c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    if (!file.isOpen()) throw fileError(errno, *native);
    struct stat status {};
    if (fstat(file.get(), &status) != 0) throw fileError(errno, *native);
    if (S_ISDIR(status.st_mode)) throw Error(errors::PathFileAccess);
    if (isLockedByAnother(file.get()) || isOpenElsewhere(file.get())) throw Error(errors::PermissionDenied);
}

} // namespace tarncom32::platform::portable
