#pragma once

#include <QString>
#include <QtQml/qqmlregistration.h>

#include "kit/KeyedListModel.h"
#include "platform/AudioInput.h"

#include <optional>
#include <vector>

namespace tessivo {

/// One entry of the device chooser: a device, or the first entry, which is none.
class InputDeviceInfo {
    Q_GADGET
    QML_VALUE_TYPE(inputDeviceInfo)
    Q_PROPERTY(QString name MEMBER name)

public:
    std::optional<AudioDeviceId> id;
    QString name;

    std::optional<AudioDeviceId> key() const { return id; }
    friend bool operator==(const InputDeviceInfo&, const InputDeviceInfo&) = default;
};

/// The audio inputs offered to the operator, after an entry that asks to choose one; the role is
/// `device`.
class InputDeviceListModel : public KeyedListModel<InputDeviceInfo> {
    Q_OBJECT
    QML_ANONYMOUS

public:
    explicit InputDeviceListModel(QObject* parent = nullptr);

    /// The row of a device; 0, the entry that asks to choose, when it isn't in the list.
    int rowOf(std::optional<AudioDeviceId> id) const;

    void present(const std::vector<AudioInputDevice>& devices);
};

}  // namespace tessivo
