#pragma once

#include <windows.h>

#include <string>
#include <string_view>

namespace zu::runner {

class TextOutput;

/// The line on a terminal that shows how far a long job is: what it does, the records done, how many of them
/// a second. It is written over and goes with the job. Where the output is no terminal there is no line.
class ProgressLine {
public:
    explicit ProgressLine(TextOutput& output) : output_(output) {}

    void Show(std::wstring_view job, double done, double total);
    /// The job is over. One that the user has ended leaves a line that says how far it came, on a terminal or
    /// not.
    void Finish(bool endedByUser);

    /// What the line says, e.g. "process: 12345 of 50000 (24 %), 6172 a second".
    /// `rate` 0: not known yet.
    static std::wstring Text(std::wstring_view job, double done, double total, double rate);

private:
    TextOutput& output_;
    std::wstring job_;
    double done_ = 0;
    double first_ = 0;  ///< what was done when the job was told first
    ULONGLONG started_ = 0;
    std::size_t width_ = 0;  ///< of the line on the terminal
};

}  // namespace zu::runner
