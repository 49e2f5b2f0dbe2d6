#include "kit/ScreenZooms.h"

#include <QQmlEngine>
#include <QUrl>

#include "kit/ScreenContext.h"
#include "state/AppState.h"

namespace tessivo {
namespace {

/// A screen may be called anything, a key becomes a part of a file's name.
std::string keyOf(const QString& view, const QString& screen) {
    return "zoom_v1_" + view.toStdString() + "_" +
           QUrl::toPercentEncoding(screen).left(100).toStdString();
}

}  // namespace

ScreenZooms* ScreenZooms::create(QQmlEngine* engine, QJSEngine*) {
    return new ScreenZooms(screenContextOf(*engine).state.choices());
}

double ScreenZooms::zoom(const QString& view, const QString& screen) const {
    bool isNumber = false;
    const double zoom =
        QString::fromStdString(choices_.get(keyOf(view, screen)).value_or("")).toDouble(&isNumber);
    const bool isZoom = isNumber && (zoom == fit || (zoom >= smallest && zoom <= largest));
    return isZoom ? zoom : 1.0;
}

void ScreenZooms::keep(const QString& view, const QString& screen, double zoom) {
    choices_.set(keyOf(view, screen), QString::number(zoom).toStdString());
}

}  // namespace tessivo
