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
        : m_fd(fd)
    {
    }
    FileDescriptor(FileDescriptor &&other) noexcept
        : m_fd(std::exchange(other.m_fd, -1))
    {
    }
    FileDescriptor &operator=(FileDescriptor &&other) noexcept
    {
        std::swap(m_fd, other.m_fd);
        other.reset();
        return *this;
    }
    ~FileDescriptor() { reset(); }

    void reset()
    {
        if (m_fd >= 0)
            ::close(m_fd);
        m_fd = -1;
    }
    bool isValid() const { return m_fd >= 0; }
    int get() const { return m_fd; }

private:
    int m_fd = -1;
};

} // namespace z7sim
