#include "platform/presence/PresencePrompt.h"

#include <QGuiApplication>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickWindow>
#include <QVariant>
#include <algorithm>
#include <utility>

namespace kelvo {
namespace {

constexpr qsizetype notesShown = 3; ///< a fingerprint reader may report each touch

void append(QStringList& notes, const std::string& text) {
    if (text.empty()) return;
    notes.append(QString::fromStdString(text));
    while (notes.size() > notesShown)
        notes.removeFirst();
}

/// The text's characters as UTF-8, overwritten in the place where the input keeps them too.
SecretText takeSecret(const QString& text) {
    QByteArray bytes = text.toUtf8();
    SecretText secret({bytes.constData(), static_cast<std::size_t>(bytes.size())});
    bytes.fill('\0');
    // The input shares these characters; a copy would leave them behind in its memory.
    auto* shared = const_cast<QChar*>(text.constData());
    std::fill_n(shared, text.size(), QChar(u' '));
    return secret;
}

} // namespace

PresencePrompt::PresencePrompt(const std::string& reason, const std::string& account,
                               std::function<void(SecretText)> answered,
                               std::function<void()> dismissed)
    : reason_(QString::fromStdString(reason)), account_(QString::fromStdString(account)),
      answered_(std::move(answered)), dismissed_(std::move(dismissed)) {
}

PresencePrompt::~PresencePrompt() {
    // Closing the window from here is no act of the person.
    closed_ = true;
}

bool PresencePrompt::show(QQmlEngine& engine) {
    QQmlComponent component(&engine,
                            QUrl(QStringLiteral("qrc:/kelvo/presence/PresencePrompt.qml")));
    const QVariantMap properties = {{"prompt", QVariant::fromValue<QObject*>(this)}};
    std::unique_ptr<QObject> made(component.createWithInitialProperties(properties));
    auto* window = qobject_cast<QQuickWindow*>(made.get());
    if (window == nullptr) {
        qWarning("The presence prompt cannot be shown: %s", qPrintable(component.errorString()));
        return false;
    }
    window_.reset(qobject_cast<QQuickWindow*>(made.release()));
    window_->setTransientParent(QGuiApplication::focusWindow());
    window_->show();
    window_->requestActivate();
    return true;
}

void PresencePrompt::tell(const std::string& text, bool isError) {
    append(isError ? errors_ : information_, text);
    emit changed();
}

void PresencePrompt::ask(const std::string& question, bool echo) {
    question_ = QString::fromStdString(question);
    echo_ = echo;
    asking_ = true;
    emit changed();
}

void PresencePrompt::refuse() {
    asking_ = false;
    refused_ = true;
    emit changed();
}

void PresencePrompt::submit(QObject* input) {
    if (!asking_ || closed_) return;
    asking_ = false;
    SecretText answer = takeSecret(input->property("text").toString());
    QMetaObject::invokeMethod(input, "clear");
    emit changed();
    answered_(std::move(answer));
}

void PresencePrompt::cancel() {
    if (closed_) return;
    closed_ = true;
    dismissed_();
}

} // namespace kelvo
