/* Lets calls of the process fail as a disk does that is full or broken. It is linked, and does nothing until
 * z7_fail_calls() says which call, the how manieth one and how.
 */
#undef _FORTIFY_SOURCE
#define _GNU_SOURCE
#include "failingcalls.h"

#include <dlfcn.h>
#include <errno.h>
#include <stdio.h>
#include <string.h>
#include <unistd.h>

static const char *failing_call;
static int calls_before;
static enum z7_failure how;
static int failures;

void z7_fail_calls(const char *call, int before, enum z7_failure failure)
{
    failing_call = call;
    calls_before = before;
    how = failure;
    failures = 0;
}

int z7_failures(void)
{
    return failures;
}

static int fails(const char *call)
{
    if (!failing_call || strcmp(failing_call, call) != 0 || calls_before-- > 0)
        return 0;
    if (how == Z7_FAILS_ONCE)
        failing_call = NULL;
    ++failures;
    return 1;
}

static int failure(int error)
{
    errno = error;
    return -1;
}

ssize_t write(int file, const void *data, size_t size)
{
    ssize_t (*real)(int, const void *, size_t) = dlsym(RTLD_NEXT, "write");
    if (!fails("write"))
        return real(file, data, size);
    if (how == Z7_FAILS_HALF_WAY && failures == 1 && size > 1)
        return real(file, data, size / 2);
    return failure(ENOSPC);
}

int fsync(int file)
{
    int (*real)(int) = dlsym(RTLD_NEXT, "fsync");
    return fails("fsync") ? failure(EIO) : real(file);
}

int fdatasync(int file)
{
    int (*real)(int) = dlsym(RTLD_NEXT, "fdatasync");
    return fails("fsync") ? failure(EIO) : real(file);
}

int rename(const char *from, const char *to)
{
    int (*real)(const char *, const char *) = dlsym(RTLD_NEXT, "rename");
    return fails("rename") ? failure(EIO) : real(from, to);
}

int renameat2(int from_folder, const char *from, int to_folder, const char *to, unsigned int flags)
{
    int (*real)(int, const char *, int, const char *, unsigned int) = dlsym(RTLD_NEXT, "renameat2");
    return fails("rename") ? failure(EIO) : real(from_folder, from, to_folder, to, flags);
}
