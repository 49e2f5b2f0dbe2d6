#include "state/ResumePoint.h"

#include "live/Countdown.h"
#include "live/Setlist.h"
#include "model/JsonFields.h"

#include <algorithm>

namespace tessivo {

template <JsonRecord<WindowPlace> Record, typename Visit>
bool visitMembers(Record& place, Visit visit) {
    return visit("window", place.window) && visit("screen", place.screen) &&
           visit("isFullScreen", place.isFullScreen);
}

template <JsonRecord<ResumePoint> Record, typename Visit>
bool visitMembers(Record& point, Visit visit) {
    return visit("keptAt", point.keptAt.secondsSince2001) && visit("leads", point.leads) &&
           visit("showId", point.showId) && visit("songId", point.songId) &&
           visit("songStartedAt", point.songStartedAt.secondsSince2001) &&
           visit("followsTimecode", point.followsTimecode) && visit("input", point.input) &&
           visit("displayedShowId", point.displayedShowId) && visit("windows", point.windows);
}

std::string encodeJson(const ResumePoint& point) {
    return json::encode(point);
}

std::optional<ResumePoint> decodeResumePoint(std::string_view json) {
    return json::decode<ResumePoint>(json);
}

bool isRecent(const ResumePoint& point, Instant now) {
    return now - point.keptAt < ResumePoint::maximumAge;
}

Instant songStart(const ResumePoint& point, const Song* current, Instant now) {
    const bool isSame = current && current->id == point.songId;
    return isSame ? std::min(point.songStartedAt, now) : now;
}

std::string resumeText(const Show& show, std::int64_t songIndex, double elapsedSeconds) {
    if (!songAt(&show, songIndex)) {
        return isFinished(show, songIndex) ? "show terminé" : "";
    }
    const auto remaining = remainingSeconds(&show, songIndex, elapsedSeconds);
    return "morceau " + std::to_string(songIndex + 1) +
           (remaining ? ", reste " + countdownText(remaining) : "");
}

}  // namespace tessivo
