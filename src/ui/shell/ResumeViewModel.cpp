#include "ui/shell/ResumeViewModel.h"

#include <QGuiApplication>
#include <QQmlEngine>
#include <QScreen>

#include "kit/ScreenContext.h"
#include "kit/ShownText.h"
#include "state/AppState.h"

#include <algorithm>
#include <utility>

namespace tessivo {

ResumeViewModel* ResumeViewModel::create(QQmlEngine* engine, QJSEngine*) {
    return new ResumeViewModel(screenContextOf(*engine));
}

ResumeViewModel::ResumeViewModel(ScreenContext& context)
    : context_(context), offer_(context.resumption.offer()) {
    subscription_ = context.state.didChange.subscribe([this](AppState::Field field) {
        if (field == AppState::Field::nowTick) {
            update();
        }
    });
}

QString ResumeViewModel::title() const {
    return offer_ ? toShownText(offer_->title) : QString();
}

QString ResumeViewModel::detail() const {
    return offer_ ? toQString(offer_->detail) : QString();
}

void ResumeViewModel::begin(bool leads) {
    context_.resumption.begin(leads);
    update();
}

void ResumeViewModel::leave() {
    context_.resumption.leave();
    update();
}

void ResumeViewModel::dismiss() {
    context_.resumption.dismiss();
    update();
}

void ResumeViewModel::resume() {
    if (leads()) {
        context_.goOn = [this] { goOn(true); };
    } else {
        goOn(false);
    }
}

void ResumeViewModel::goOn(bool leads) {
    const std::vector<WindowPlace> places = context_.resumption.goOn();
    begin(leads);
    for (const WindowPlace& place : places) {
        Q_EMIT windowWanted(toQString(place.window), toQString(place.screen), place.isFullScreen);
    }
}

void ResumeViewModel::keepPlace(QQuickWindow* window, const QString& name) {
    const auto keep = [this, window, name] {
        Resumption& resumption = context_.resumption;
        if (window->isVisible()) {
            resumption.setPlace({name.toStdString(), window->screen()->name().toStdString(),
                                 window->visibility() == QWindow::FullScreen});
        } else {
            resumption.removePlace(name.toStdString());
        }
    };
    connect(window, &QWindow::visibilityChanged, this, keep);
    connect(window, &QWindow::screenChanged, this, keep);
    keep();
}

void ResumeViewModel::putInPlace(QQuickWindow* window, const QString& screen, bool fullScreen) {
    const QList<QScreen*> screens = QGuiApplication::screens();
    const auto found = std::ranges::find(screens, screen, &QScreen::name);
    const bool isThere = found != screens.end();
    if (isThere && *found != window->screen()) {
        QRect place(QPoint(), window->size());
        place.moveCenter((*found)->availableGeometry().center());
        window->setScreen(*found);
        window->setPosition(place.topLeft());
    }
    if (isThere && fullScreen) {
        window->showFullScreen();
    } else if (!window->isVisible()) {
        window->show();
    }
}

void ResumeViewModel::update() {
    auto offer = context_.resumption.offer();
    if (std::exchange(offer_, std::move(offer)) != offer_) {
        Q_EMIT offerChanged();
    }
}

}  // namespace tessivo
