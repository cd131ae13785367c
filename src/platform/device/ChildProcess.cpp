#include "platform/device/ChildProcess.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <utility>

namespace kelvo::device {
namespace {

using Clock = std::chrono::steady_clock;

/// How long a killed child is waited for; longer only when the kernel cannot let it go.
constexpr std::chrono::milliseconds patienceWithKilled{500};

class Descriptor {
public:
    explicit Descriptor(int number = -1) : number_(number) {}
    ~Descriptor() { close(); }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    int number() const { return number_; }
    void close() {
        if (number_ >= 0) ::close(std::exchange(number_, -1));
    }

private:
    int number_;
};

/// The header that declares this lacks C linkage in the C library of Debian 12.
int openHandle(pid_t process) {
    return static_cast<int>(::syscall(SYS_pidfd_open, process, 0));
}

int millisecondsUntil(Deadline deadline) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now());
    return static_cast<int>(std::clamp<std::int64_t>(left.count(), 0, 60'000));
}

std::vector<char*> pointersTo(std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    pointers.reserve(texts.size() + 1);
    for (std::string& text : texts)
        pointers.push_back(text.data());
    pointers.push_back(nullptr);
    return pointers;
}

/// Starts the child in a process group of its own, with `output` as its standard output and the
/// signals as a fresh program expects them.
std::optional<pid_t> spawn(const std::string& path, const std::vector<std::string>& arguments,
                           std::vector<std::string>& environment, int output) {
    posix_spawn_file_actions_t actions;
    posix_spawnattr_t attributes;
    ::posix_spawn_file_actions_init(&actions);
    ::posix_spawnattr_init(&attributes);
    ::posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    ::posix_spawn_file_actions_adddup2(&actions, output, STDOUT_FILENO);
    ::posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    ::posix_spawn_file_actions_addclosefrom_np(&actions, STDERR_FILENO + 1);
    sigset_t none;
    sigset_t all;
    ::sigemptyset(&none);
    ::sigfillset(&all);
    ::posix_spawnattr_setsigmask(&attributes, &none);
    ::posix_spawnattr_setsigdefault(&attributes, &all);
    ::posix_spawnattr_setpgroup(&attributes, 0);
    ::posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF |
                                                POSIX_SPAWN_SETPGROUP);
    std::vector<std::string> words = {path};
    words.insert(words.end(), arguments.begin(), arguments.end());
    pid_t child = -1;
    const int code = ::posix_spawn(&child, path.c_str(), &actions, &attributes,
                                   pointersTo(words).data(), pointersTo(environment).data());
    ::posix_spawnattr_destroy(&attributes);
    ::posix_spawn_file_actions_destroy(&actions);
    if (code != 0) return std::nullopt;
    return child;
}

enum class Piece { some, end, nothingNow };

Piece readPiece(int from, std::string& into) {
    std::array<char, 16384> buffer{};
    while (true) {
        const ssize_t got = ::read(from, buffer.data(), buffer.size());
        if (got > 0) {
            into.append(buffer.data(), static_cast<std::size_t>(got));
            return Piece::some;
        }
        if (got == 0) return Piece::end;
        if (errno == EAGAIN) return Piece::nothingNow;
        if (errno != EINTR) return Piece::end;
    }
}

/// Gathers output until the child has ended and nothing more is in the pipe. A process that the
/// child leaves behind may hold the pipe open; it is not waited for.
std::optional<std::string> gather(int pipe, int child, Deadline deadline) {
    std::string output;
    bool open = true;
    while (output.size() <= ChildProcess::maxOutput) {
        std::array<pollfd, 2> watched{{{child, POLLIN, 0}, {open ? pipe : -1, POLLIN, 0}}};
        const int ready = ::poll(watched.data(), watched.size(), millisecondsUntil(deadline));
        if (ready < 0 && errno != EINTR) return std::nullopt;
        const bool ended = ready > 0 && watched[0].revents != 0;
        bool more = open && ready > 0 && (ended || watched[1].revents != 0);
        while (more && output.size() <= ChildProcess::maxOutput) {
            const Piece piece = readPiece(pipe, output);
            if (piece == Piece::end) open = false;
            more = ended && piece == Piece::some;
        }
        if (output.size() > ChildProcess::maxOutput) break;
        if (ended) return output;
        if (Clock::now() >= deadline) return std::nullopt;
    }
    return std::nullopt;
}

/// Waits for a child without ever blocking beyond `deadline`. True when it is gone.
bool collect(pid_t child, int handle, Deadline deadline) {
    while (true) {
        const pid_t gone = ::waitpid(child, nullptr, WNOHANG);
        if (gone == child || (gone < 0 && errno == ECHILD)) return true;
        if (Clock::now() >= deadline) return false;
        pollfd watched{handle, POLLIN, 0};
        ::poll(&watched, 1, millisecondsUntil(deadline));
    }
}

} // namespace

ChildProcess::ChildProcess(const Environment& environment) {
    for (const auto& [name, value] : environment)
        environment_.emplace_back(name).append("=").append(value);
}

ChildProcess::~ChildProcess() {
    reapStragglers();
}

std::optional<std::string> ChildProcess::run(const std::string& path,
                                             const std::vector<std::string>& arguments,
                                             Deadline deadline) {
    reapStragglers();
    if (Clock::now() >= deadline) return std::nullopt;
    std::array<int, 2> ends{-1, -1};
    if (::pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK) != 0) return std::nullopt;
    const Descriptor reading(ends[0]);
    Descriptor writing(ends[1]);
    // Only our end must not block; a tool that meets a full pipe waits as it would on a terminal.
    ::fcntl(writing.number(), F_SETFL, 0);
    const auto child = spawn(path, arguments, environment_, writing.number());
    writing.close();
    if (!child) return std::nullopt;
    const Descriptor handle(openHandle(*child));
    std::optional<std::string> output;
    if (handle.number() >= 0) output = gather(reading.number(), handle.number(), deadline);
    reap(*child, handle.number());
    return output;
}

void ChildProcess::reap(pid_t child, int childHandle) {
    // Before the child is waited for: until then its number, which names the group, stays its own.
    ::kill(-child, SIGKILL);
    ::kill(child, SIGKILL);
    if (!collect(child, childHandle, Clock::now() + patienceWithKilled))
        stragglers_.push_back(child);
}

void ChildProcess::reapStragglers() {
    std::erase_if(stragglers_,
                  [](pid_t child) { return collect(child, -1, Clock::time_point::min()); });
}

} // namespace kelvo::device
