#pragma once

#include "platform/audio/InputDeviceList.h"

namespace tessivo {

/// Captures from `device` until SIGTERM, and writes what comes of it to standard output (see
/// `CaptureReport`). False when the device couldn't be captured, or ended by itself. For a process
/// that does nothing else: it ends without giving back what a dead device holds.
bool captureDevice(const InputDeviceKey& device);

}  // namespace tessivo
