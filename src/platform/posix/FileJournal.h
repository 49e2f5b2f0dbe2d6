#pragma once

#include "platform/Journal.h"

#include <cstddef>
#include <iosfwd>
#include <string>
#include <string_view>
#include <utility>

namespace tessivo {

/// The journal as text files in one folder, one for each local day: 2026-11-25.txt, readable by the
/// user only. The clock may jump: each line goes to the day that it says.
class FileJournal final : public Journal {
public:
    /// Of how many days the files are kept.
    static constexpr std::size_t filesKept = 30;

    /// `folder` is UTF-8, and is made when it is needed. The first failure is told to `trouble`,
    /// which outlives the journal.
    FileJournal(std::string folder, std::ostream& trouble)
        : folder_(std::move(folder)), trouble_(trouble) {}

    void write(Instant at, std::string_view line) override;
    std::string file() const override { return file_; }

private:
    bool append(const std::string& text) const;
    void makeRoom() const;

    const std::string folder_;
    std::ostream& trouble_;
    std::string file_;
    bool hasToldFailure_ = false;
};

}  // namespace tessivo
