#pragma once

#include "platform/presence/PamAuthentication.h"
#include "support/TemporaryDirectory.h"

#include <QQuickItem>
#include <QQuickWindow>
#include <QTimer>
#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <utility>

/// PAM's own test modules in a folder of the test's, and a person who acts in the real window. The
/// shipped program has no way to name such a folder.
namespace kelvo::test {

/// A folder of PAM services in which "ada" has the password "correct horse", and "bob" has one that
/// is good for another service only.
class PamFolder {
public:
    /// A service file of these lines. "@matrix" stands for PAM's test module with its accounts.
    void service(const std::string& name, std::string lines) const;
    std::filesystem::path file(const std::string& name, const std::string& content) const;
    std::string path() const { return folder_.path().string(); }

private:
    TemporaryDirectory folder_;
};

class TestStack : public PamStack {
public:
    TestStack(std::string folder, std::string service, std::string user)
        : PamStack(std::move(service), std::move(user)), folder_(std::move(folder)) {}

protected:
    int start(const std::string& service, const std::string& user, const pam_conv& conversation,
              pam_handle** handle) const override;

private:
    std::string folder_;
};

class TestFingers : public EnrolledFingers {
public:
    explicit TestFingers(QString address) : address_(std::move(address)) {}

protected:
    QString busAddress() const override { return address_; }

private:
    QString address_;
};

class TestAuthentication : public PamAuthentication {
public:
    TestAuthentication(const PamFolder& folder, const std::string& service,
                       const std::string& user = "ada", const QString& bus = "unix:path=/nowhere")
        : PamAuthentication(user, std::make_unique<TestStack>(folder.path(), service, user),
                            std::make_unique<TestFingers>(bus)) {}
};

/// Acts in the prompt, step by step: each step waits, in the running event loop, until its
/// condition holds.
class Person {
public:
    Person();

    using Condition = std::function<bool(QQuickWindow&)>;
    using Action = std::function<void(QQuickWindow&)>;

    Person& when(Condition condition, Action action);
    /// Types the text into the input once it is asked for, and presses Enter.
    Person& enters(const std::string& text);

    bool finished() const { return steps_.empty(); }
    /// The prompt that is open, or none.
    static QQuickWindow* prompt();

private:
    QTimer timer_;
    std::deque<std::pair<Condition, Action>> steps_;
};

bool isAsking(QQuickWindow& prompt);
bool isOpen(QQuickWindow& prompt);
void type(QQuickWindow& prompt, const std::string& text);
void press(QQuickWindow& prompt, Qt::Key key);
void click(QQuickWindow& prompt, const char* name);
QString textOf(QQuickWindow& prompt, const char* name);

} // namespace kelvo::test
