#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace zu::technologies {

/// One part of the key of an index to be made.
struct IndexField {
    std::string text;  ///< UTF-8: the name of a field, "RecNo", or an expression
    bool descending = false;
};

/// Hears how far a long job is.
class Progress {
public:
    virtual ~Progress() = default;

    /// `done` of `total` records or steps; total 0: not known. Called often, must be quick. Throws an Error
    /// of kind Cancelled to end the job, which then leaves everything as it was.
    virtual void Report(std::uint64_t done, std::uint64_t total) = 0;
};

/// What an examination of a table found.
struct CheckReport {
    /// One sentence a finding, UTF-8: the file, the place, and what is wrong with it. Empty: sound.
    std::vector<std::string> findings;
    /// False when a finding cannot be mended by a repair without losing what the table holds.
    bool repairable = true;
};

}  // namespace zu::technologies
