#pragma once

namespace tessivo {

/// Keeps the computer from sleeping and its screen from going dark. Main thread only.
class StayAwake {
public:
    virtual ~StayAwake() = default;

    /// From now on the computer stays awake, or may sleep again. Where the system offers no way,
    /// nothing happens.
    virtual void set(bool awake) = 0;
};

}  // namespace tessivo
