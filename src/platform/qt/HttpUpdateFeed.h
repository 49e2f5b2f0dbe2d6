#pragma once

#include <QNetworkAccessManager>
#include <QUrl>

#include "platform/UpdateFeed.h"

namespace tessivo {

/// A feed at an address: a short text whose first line is the version. Without an address, as in
/// builds that the system's own packages update, it never knows of any.
class HttpUpdateFeed final : public UpdateFeed {
public:
    explicit HttpUpdateFeed(QUrl address) : address_(std::move(address)) {}

    void fetchLatestVersion(Answer answer) override;

private:
    QUrl address_;
    QNetworkAccessManager network_;
};

}  // namespace tessivo
