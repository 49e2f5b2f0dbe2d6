#pragma once

#include <QObject>

#include "platform/StayAwake.h"

#include <memory>

class QDBusMessage;
class QDBusUnixFileDescriptor;

namespace tessivo {

/// Asks the desktop not to blank the screen (org.freedesktop.ScreenSaver, Idle Inhibition Service
/// Draft) and the system not to suspend (org.freedesktop.login1, Inhibit). Whichever is there
/// answers; neither is waited for.
class SessionStayAwake final : public StayAwake {
public:
    SessionStayAwake();
    ~SessionStayAwake() override;

    void set(bool awake) override;

private:
    void askScreenSaver();
    void askLogin();
    static void release(quint32 cookie);

    bool isAwake_ = false;
    quint32 cookie_ = 0;                                    // of the screen saver; 0 for none
    std::unique_ptr<QDBusUnixFileDescriptor> suspendLock_;  // sleep is held off while it is open
    QObject answers_;                                       // what is asked ends with it
};

}  // namespace tessivo
