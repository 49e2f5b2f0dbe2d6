#include "sync/StationJournal.h"

#include "platform/Clock.h"
#include "platform/Journal.h"
#include "state/JournalLine.h"
#include "sync/AdminBroadcaster.h"

#include <utility>

namespace tessivo {

StationJournal::StationJournal(AdminBroadcaster& broadcaster, const Clock& clock, Journal& journal)
    : count_(broadcaster.connectionCount()),
      changes_(broadcaster.didChange.subscribe(
          [this, &broadcaster, &clock, &journal](AdminBroadcaster::Field) {
              const std::size_t before = std::exchange(count_, broadcaster.connectionCount());
              if (count_ != before) {
                  journal.write(clock.now(), journal::lineFor(journal::Stations{before, count_}));
              }
          })) {}

}  // namespace tessivo
