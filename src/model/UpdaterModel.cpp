#include "model/UpdaterModel.h"

#include "platform/MainQueue.h"

namespace tessivo {

UpdaterModel::UpdaterModel(MainQueue& mainQueue)
    : mainQueue_(mainQueue), self_(std::make_shared<UpdaterModel*>(this)) {}

void UpdaterModel::checkForUpdateInformation() {
    mainQueue_.post([weak = std::weak_ptr<UpdaterModel*>(self_)] {
        const auto self = weak.lock();
        if (self && (*self)->onUpdateAvailable) {
            (*self)->onUpdateAvailable(std::nullopt);
        }
    });
}

}  // namespace tessivo
