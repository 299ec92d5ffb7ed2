// Storage that fails, in a process of its own.
#pragma once

#include <chrono>
#include <csignal>
#include <cstddef>
#include <functional>
#include <gtest/gtest.h>
#include <iterator>
#include <linux/capability.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sched.h>
#include <string>
#include <sys/mount.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace Osp::Testing {

/// Runs `body`, assertions and all, in a forked process; what it breaks there stays there.
inline void InOwnProcess(const std::function<void()>& body) {
    const pid_t child = fork();
    if (child == 0) {
        body();
        fflush(nullptr);
        _exit(testing::Test::HasFailure() ? 1 : 0);
    }
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0)
        << "in its own process, which printed why; status " << status;
}

/// Runs `body` with 0 to `count` - 1 in as many forked processes at once.
inline void InProcessesAtOnce(int count, const std::function<void(int)>& body) {
    std::vector<std::thread> waiting;
    for (int i = 0; i < count; ++i) {
        waiting.emplace_back([&body, i] { InOwnProcess([&body, i] { body(i); }); });
    }
    for (std::thread& thread : waiting) thread.join();
}

/// Makes the system call `number` fail with `error`, as on a file system that does not know it, for
/// the rest of this process.
inline void RefuseCall(int number, int error) {
    sock_filter steps[] = {
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, static_cast<unsigned>(number), 0, 1),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | static_cast<unsigned>(error)),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW)};
    const sock_fprog program = {std::size(steps), steps};
    ASSERT_EQ(prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0), 0);
    ASSERT_EQ(prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program), 0);
}

/// Makes `folder` hold `sizeBytes` at most, for the rest of this process. Where no file system can
/// be mounted, it is no single file that may be larger.
inline void LimitSpace(const std::string& folder, long sizeBytes) {
    const std::string options = "mode=0755,size=" + std::to_string(sizeBytes);
    const int spaces = geteuid() == 0 ? CLONE_NEWNS : CLONE_NEWNS | CLONE_NEWUSER;
    if (unshare(spaces) == 0 && mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
        mount("none", folder.c_str(), "tmpfs", 0, options.c_str()) == 0) {
        return;
    }
    signal(SIGXFSZ, SIG_IGN);
    const rlimit limit = {static_cast<rlim_t>(sizeBytes), static_cast<rlim_t>(sizeBytes)};
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &limit), 0);
}

/// Gives up the superuser's way around file modes, for the rest of this process. It stays the same
/// user, who may have built all this where no other one may look.
inline void ObeyFileModes() {
    __user_cap_header_struct header = {_LINUX_CAPABILITY_VERSION_3, 0};
    const __user_cap_data_struct none[2] = {};
    ASSERT_EQ(syscall(SYS_capset, &header, none), 0);
}

/// Runs `body`, which does not end, in a forked process and kills that after `delay`. What the body
/// writes to its argument, a descriptor, is returned.
inline std::string KilledAfter(std::chrono::microseconds delay,
                               const std::function<void(int)>& body) {
    int ends[2];
    if (pipe(ends) != 0) return "";
    const pid_t child = fork();
    if (child == 0) {
        body(ends[1]);
        _exit(1);
    }
    close(ends[1]);
    std::this_thread::sleep_for(delay);
    kill(child, SIGKILL);
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_TRUE(WIFSIGNALED(status)) << "it ended by itself; status " << status;
    std::string written;
    char block[4096];
    for (ssize_t count = 0; (count = read(ends[0], block, sizeof block)) > 0;) {
        written.append(block, static_cast<std::size_t>(count));
    }
    close(ends[0]);
    return written;
}

}  // namespace Osp::Testing
