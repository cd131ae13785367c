#pragma once

#include "platform/presence/SecretText.h"

#include <QObject>
#include <QPointer>
#include <QString>
#include <QStringList>
#include <functional>
#include <memory>
#include <string>

class QQmlEngine;
class QQuickWindow;

namespace kelvo {

/// The window in which the person proves their presence: the caller's reason, what PAM says and
/// asks as plain text, one input, Cancel. It is modal to the program and knows nothing of PAM.
///
/// Escape, the Cancel button and closing the window all cancel.
class PresencePrompt : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString reason READ reason CONSTANT)
    Q_PROPERTY(QString account READ account CONSTANT)
    Q_PROPERTY(QString information READ information NOTIFY changed)
    Q_PROPERTY(QString errors READ errors NOTIFY changed)
    Q_PROPERTY(QString question READ question NOTIFY changed)
    Q_PROPERTY(bool echo READ echo NOTIFY changed)
    Q_PROPERTY(bool asking READ asking NOTIFY changed)
    Q_PROPERTY(bool refused READ refused NOTIFY changed)

public:
    /// `answered` gets what the person enters, `dismissed` is told once when they cancel or, after
    /// a refusal, close the window.
    PresencePrompt(const std::string& reason, const std::string& account,
                   std::function<void(SecretText)> answered, std::function<void()> dismissed);
    ~PresencePrompt() override;

    /// Opens the window. False, with a line in Qt's log, when it cannot be made.
    bool show(QQmlEngine& engine);

    void tell(const std::string& text, bool isError);
    void ask(const std::string& question, bool echo);
    /// Nothing more will be asked, and the answer is no. The window stays so that what PAM said can
    /// be read.
    void refuse();
    bool hasErrors() const { return !errors_.isEmpty(); }

    QString reason() const { return reason_; }
    QString account() const { return account_; }
    QString information() const { return information_.join('\n'); }
    QString errors() const { return errors_.join('\n'); }
    QString question() const { return question_; }
    bool echo() const { return echo_; }
    bool asking() const { return asking_; }
    bool refused() const { return refused_; }

    /// Takes the answer from a text input of the window and empties it.
    Q_INVOKABLE void submit(QObject* input);
    Q_INVOKABLE void cancel();

signals:
    void changed();

private:
    QString reason_;
    QString account_;
    std::function<void(SecretText)> answered_;
    std::function<void()> dismissed_;
    QStringList information_;
    QStringList errors_;
    QString question_;
    bool echo_ = false;
    bool asking_ = false;
    bool refused_ = false;
    bool closed_ = false;
    std::unique_ptr<QQuickWindow> window_;
};

} // namespace kelvo
