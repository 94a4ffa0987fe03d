/*
 * Loaded into emulated programs. Qt asks waitid() whether a process can be started with a pidfd. The emulator hands
 * that question to a kernel that can, but starts no such process itself; so the answer is no here, and Qt takes its
 * other way.
 */

#include <dlfcn.h>
#include <sys/syscall.h>
#include <sys/wait.h>

#include <cerrno>
#include <cstdarg>

extern "C" __attribute__((visibility("default"))) long syscall(long number, ...)
{
    static const auto real = reinterpret_cast<long (*)(long, ...)>(dlsym(RTLD_NEXT, "syscall"));
    long arguments[6];
    va_list list;
    va_start(list, number);
    for (long &argument : arguments) {
        argument = va_arg(list, long);
    }
    va_end(list);
    if (number == SYS_waitid && arguments[0] == P_PIDFD) {
        errno = EINVAL;
        return -1;
    }
    return real(number, arguments[0], arguments[1], arguments[2], arguments[3], arguments[4], arguments[5]);
}
