#pragma once

#include <QString>
#include <QtQml/qqmlregistration.h>

#include "kit/ShowObserver.h"

namespace tessivo {

/// The hour, and when the show will be over, by this computer's clock and time zone.
class ShowClockViewModel : public tessivo::ShowObserver {
    Q_OBJECT
    QML_ELEMENT
    /// HH:MM:SS.
    Q_PROPERTY(QString clock READ clock NOTIFY clockChanged)
    /// A sentence; empty when no length of what is to come is known.
    Q_PROPERTY(QString plannedEnd READ plannedEnd NOTIFY plannedEndChanged)

public:
    explicit ShowClockViewModel(QObject* parent = nullptr) : ShowObserver(parent) {}

    const QString& clock() const { return clock_; }
    const QString& plannedEnd() const { return plannedEnd_; }

Q_SIGNALS:
    void clockChanged();
    void plannedEndChanged();

protected:
    void update(AppState::Field field) override;
    void present() override;

private:
    QString clock_;
    QString plannedEnd_;
};

}  // namespace tessivo
