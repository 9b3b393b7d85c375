#pragma once

#include <array>
#include <cerrno>
#include <cstddef>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <system_error>
#include <thread>

namespace TestSupport {

/// Runs `call`, which must not throw, in a thread of its own that such a program watches.
template <std::size_t Size, typename Call>
void WatchedBy(std::array<sock_filter, Size> program, Call&& call) {
    const sock_fprog filter{program.size(), program.data()};
    int refusal = 0;
    std::thread([&] {
        if (prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0 ||
            prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &filter) != 0) {
            refusal = errno;
            return;
        }
        call();
    }).join();
    if (refusal != 0) {
        throw std::system_error(refusal, std::generic_category(), "seccomp");
    }
}

/// Runs `call`, which must not throw, while the system refuses one of its services with an errno
/// number. The refusal lasts as long as the thread that asked for it, which is none of the test's.
template <typename Call>
void WithFailing(long systemCall, int error, Call&& call) {
    WatchedBy(
        std::array<sock_filter, 4>{
            sock_filter BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
            sock_filter BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, static_cast<unsigned>(systemCall), 0,
                                 1),
            sock_filter BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | static_cast<unsigned>(error)),
            sock_filter BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW)},
        call);
}

/// The same, with one request to a device refused.
template <typename Call>
void WithFailingRequest(unsigned request, int error, Call&& call) {
    WatchedBy(
        std::array<sock_filter, 6>{
            sock_filter BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
            sock_filter BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_ioctl, 0, 3),
            sock_filter BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, args[1])),
            sock_filter BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, request, 0, 1),
            sock_filter BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | static_cast<unsigned>(error)),
            sock_filter BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW)},
        call);
}

} // namespace TestSupport
