#pragma once

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <functional>
#include <memory>

namespace kelvo::test {

/// Gives a test binary Qt's event loop. Register one with ::testing::AddGlobalTestEnvironment.
class EventLoopEnvironment : public ::testing::Environment {
public:
    void SetUp() override { application_ = std::make_unique<QCoreApplication>(count_, arguments_); }
    void TearDown() override { application_.reset(); }

private:
    int count_ = 1;
    char name_[5] = "test";
    char* arguments_[2] = {name_, nullptr};
    std::unique_ptr<QCoreApplication> application_;
};

/// Handles events until `happened`, at most for a time that no working test comes near.
inline bool eventually(const std::function<bool()>& happened) {
    QElapsedTimer clock;
    clock.start();
    while (!happened() && clock.elapsed() < 60'000)
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents, 20);
    return happened();
}

/// Handles what is waiting now, also what was left to be deleted.
inline void handleEvents() {
    for (int i = 0; i < 3; ++i) {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

} // namespace kelvo::test
