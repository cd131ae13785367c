#pragma once

#include "ports/Background.h"

#include <QObject>
#include <QThreadPool>

namespace kelvo {

/// One worker thread beside the thread that made this object. Destruction waits for what runs and
/// drops what has not begun; nothing is called back after it.
class QtBackground : public Background {
public:
    QtBackground();
    ~QtBackground() override;

    void run(std::function<void()> work, std::function<void()> done) override;

private:
    QThreadPool pool_;
    QObject context_;
};

} // namespace kelvo
