#include <QTcpServer>
#include <QTcpSocket>

#include "platform/qt/HttpUpdateFeed.h"
#include "support/EventLoop.h"

#include <doctest/doctest.h>

using namespace tessivo;

namespace {

/// What a feed makes of the answer of a real HTTP server on this computer.
std::optional<std::string> versionFrom(const QByteArray& answer) {
    QTcpServer server;
    REQUIRE(server.listen(QHostAddress::LocalHost));
    QObject::connect(&server, &QTcpServer::newConnection, [&] {
        QTcpSocket* socket = server.nextPendingConnection();
        QObject::connect(socket, &QTcpSocket::readyRead, socket, [socket, answer] {
            socket->readAll();
            socket->write(answer);
            socket->disconnectFromHost();
        });
    });
    HttpUpdateFeed feed(QUrl(QStringLiteral("http://127.0.0.1:%1/").arg(server.serverPort())));
    std::optional<std::optional<std::string>> version;
    feed.fetchLatestVersion([&](std::optional<std::string> found) { version = std::move(found); });
    CHECK_FALSE(version.has_value());
    REQUIRE(test::runUntil([&] { return version.has_value(); }));
    return *version;
}

}  // namespace

TEST_CASE("a feed reads the first line of a good answer, and nothing of any other") {
    const QByteArray good = "HTTP/1.1 200 OK\r\nConnection: close\r\n\r\n";
    CHECK(versionFrom(good + "0.71\nnotes") == "0.71");
    CHECK(versionFrom("HTTP/1.1 404 Not Found\r\nContent-Length: 4\r\n\r\n0.71") == std::nullopt);
    CHECK(versionFrom("nonsense") == std::nullopt);
    CHECK(versionFrom(good + QByteArray(1'000'000, '7')) == std::nullopt);
}

TEST_CASE("without an address a feed answers later, with nothing") {
    HttpUpdateFeed feed{QUrl()};
    bool answered = false;
    feed.fetchLatestVersion(
        [&](const std::optional<std::string>& found) { answered = !found.has_value(); });
    CHECK_FALSE(answered);
    QCoreApplication::processEvents();
    CHECK(answered);
}
