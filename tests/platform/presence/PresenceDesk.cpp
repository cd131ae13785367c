#include "PresenceDesk.h"

#include <security/pam_appl.h>

#include <QGuiApplication>
#include <QTest>
#include <fstream>

namespace kelvo::test {

std::filesystem::path PamFolder::file(const std::string& name, const std::string& content) const {
    std::ofstream(folder_.path() / name) << content;
    return folder_.path() / name;
}

void PamFolder::service(const std::string& name, std::string lines) const {
    // The module looks at the first line of an account only.
    const auto accounts =
        file(name + ".accounts", "ada:correct horse:" + name + "\nbob:correct horse:elsewhere\n");
    const std::string module =
        "/usr/lib/x86_64-linux-gnu/pam_wrapper/pam_matrix.so passdb=" + accounts.string();
    for (std::size_t at = 0; (at = lines.find("@matrix")) != std::string::npos;) {
        lines.replace(at, 7, module);
    }
    file(name, lines);
}

int TestStack::start(const std::string& service, const std::string& user,
                     const pam_conv& conversation, pam_handle** handle) const {
    return ::pam_start_confdir(service.c_str(), user.c_str(), &conversation, folder_.c_str(),
                               handle);
}

Person::Person() {
    timer_.callOnTimeout([this] {
        QQuickWindow* window = prompt();
        if (window == nullptr || steps_.empty() || !steps_.front().first(*window)) return;
        const auto action = std::move(steps_.front().second);
        steps_.pop_front();
        action(*window);
    });
    timer_.start(2);
}

Person& Person::when(Condition condition, Action action) {
    steps_.emplace_back(std::move(condition), std::move(action));
    return *this;
}

Person& Person::enters(const std::string& text) {
    return when(isAsking, [text](QQuickWindow& window) {
        type(window, text);
        press(window, Qt::Key_Return);
    });
}

QQuickWindow* Person::prompt() {
    for (QWindow* window : QGuiApplication::topLevelWindows()) {
        auto* quick = qobject_cast<QQuickWindow*>(window);
        if (quick != nullptr && quick->isVisible()) return quick;
    }
    return nullptr;
}

bool isAsking(QQuickWindow& prompt) {
    auto* input = prompt.findChild<QQuickItem*>("input");
    return prompt.isActive() && input->isEnabled() && input->hasActiveFocus();
}

bool isOpen(QQuickWindow& prompt) {
    return prompt.isActive();
}

void type(QQuickWindow& prompt, const std::string& text) {
    for (const char c : text)
        QTest::keyClick(&prompt, c);
}

void press(QQuickWindow& prompt, Qt::Key key) {
    QTest::keyClick(&prompt, key);
}

void click(QQuickWindow& prompt, const char* name) {
    auto* item = prompt.findChild<QQuickItem*>(name);
    const QPointF middle = item->mapToScene({item->width() / 2, item->height() / 2});
    QTest::mouseClick(&prompt, Qt::LeftButton, Qt::NoModifier, middle.toPoint());
}

QString textOf(QQuickWindow& prompt, const char* name) {
    return prompt.findChild<QQuickItem*>(name)->property("text").toString();
}

} // namespace kelvo::test
