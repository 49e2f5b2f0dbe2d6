#pragma once

#include <QQmlParserStatus>
#include <QtQml/qqmlregistration.h>

namespace tessivo {

struct ScreenContext;

/// Keeps the computer awake while `active`: somebody watches a screen without touching anything.
class KeepAwake : public QObject, public QQmlParserStatus {
    Q_OBJECT
    Q_INTERFACES(QQmlParserStatus)
    QML_ELEMENT
    Q_PROPERTY(bool active READ active WRITE setActive NOTIFY activeChanged REQUIRED)

public:
    ~KeepAwake() override;
    void classBegin() override {}
    void componentComplete() override;

    bool active() const { return active_; }
    void setActive(bool active);

Q_SIGNALS:
    void activeChanged();

private:
    ScreenContext* context_ = nullptr;  // from componentComplete on
    bool active_ = false;
};

}  // namespace tessivo
