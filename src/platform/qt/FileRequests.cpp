#include "platform/qt/FileRequests.h"

#include <QDataStream>
#include <QLocalSocket>
#include <QStandardPaths>

#include <utility>

namespace tessivo {
namespace {

constexpr int patience = 1000;              // milliseconds
constexpr qint64 longestRequest = 1 << 16;  // bytes; no path is as long

QString address() {
    return QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation) +
           QStringLiteral("/tessivo-files");
}

}  // namespace

bool FileRequests::handOver(const QString& path) {
    QLocalSocket other;
    other.connectToServer(address());
    if (!other.waitForConnected(patience)) {
        return false;
    }
    QDataStream stream(&other);
    stream << path;
    // The other closes once it has the path. One that hangs doesn't.
    return other.waitForDisconnected(patience);
}

FileRequests::FileRequests(std::function<void(const QString& path)> open) : open_(std::move(open)) {
    server_.setSocketOptions(QLocalServer::UserAccessOption);
    QObject::connect(&server_, &QLocalServer::newConnection, &server_, [this] {
        while (QLocalSocket* caller = server_.nextPendingConnection()) {
            caller->setReadBufferSize(longestRequest);
            QObject::connect(caller, &QLocalSocket::readyRead, &server_,
                             [this, caller] { serve(*caller); });
            QObject::connect(caller, &QLocalSocket::disconnected, caller, &QObject::deleteLater);
        }
    });
    QLocalSocket other;
    other.connectToServer(address());
    if (!other.waitForConnected(patience)) {
        QLocalServer::removeServer(address());  // what a program left that was killed
        server_.listen(address());
    }
}

void FileRequests::serve(QLocalSocket& caller) {
    QDataStream stream(&caller);
    stream.startTransaction();
    QString path;
    stream >> path;
    if (stream.commitTransaction()) {
        caller.disconnectFromServer();
        open_(path);
    } else if (caller.bytesAvailable() >= longestRequest) {
        caller.abort();
    }
}

}  // namespace tessivo
