#pragma once

#include <unistd.h>
#include <utility>

namespace z7sim {

/// Owner of one POSIX file descriptor; closes it at the end of its life. Not shared between threads.
class FileDescriptor
{
public:
    FileDescriptor() = default;
    explicit FileDescriptor(int fd)
        : fd_(fd)
    {
    }
    FileDescriptor(FileDescriptor &&other) noexcept
        : fd_(std::exchange(other.fd_, -1))
    {
    }
    FileDescriptor &operator=(FileDescriptor &&other) noexcept
    {
        std::swap(fd_, other.fd_);
        other.reset();
        return *this;
    }
    ~FileDescriptor() { reset(); }

    void reset()
    {
        if (fd_ >= 0)
            ::close(fd_);
        fd_ = -1;
    }
    bool isValid() const { return fd_ >= 0; }
    int get() const { return fd_; }

private:
    int fd_ = -1;
};

} // namespace z7sim
