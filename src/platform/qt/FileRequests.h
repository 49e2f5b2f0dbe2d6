#pragma once

#include <QLocalServer>
#include <QString>

#include <functional>

namespace tessivo {

/// Show files that the desktop is asked to open go to the program that already runs for this user,
/// by a socket that only this user can reach. Main thread only.
class FileRequests {
public:
    /// Gives the path of a file to the program that runs, or says false: there is none, or it took
    /// more than a second. Waits meanwhile.
    static bool handOver(const QString& path);

    /// Calls `open` with each path that is handed over from here on, unless another program
    /// receives them already.
    explicit FileRequests(std::function<void(const QString& path)> open);

private:
    void serve(QLocalSocket& caller);

    std::function<void(const QString& path)> open_;
    QLocalServer server_;
};

}  // namespace tessivo
