#include "ui/shows/ShowListViewModel.h"

#include <QQmlEngine>

#include "kit/ScreenContext.h"
#include "kit/ShownText.h"

namespace tessivo {

ShowInfo::ShowInfo(const Show& show)
    : id(toQString(show.id.toText())),
      name(toQString(show.name)),
      songCount(static_cast<int>(show.songs.size())),
      micCount(static_cast<int>(show.mics.size())) {}

ShowListViewModel* ShowListViewModel::create(QQmlEngine* engine, QJSEngine*) {
    return new ShowListViewModel(screenContextOf(*engine).state);
}

ShowListViewModel::ShowListViewModel(AppState& state)
    : KeyedListModel("show"),
      state_(state),
      subscription_(state.didChange.subscribe([this](AppState::Field field) {
          if (field == AppState::Field::shows) {
              present();
          }
      })) {
    present();
}

void ShowListViewModel::open(const QString& id) {
    if (const auto show = Uuid::fromText(id.toStdString())) {
        state_.setActiveShowId(*show);
    }
}

void ShowListViewModel::createShow(const QString& name) {
    state_.createShow(name.toStdString());
}

void ShowListViewModel::deleteShow(const QString& id) {
    if (const auto show = Uuid::fromText(id.toStdString())) {
        state_.deleteShow(*show);
    }
}

void ShowListViewModel::present() {
    std::vector<ShowInfo> rows;
    rows.reserve(state_.shows().size());
    for (const Show& show : state_.shows()) {
        rows.emplace_back(show);
    }
    setRows(std::move(rows));
}

}  // namespace tessivo
