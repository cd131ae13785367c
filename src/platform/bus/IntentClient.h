#pragma once

#include "intents/KelvoIntents.h"

#include <QDBusConnection>
#include <QString>
#include <QStringList>

namespace kelvo {

/// Why an intent that was called over the bus gave no dialog.
struct CallFailure {
    enum class Kind {
        failed,         ///< the intent itself, with its own reason
        badRequest,     ///< a parameter is wrong
        unreachable,    ///< the application does not run and could not be started
        notUnderstood,  ///< the sentence is none of the phrases
        questionNeeded, ///< "Ask Kelvo SOC2" without a question
        busy            ///< too much is under way
    };
    Kind kind = Kind::failed;
    QString text;
};

/// Calls the application's intents from another process. The application is started where the bus
/// knows how.
class IntentClient {
public:
    using Dialog = tl::expected<QString, CallFailure>;

    /// Over the person's session bus.
    IntentClient();

    /// Waits for the dialog, however long: a person may be asked something first.
    Dialog run(const Intent& intent);
    Dialog say(const QString& sentence);

private:
    Dialog call(const QString& method, const QStringList& arguments);

    QDBusConnection bus_;
};

} // namespace kelvo
