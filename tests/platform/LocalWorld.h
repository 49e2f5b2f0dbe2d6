#pragma once

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>

#include "platform/dnssd/LocalNetwork.h"
#include "platform/qt/QtMainQueue.h"
#include "support/NetworkWorld.h"

namespace tessivo::test {

/// Two programs on this computer, as its responder sees them.
class LocalWorld final : public NetworkWorld {
public:
    LocalNetwork& here() override { return here_; }
    LocalNetwork& there() override { return there_; }
    bool runUntil(const std::function<bool()>& condition) override {
        QElapsedTimer waited;
        waited.start();
        while (!condition() && waited.elapsed() < 30'000) {
            QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
        }
        return condition();
    }

private:
    QtMainQueue queue_;
    LocalNetwork here_{queue_};
    LocalNetwork there_{queue_};
};

}  // namespace tessivo::test
