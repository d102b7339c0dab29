/* Lets the waits for bytes of a pseudo terminal end as soon as none can come, as if their time had passed. It
 * is linked, and does nothing until z7_skip_silence() says whom to ask.
 *
 * Only a wait for one pseudo terminal alone is shortened: so a serial port is waited for, and nothing else.
 */
#undef _FORTIFY_SOURCE
#define _GNU_SOURCE
#include "linesilence.h"

#include <dlfcn.h>
#include <poll.h>
#include <signal.h>
#include <stdatomic.h>
#include <stddef.h>
#include <stdio.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <time.h>

enum {
    FirstSlaveMajor = 136,
    LastSlaveMajor = 143,
    SlavesOfMajor = 256,
    PathSize = 32,
    NsOfSecond = 1000000000
};

typedef int (*Poll)(struct pollfd *, nfds_t, const struct timespec *, const sigset_t *);

static const struct timespec no_time = {0, 0};
static const long long slice_ns = 1000000;

static _Atomic(z7_line_is_silent) line_is_silent;

void z7_skip_silence(z7_line_is_silent is_silent)
{
    atomic_store(&line_is_silent, is_silent);
}

static int is_slave(int fd, char path[PathSize])
{
    struct stat status;
    if (fstat(fd, &status) != 0 || !S_ISCHR(status.st_mode))
        return 0;
    const unsigned from_first = major(status.st_rdev) - FirstSlaveMajor;
    snprintf(path, PathSize, "/dev/pts/%u", from_first * SlavesOfMajor + minor(status.st_rdev));
    return from_first <= LastSlaveMajor - FirstSlaveMajor;
}

static long long now_ns(void)
{
    struct timespec now;
    clock_gettime(CLOCK_MONOTONIC, &now);
    return now.tv_sec * (long long)NsOfSecond + now.tv_nsec;
}

/* A look at the terminal brings in what has been written to its other end, so none is overlooked between the
 * answer of the line and the second look. */
static int wait_for_bytes(
    Poll real, struct pollfd *fd, long long end_ns, const sigset_t *mask, const char *path)
{
    for (;;) {
        const int ready = real(fd, 1, &no_time, mask);
        const z7_line_is_silent is_silent = atomic_load(&line_is_silent);
        if (ready != 0)
            return ready;
        if (is_silent && is_silent(path))
            return real(fd, 1, &no_time, mask);
        const long long left_ns = end_ns - now_ns();
        if (left_ns <= 0)
            return 0;
        const struct timespec slice = {0, (long)(left_ns < slice_ns ? left_ns : slice_ns)};
        const int come = real(fd, 1, &slice, mask);
        if (come != 0)
            return come;
    }
}

int ppoll(struct pollfd *fds, nfds_t count, const struct timespec *timeout, const sigset_t *mask)
{
    const Poll real = (Poll)dlsym(RTLD_NEXT, "ppoll");
    char path[PathSize];
    if (count != 1 || !timeout || !atomic_load(&line_is_silent) || !is_slave(fds->fd, path))
        return real(fds, count, timeout, mask);
    const long long time_ns = timeout->tv_sec * (long long)NsOfSecond + timeout->tv_nsec;
    return wait_for_bytes(real, fds, now_ns() + time_ns, mask, path);
}
