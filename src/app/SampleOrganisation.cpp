#include "app/SampleOrganisation.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>

namespace kelvo {
namespace {

const QString sampleOption = QStringLiteral("--sample");

/// What is carried within the program is for reading only; a copy is the person's own.
bool copyFolder(const QString& from, const QString& to) {
    if (!QDir().mkpath(to)) return false;
    for (const QFileInfo& file : QDir(from).entryInfoList(QDir::Files)) {
        const QString copy = QDir(to).filePath(file.fileName());
        if (!QFile::copy(file.filePath(), copy)) return false;
        if (!QFile::setPermissions(copy, QFile::ReadOwner | QFile::WriteOwner)) return false;
    }
    return true;
}

} // namespace

bool openSampleOrganisation() {
    QTemporaryDir scratch(QDir::temp().filePath(QStringLiteral("kelvo-sample-XXXXXX")));
    if (!scratch.isValid()) return false;
    const QString carried = QStringLiteral(":/kelvo/sample/");
    const bool made =
        copyFolder(carried + QStringLiteral("outputs"),
                   scratch.filePath(QStringLiteral("bondgraphs/bondgraph/outputs"))) &&
        copyFolder(carried + QStringLiteral("evidence"),
                   scratch.filePath(QStringLiteral("evidence"))) &&
        QDir(scratch.path()).mkpath(QStringLiteral("bondgraphs/kelvo-soc2-app"));
    const bool started = made && QProcess::startDetached(QCoreApplication::applicationFilePath(),
                                                         {sampleOption, scratch.path()});
    scratch.setAutoRemove(!started);
    return started;
}

std::optional<QString> sampleFolder(const QStringList& arguments) {
    const auto at = arguments.indexOf(sampleOption);
    if (at < 0 || at + 1 >= arguments.size()) return std::nullopt;
    return QDir(arguments[at + 1]).absolutePath();
}

} // namespace kelvo
