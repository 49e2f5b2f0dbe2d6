#pragma once

namespace tessivo {

/// How a connection to a service came to its end.
enum class CallEnd {
    opened,    ///< it was open before
    notTaken,  ///< nobody took it where the service is said to be
    unplaced,  ///< the responder couldn't say where that is, or is still looking
};

}  // namespace tessivo
