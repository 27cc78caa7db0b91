#include "platform/portable/file_error.h"

#include <cerrno>

namespace tarncom32::platform::portable {

namespace errors = automation::errors;

namespace {

std::int32_t errorNumber(int code, const std::filesystem::path& path) {
    std::error_code ignored;
    switch (code) {
    case ENOENT:
        return path.has_parent_path() && !std::filesystem::is_directory(path.parent_path(), ignored)
                   ? errors::PathNotFound
                   : errors::FileNotFound;
    case ENOTDIR:
        return errors::PathNotFound;
    case EEXIST:
        return errors::FileAlreadyExists;
    case EACCES:
    case EPERM:
    case EROFS:
    case EISDIR:
    case EBUSY:
    case ETXTBSY:
    case EAGAIN:
        return errors::PermissionDenied;
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
        return errors::DiskFull;
    case ENAMETOOLONG:
    case EINVAL:
    case ELOOP:
        return errors::BadFileName;
    case ENOMEM:
        return errors::OutOfMemory;
    default:
        return errors::DeviceIo;
    }
}

} // namespace

automation::Error fileError(int code, const std::filesystem::path& path) {
    return automation::Error(errorNumber(code, path));
}

} // namespace tarncom32::platform::portable
