#pragma once

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <functional>
#include <stdexcept>
#include <string>

/// Conditions that a test can only meet in a process of its own.
namespace kelvo::test {

/// Runs `work` in a child process and returns what it answers; "CHILD FAILED" and why where the
/// child did not end by itself.
inline std::string inChild(const std::function<std::string()>& work) {
    int ends[2] = {-1, -1};
    if (::pipe(ends) != 0) throw std::runtime_error("pipe");
    const pid_t child = ::fork();
    if (child < 0) throw std::runtime_error("fork");
    if (child == 0) {
        ::close(ends[0]);
        const std::string answer = work();
        const bool told =
            ::write(ends[1], answer.data(), answer.size()) == static_cast<ssize_t>(answer.size());
        ::_exit(told ? 0 : 1);
    }
    ::close(ends[1]);
    std::string answer;
    char piece[512];
    for (ssize_t got = 0; (got = ::read(ends[0], piece, sizeof piece)) > 0;) {
        answer.append(piece, static_cast<std::size_t>(got));
    }
    ::close(ends[0]);
    int status = 0;
    ::waitpid(child, &status, 0);
    if (status != 0) return "CHILD FAILED with status " + std::to_string(status);
    return answer;
}

/// Lets every later write of this process that goes beyond `bytes` in a file fail, as on a disk
/// that is full.
inline void limitFilesTo(rlim_t bytes) {
    ::signal(SIGXFSZ, SIG_IGN);
    const rlimit limit{bytes, bytes};
    if (::setrlimit(RLIMIT_FSIZE, &limit) != 0) throw std::runtime_error("setrlimit");
}

/// Gives up root's rights in this process, so that permission bits bind.
inline void becomeNobody() {
    constexpr uid_t nobody = 65534;
    if (::geteuid() == 0 && (::setgid(nobody) != 0 || ::setuid(nobody) != 0)) {
        throw std::runtime_error("setuid");
    }
}

} // namespace kelvo::test
