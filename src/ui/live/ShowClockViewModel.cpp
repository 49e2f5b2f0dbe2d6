#include "ui/live/ShowClockViewModel.h"

#include "kit/LocalTime.h"
#include "kit/ShownText.h"
#include "live/ShowClock.h"

#include <utility>

namespace tessivo {

void ShowClockViewModel::update(AppState::Field field) {
    // A moved cursor ends with a tick.
    if (field == AppState::Field::shows || field == AppState::Field::nowTick) {
        present();
    }
}

void ShowClockViewModel::present() {
    const Instant now = state().nowTick();
    QString clock = localTime(now).toString(QStringLiteral("HH:mm:ss"));
    if (clock != clock_) {
        clock_ = std::move(clock);
        Q_EMIT clockChanged();
    }
    const auto end =
        tessivo::plannedEnd(show(), state().activeSongIndex(), state().currentSongStartedAt(), now);
    QString plannedEnd;
    if (end) {
        const std::string hour = localTime(end->at).toString(QStringLiteral("HH:mm")).toStdString();
        plannedEnd = toQString(plannedEndText(hour, end->songsWithoutLength));
    }
    if (plannedEnd != plannedEnd_) {
        plannedEnd_ = std::move(plannedEnd);
        Q_EMIT plannedEndChanged();
    }
}

}  // namespace tessivo
