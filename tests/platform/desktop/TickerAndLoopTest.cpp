#include "platform/desktop/QtEventLoop.h"
#include "platform/desktop/QtTicker.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QThread>
#include <memory>

namespace kelvo {
namespace {

TEST(QtTicker, NeverTicksFasterThanSixtyTimesASecond) {
    QtTicker ticker;
    QEventLoop loop;
    QElapsedTimer elapsed;
    int ticks = 0;
    elapsed.start();
    ticker.start([&] {
        if (++ticks == 30) loop.quit();
    });
    EXPECT_EQ(ticks, 0) << "ticked from inside start";
    loop.exec();
    // A busy machine can only make it later; whole milliseconds of a timer would add up to earlier.
    EXPECT_GE(elapsed.nsecsElapsed(), 30 * 1'000'000'000LL / 60 - 1'500'000);
}

TEST(QtTicker, DropsTheTicksThatABusyProgramMissed) {
    QtTicker ticker;
    QEventLoop loop;
    QElapsedTimer elapsed;
    int ticks = 0;
    elapsed.start();
    ticker.start([&] {
        if (++ticks == 1) QThread::msleep(300);
        if (elapsed.elapsed() >= 600) loop.quit();
    });
    loop.exec();
    // One tick before the pause and one overdue after it; a slow machine only makes fewer.
    EXPECT_LE(ticks, 3 + (elapsed.elapsed() - 300) * 60 / 1000);
}

TEST(QtTicker, StopsAndRestartsAlsoFromInsideATick) {
    QtTicker ticker;
    QEventLoop loop;
    int first = 0;
    int second = 0;
    ticker.start([&] {
        ++first;
        ticker.stop();
        ticker.start([&] {
            if (++second < 3) return;
            ticker.stop();
            QTimer::singleShot(100, &loop, &QEventLoop::quit);
        });
    });
    loop.exec();
    EXPECT_EQ(first, 1);
    EXPECT_EQ(second, 3);
}

TEST(QtEventLoop, RunsPostedWorkLaterAndInOrder) {
    auto loop = std::make_unique<QtEventLoop>();
    std::string order;
    loop->post([&] {
        order += "a";
        loop->post([&] { order += "c"; });
    });
    loop->post([&] { order += "b"; });
    EXPECT_EQ(order, "");
    loop->processPending();
    loop->processPending();
    EXPECT_EQ(order, "abc");
    loop->post([&] { order += "lost"; });
    loop.reset();
    QCoreApplication::processEvents();
    EXPECT_EQ(order, "abc");
}

} // namespace
} // namespace kelvo
