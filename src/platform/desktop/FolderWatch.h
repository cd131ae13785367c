#pragma once

#include <QFileSystemWatcher>
#include <QStringList>
#include <QTimer>
#include <functional>

namespace kelvo {

/// Tells that something in one of a few folders changed: names that came or went as soon as the
/// system says so, and what it does not say (a file that grew, a network share, a folder that went
/// away and came back) at the next look, every five seconds. Several changes at once are told once.
class FolderWatch {
public:
    /// `changed` is called from the event loop of the thread that made this object.
    FolderWatch(QStringList folders, std::function<void()> changed);

private:
    /// Names the folders' files by size and time, so that two looks can be compared.
    QByteArray look() const;
    void check();

    QStringList folders_;
    std::function<void()> changed_;
    QFileSystemWatcher watcher_;
    QTimer soon_;
    QTimer regularly_;
    QByteArray seen_;
};

} // namespace kelvo
