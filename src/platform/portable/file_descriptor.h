#pragma once

#include <unistd.h>
#include <utility>

namespace tarncom32::platform::portable {

/// An open file of the system, closed at the end of its life.
class FileDescriptor {
public:
    FileDescriptor() noexcept = default;
    explicit FileDescriptor(int descriptor) noexcept : descriptor_(descriptor) {}
    FileDescriptor(FileDescriptor&& other) noexcept : descriptor_(std::exchange(other.descriptor_, -1)) {}
    FileDescriptor& operator=(FileDescriptor&& other) noexcept {
        std::swap(descriptor_, other.descriptor_);
        return *this;
    }
    ~FileDescriptor() { close(); }

    int get() const noexcept { return descriptor_; }
    bool isOpen() const noexcept { return descriptor_ >= 0; }
    /// 0, or -1 with the reason in errno; a file that is not open closes well.
    int close() noexcept { return isOpen() ? ::close(std::exchange(descriptor_, -1)) : 0; }

private:
    int descriptor_ = -1;
};

} // namespace tarncom32::platform::portable
