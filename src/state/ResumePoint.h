#pragma once

#include "base/Instant.h"
#include "base/Uuid.h"
#include "model/Show.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tessivo {

/// A window that is shown.
struct WindowPlace {
    std::string window;  ///< which of the program's
    std::string screen;  ///< the system's name of the screen that it is on
    bool isFullScreen = false;

    friend bool operator==(const WindowPlace&, const WindowPlace&) = default;
};

/// What it takes to go on with an evening after a crash, beside the record of the shows. The record
/// alone says which song is played; this says since when.
struct ResumePoint {
    /// A crash this long ago, in seconds, was another evening's.
    static constexpr double maximumAge = 12.0 * 3600.0;

    Instant keptAt;
    bool leads = false;          ///< as the admin; else this computer is a display station
    std::optional<Uuid> showId;  ///< that is open
    std::optional<Uuid> songId;  ///< under the cursor
    Instant songStartedAt;
    bool followsTimecode = true;
    std::optional<std::string> input;  ///< the name of the audio input that is captured
    std::optional<Uuid> displayedShowId;
    std::vector<WindowPlace> windows;

    friend bool operator==(const ResumePoint&, const ResumePoint&) = default;
};

/// One JSON object whose members carry the field names; absent optional fields are left out.
std::string encodeJson(const ResumePoint& point);
/// Nothing for any other text. Members that a newer version of the program may have are skipped.
std::optional<ResumePoint> decodeResumePoint(std::string_view json);

/// Whether the point is of this evening. After the computer's clock was set back nobody can tell,
/// and it is.
bool isRecent(const ResumePoint& point, Instant now);

/// Since when the song under the cursor plays. One that was moved to since, by whatever program,
/// begins now, and so does one that began in the future.
Instant songStart(const ResumePoint& point, const Song* current, Instant now);

/// What there is to go on with, French: "morceau 7, reste 2:13", "morceau 7" when its length isn't
/// known, "show terminé".
std::string resumeText(const Show& show, std::int64_t songIndex, double elapsedSeconds);

}  // namespace tessivo
