#pragma once

#include "platform/simulated/SimulatedMainQueue.h"
#include "platform/simulated/SimulatedNetwork.h"
#include "support/RandomRecords.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace tessivo::test {

/// A whole production in virtual time: up to two admin computers, some stations, a network that
/// fails in every way, and a program that speaks nonsense. What happens follows from the seed
/// alone. A broken invariant ends the running doctest case, with what happened so far.
class Production {
public:
    explicit Production(std::uint64_t seed);
    ~Production();

    /// Lets `count` random things happen, with a calm period now and then and at the end.
    void run(int count);

    /// All that happened, one line each, with what the stations then showed: equal for equal seeds.
    const std::string& history() const { return history_; }

private:
    struct Admin;
    struct Station;
    class NonsenseSpeaker;

    // What one step may do, giving a line for the history.
    std::string act();
    std::string operate();
    std::string changeActiveShow();
    std::string edit();
    std::string wait();
    std::string disturbCable();
    std::string endAdmin();
    std::string toggleStation();
    std::string toggleNonsense();

    void startStation(Station& station);
    void startProgram(Admin& admin);
    void stopProgram(Admin& admin);
    template <typename T>
    T& anyOf(std::vector<std::unique_ptr<T>>& list) {
        return *list[random_.below(list.size())];
    }

    void note(const std::string& line);
    /// What stations may show from now on.
    void rememberWhatIsTold();
    void checkAlways();
    void calmDown();
    void checkCalm();

    RandomRecords random_;
    SimulatedMainQueue time_;
    SimulatedNetwork network_{time_};
    std::vector<SimulatedComputer*> computers_;  ///< of admins and stations
    std::vector<std::unique_ptr<Admin>> admins_;
    std::vector<std::unique_ptr<Station>> stations_;
    SimulatedComputer& stranger_ = network_.addComputer("Inconnu");
    std::unique_ptr<NonsenseSpeaker> nonsense_;
    std::set<std::string> told_;
    std::string history_;
};

}  // namespace tessivo::test
