#include "platform/qt/DiskFileStore.h"

#include <QtCore/QFileInfo>
#include <QtCore/QSaveFile>

#include "platform/posix/RegularFile.h"

#include <cstdint>

namespace tessivo {

std::optional<std::string> DiskFileStore::read(const FileLocation& location,
                                               std::size_t maximumBytes) {
    std::string bytes;
    if (readRegularFile(location, maximumBytes, bytes) != FileReading::Done) {
        return std::nullopt;
    }
    return bytes;
}

bool DiskFileStore::isLongerThan(const FileLocation& location, std::size_t bytes) {
    const QFileInfo file(QString::fromStdString(location));
    return file.isFile() && static_cast<std::uint64_t>(file.size()) > bytes;
}

bool DiskFileStore::writeAtomically(const FileLocation& location, std::string_view bytes) {
    const QString path = QString::fromStdString(location);
    const QFileInfo present(path);
    if (present.exists() && !present.isFile()) {
        return false;  // QSaveFile would put a file in a device's place
    }
    QSaveFile file(path);
    const auto size = static_cast<qint64>(bytes.size());
    return file.open(QIODevice::WriteOnly) && file.write(bytes.data(), size) == size &&
           file.commit();
}

}  // namespace tessivo
