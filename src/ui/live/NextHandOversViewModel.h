#pragma once

#include <QString>
#include <QtQml/qqmlregistration.h>

#include "kit/ShowObserver.h"
#include "live/HandOvers.h"

namespace tessivo {

/// Which microphones and mixes change hands before the next song.
class NextHandOversViewModel : public tessivo::ShowObserver {
    Q_OBJECT
    QML_ELEMENT
    /// On one line, the most pressing first; empty when nothing changes hands.
    Q_PROPERTY(QString line READ line NOTIFY lineChanged)

public:
    explicit NextHandOversViewModel(QObject* parent = nullptr) : ShowObserver(parent) {}

    const QString& line() const { return line_; }

Q_SIGNALS:
    void lineChanged();

protected:
    void update(AppState::Field field) override;
    void present() override;

private:
    QString line_;
};

}  // namespace tessivo
