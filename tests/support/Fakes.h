#pragma once

#include "ports/OtherPrograms.h"
#include "ports/Ports.h"

#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

/// Scripted doubles of the ports. Those that ask the person something call `whileAsking` before
/// they answer, where a test lets happen what a live event loop would.
namespace kelvo::test {

class FakeClock : public Clock {
public:
    TimePoint now() const override { return std::exchange(moment, moment + step); }
    mutable TimePoint moment = TimePoint(std::chrono::seconds(1769850902)); // 2026-01-31T09:15:02Z
    std::chrono::seconds step{0}; ///< how far it runs on when it is read
};

class FakeTicker : public Ticker {
public:
    void start(std::function<void()> tick) override {
        ++starts;
        tick_ = std::move(tick);
    }
    void stop() override { tick_ = nullptr; }

    bool active() const { return static_cast<bool>(tick_); }

    /// Fires up to `count` times; stops early where a tick stops the ticker.
    int fire(int count = 1) {
        int fired = 0;
        for (; fired < count && tick_; ++fired) {
            const auto tick = tick_; // the tick may stop the ticker and with it destroy itself
            tick();
        }
        return fired;
    }
    /// A firing that was already under way when the ticker stopped.
    std::function<void()> straggler() const { return tick_; }

    int starts = 0;

private:
    std::function<void()> tick_;
};

class FakeEventLoop : public EventLoop {
public:
    void post(std::function<void()> work) override { posted_.push_back(std::move(work)); }
    void processPending() override {
        ++passes;
        if (duringPass) duringPass();
    }

    /// Runs what was posted, also what that posts in turn.
    void drain() {
        while (!posted_.empty()) {
            const auto work = std::move(posted_.front());
            posted_.pop_front();
            work();
        }
    }

    int passes = 0;
    std::function<void()> duringPass;

private:
    std::deque<std::function<void()>> posted_;
};

/// Work beside the engine's thread is done in one go with what it leads to, by the event loop.
class FakeBackground : public Background {
public:
    explicit FakeBackground(FakeEventLoop& loop) : loop_(loop) {}
    void run(std::function<void()> work, std::function<void()> done) override {
        loop_.post([work = std::move(work), done = std::move(done)] {
            work();
            done();
        });
    }

private:
    FakeEventLoop& loop_;
};

class FakePrograms : public OtherPrograms {
public:
    bool open(const std::filesystem::path& path) override {
        opened.push_back(path);
        return present;
    }
    bool compose(const std::string& mailto) override {
        messages.push_back(mailto);
        return present;
    }
    bool print(const std::string&, const std::filesystem::path& pdf) override {
        printed.push_back(pdf);
        return present;
    }
    std::vector<SigningKey> signingKeys() override { return keys; }
    void sign(const SigningKey&, std::string_view, const std::string& text,
              std::function<void(std::optional<std::string>)> done) override {
        toSign = text;
        signedWith = std::move(done);
    }

    bool present = true;
    std::vector<std::filesystem::path> opened;
    std::vector<std::string> messages;
    std::vector<std::filesystem::path> printed;
    std::vector<SigningKey> keys;
    std::string toSign;
    std::function<void(std::optional<std::string>)> signedWith;
};

class FakeAccount : public Account {
public:
    std::string fullName() const override { return name; }
    std::string name = "Ada Byron";
};

class FakeAuthentication : public OwnerAuthentication {
public:
    std::optional<std::string> unavailableReason() override { return unavailable; }
    bool evaluate(const std::string& reason) override {
        reasons.push_back(reason);
        if (onAsk) onAsk(reason);
        if (whileAsking) whileAsking();
        return answer;
    }
    Biometry biometry() override { return kind; }

    std::optional<std::string> unavailable;
    bool answer = true;
    Biometry kind = Biometry::fingerprint;
    std::vector<std::string> reasons;
    std::function<void()> whileAsking;
    std::function<void(const std::string&)> onAsk; ///< for the transcript
};

class FakeNotifications : public Notifications {
public:
    bool hasApplicationIdentity() const override { return registered; }
    void requestAuthorization() override { ++authorizationRequests; }
    void post(const Notification& notification, std::function<void()> undelivered) override {
        posted.push_back(notification);
        lost = std::move(undelivered);
        if (onPost) onPost(notification);
    }
    void console(const std::string& line) override { lines.push_back(line); }

    bool registered = true;
    int authorizationRequests = 0;
    std::vector<Notification> posted;
    std::vector<std::string> lines;
    std::function<void()> lost;                      ///< tells that nobody took the last one
    std::function<void(const Notification&)> onPost; ///< for the transcript
};

class FakeFilePanel : public FilePanel {
public:
    std::optional<std::filesystem::path> choose(const FilePanelRequest& request) override {
        requests.push_back(request);
        if (onAsk) onAsk(request);
        if (whileAsking) whileAsking();
        return choice;
    }

    std::optional<std::filesystem::path> choice;
    std::vector<FilePanelRequest> requests;
    std::function<void()> whileAsking;
    std::function<void(const FilePanelRequest&)> onAsk; ///< for the transcript
};

class FakePdfText : public PdfText {
public:
    std::string text(std::string_view bytes) override {
        lastBytes = bytes;
        return answer;
    }
    std::string answer;
    std::string lastBytes;
};

/// Answers by the executable's name and last argument: {"fdesetup status": "FileVault is On."}.
class FakeProcesses : public Processes {
public:
    std::optional<std::string> run(const std::string& path,
                                   const std::vector<std::string>& arguments) override {
        const auto found =
            outputs.find(std::filesystem::path(path).filename().string() + " " + arguments.back());
        if (found == outputs.end()) return std::nullopt;
        return found->second;
    }

    void secure() {
        outputs = {{"fdesetup status", "FileVault is On.\n"},
                   {"defaults globalstate", "1\n"},
                   {"defaults askForPassword", "1\n"},
                   {"csrutil status", "System Integrity Protection status: enabled.\n"},
                   {"spctl --status", "assessments enabled\n"}};
    }

    std::map<std::string, std::string> outputs;
};

class FakeModel : public LanguageModel {
public:
    int osMajorVersion() const override { return version; }
    std::optional<std::string> unavailableReason() override { return unavailable; }
    void respond(const ModelRequest& request, Done done) override {
        requests.push_back(request);
        waiting_.push_back(std::move(done));
    }

    void cancel() override {
        while (open() > 0)
            fail("cancelled");
    }

    /// Answers the oldest request that is not answered, or the one at `position` among them.
    void answer(tl::expected<std::string, ModelFailure> reply, std::size_t position = 0) {
        const Done done = std::move(waiting_.at(position)); // throws where nothing was asked
        waiting_.erase(waiting_.begin() + static_cast<std::ptrdiff_t>(position));
        done(std::move(reply));
    }
    void fail(const std::string& why) { answer(tl::unexpected(ModelFailure{why})); }
    std::size_t open() const { return waiting_.size(); }

    int version = 26;
    std::optional<std::string> unavailable;
    std::vector<ModelRequest> requests;

private:
    std::deque<Done> waiting_;
};

} // namespace kelvo::test
