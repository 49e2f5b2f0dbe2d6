#include "ui/ShowList.h"

#include <QQmlEngine>

#include "display/Application.h"
#include "display/SongInfo.h"

namespace tessivo {

ShowInfo::ShowInfo(const Show& show)
    : id(toQString(show.id.toText())),
      name(toQString(show.name)),
      songCount(static_cast<int>(show.songs.size())),
      micCount(static_cast<int>(show.mics.size())) {}

ShowList* ShowList::create(QQmlEngine* engine, QJSEngine*) {
    return new ShowList(applicationOf(*engine).state);
}

ShowList::ShowList(AppState& state)
    : KeyedListModel("show"),
      state_(state),
      subscription_(state.didChange.subscribe([this](AppState::Field field) {
          if (field == AppState::Field::shows) {
              present();
          }
      })) {
    present();
}

void ShowList::open(const QString& id) {
    if (const auto show = Uuid::fromText(id.toStdString())) {
        state_.setActiveShowId(*show);
    }
}

void ShowList::createShow(const QString& name) {
    state_.createShow(name.toStdString());
}

void ShowList::deleteShow(const QString& id) {
    if (const auto show = Uuid::fromText(id.toStdString())) {
        state_.deleteShow(*show);
    }
}

void ShowList::present() {
    std::vector<ShowInfo> rows;
    rows.reserve(state_.shows().size());
    for (const Show& show : state_.shows()) {
        rows.emplace_back(show);
    }
    setRows(std::move(rows));
}

}  // namespace tessivo
