#include "platform/qt/HttpUpdateFeed.h"

#include <QNetworkReply>
#include <QTimer>

namespace tessivo {
namespace {

constexpr int timeoutMilliseconds = 10'000;
/// Far more than a version needs; a longer answer is something else, and refused.
constexpr qint64 longestLine = 64;

}  // namespace

void HttpUpdateFeed::fetchLatestVersion(Answer answer) {
    if (address_.isEmpty()) {
        QTimer::singleShot(0, &network_, [answer = std::move(answer)] { answer(std::nullopt); });
        return;
    }
    QNetworkRequest request(address_);
    request.setTransferTimeout(timeoutMilliseconds);
    QNetworkReply* reply = network_.get(request);
    reply->setReadBufferSize(longestLine);
    QObject::connect(reply, &QNetworkReply::readyRead, reply, [reply] {
        if (reply->bytesAvailable() >= longestLine) {
            reply->abort();
        }
    });
    QObject::connect(reply, &QNetworkReply::finished, &network_,
                     [reply, answer = std::move(answer)] {
                         reply->deleteLater();
                         if (reply->error() != QNetworkReply::NoError) {
                             answer(std::nullopt);
                             return;
                         }
                         answer(reply->readLine(longestLine).trimmed().toStdString());
                     });
}

}  // namespace tessivo
