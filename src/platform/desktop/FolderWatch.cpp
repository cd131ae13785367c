#include "platform/desktop/FolderWatch.h"

#include <sys/stat.h>

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <utility>

namespace kelvo {
namespace {

constexpr int settlesWithinMs = 400;
constexpr int lookEveryMs = 5000;

/// What tells one state of a folder or file from another, without reading it.
void add(QCryptographicHash& state, const QString& path) {
    struct stat status {};
    if (::stat(QFile::encodeName(path).constData(), &status) != 0) return;
    state.addData(path.toUtf8());
    for (const qint64 number :
         {static_cast<qint64>(status.st_dev), static_cast<qint64>(status.st_ino),
          static_cast<qint64>(status.st_size), static_cast<qint64>(status.st_mtim.tv_sec),
          static_cast<qint64>(status.st_mtim.tv_nsec)}) {
        state.addData(QByteArray::number(number) + ' ');
    }
}

} // namespace

FolderWatch::FolderWatch(QStringList folders, std::function<void()> changed)
    : folders_(std::move(folders)), changed_(std::move(changed)), seen_(look()) {
    soon_.setSingleShot(true);
    soon_.setInterval(settlesWithinMs);
    QObject::connect(&watcher_, &QFileSystemWatcher::directoryChanged, &soon_,
                     qOverload<>(&QTimer::start));
    QObject::connect(&soon_, &QTimer::timeout, &soon_, [this] { check(); });
    QObject::connect(&regularly_, &QTimer::timeout, &regularly_, [this] { check(); });
    regularly_.start(lookEveryMs);
    check();
}

QByteArray FolderWatch::look() const {
    QCryptographicHash state(QCryptographicHash::Sha256);
    for (const QString& folder : folders_) {
        add(state, folder);
        // A folder's own time tells names that came and went; logs grow without it.
        const QDir inside(folder);
        for (const QString& log : inside.entryList({QStringLiteral("*.ndjson")}, QDir::Files))
            add(state, inside.filePath(log));
    }
    return state.result();
}

void FolderWatch::check() {
    // A folder that was replaced or has come back is no longer watched under its name.
    for (const QString& folder : folders_) {
        if (QDir(folder).exists() && !watcher_.directories().contains(folder)) {
            watcher_.addPath(folder);
        }
    }
    QByteArray now = look();
    if (now == seen_) return;
    seen_ = std::move(now);
    changed_();
}

} // namespace kelvo
