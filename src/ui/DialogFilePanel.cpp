#include "ui/DialogFilePanel.h"

#include <QEventLoop>
#include <QFile>
#include <QGuiApplication>
#include <QQmlComponent>
#include <QQuickStyle>
#include <QStringList>
#include <QUrl>
#include <QVariant>
#include <QWindow>
#include <memory>

namespace kelvo {
namespace {

QString pattern(ContentType type) {
    switch (type) {
    case ContentType::pdf:
        return QStringLiteral("*.pdf");
    case ContentType::plainText:
        return QStringLiteral("*.txt");
    case ContentType::text:
        return QStringLiteral("*.txt *.md *.csv *.log *.html *.xml *.yaml *.yml *.rtf");
    case ContentType::json:
        return QStringLiteral("*.json");
    case ContentType::csv:
        return QStringLiteral("*.csv");
    }
    return QStringLiteral("*");
}

QStringList nameFilters(const std::vector<ContentType>& allowed) {
    if (allowed.empty()) return {QStringLiteral("All files (*)")};
    QStringList patterns;
    for (const ContentType type : allowed)
        patterns.append(pattern(type).split(u' '));
    patterns.removeDuplicates();
    return {QStringLiteral("Documents (%1)").arg(patterns.join(u' ')),
            QStringLiteral("All files (*)")};
}

} // namespace

DialogFilePanel::DialogFilePanel() {
    // The toolkit's own chooser has a form for each style, and takes the one that is selected.
    selector_.setExtraSelectors({QQuickStyle::name()});
}

std::optional<std::filesystem::path> DialogFilePanel::choose(const FilePanelRequest& request) {
    QQmlComponent component(&qml_, QUrl(QStringLiteral("qrc:/qt/qml/Kelvo/FileChooser.qml")));
    const std::unique_ptr<QObject> dialog(component.createWithInitialProperties(
        {{QStringLiteral("title"), QString::fromStdString(request.message)},
         {QStringLiteral("acceptLabel"), QString::fromStdString(request.prompt)},
         {QStringLiteral("nameFilters"), nameFilters(request.allowed)}}));
    if (!dialog) {
        qWarning("the file chooser does not load: %s", qPrintable(component.errorString()));
        return std::nullopt;
    }
    if (QWindow* window = QGuiApplication::focusWindow()) {
        dialog->setProperty("parentWindow", QVariant::fromValue(window));
    }
    QEventLoop waiting;
    QObject::connect(dialog.get(), SIGNAL(accepted()), &waiting, SLOT(quit()));
    QObject::connect(dialog.get(), SIGNAL(rejected()), &waiting, SLOT(quit()));
    QMetaObject::invokeMethod(dialog.get(), "open");
    waiting.exec();
    // 1 is the result of an accepted dialog.
    if (dialog->property("result").toInt() != 1) return std::nullopt;
    const QUrl chosen = dialog->property("selectedFile").toUrl();
    if (!chosen.isLocalFile()) return std::nullopt;
    return std::filesystem::path(QFile::encodeName(chosen.toLocalFile()).toStdString());
}

} // namespace kelvo
