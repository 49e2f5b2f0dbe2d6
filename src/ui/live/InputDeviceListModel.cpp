#include "ui/live/InputDeviceListModel.h"

#include "kit/ShownText.h"

#include <algorithm>

namespace tessivo {

InputDeviceListModel::InputDeviceListModel(QObject* parent) : KeyedListModel("device", parent) {
    present({});
}

int InputDeviceListModel::rowOf(std::optional<AudioDeviceId> id) const {
    const auto found = std::find_if(rows().begin(), rows().end(),
                                    [&](const InputDeviceInfo& row) { return row.id == id; });
    return found == rows().end() ? 0 : static_cast<int>(found - rows().begin());
}

void InputDeviceListModel::present(const std::vector<AudioInputDevice>& devices) {
    std::vector<InputDeviceInfo> rows;
    rows.reserve(devices.size() + 1);
    rows.push_back({std::nullopt, QStringLiteral("Choisir un périphérique…")});
    for (const AudioInputDevice& device : devices) {
        rows.push_back({device.id, toQString(device.name)});
    }
    setRows(std::move(rows));
}

}  // namespace tessivo
