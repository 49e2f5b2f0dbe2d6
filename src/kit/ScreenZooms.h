#pragma once

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

class QJSEngine;
class QQmlEngine;

namespace tessivo {

class Choices;

/// How large each of this computer's screens draws what is shown on it, kept between runs under the
/// screen's name.
class ScreenZooms final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    /// A zoom is a factor from 0.5 to 5, or `fit`: as large as all that matters fits.
    static constexpr double smallest = 0.5, largest = 5.0, fit = 0.0;

    static ScreenZooms* create(QQmlEngine* engine, QJSEngine*);

    explicit ScreenZooms(Choices& choices) : choices_(choices) {}

    /// The zoom of `view` on `screen`; 1 when none was kept.
    Q_INVOKABLE double zoom(const QString& view, const QString& screen) const;
    Q_INVOKABLE void keep(const QString& view, const QString& screen, double zoom);

private:
    Choices& choices_;
};

}  // namespace tessivo
