#include "runner/ProgressLine.h"

#include <algorithm>

#include "runner/TextOutput.h"

namespace zu::runner {
namespace {

std::wstring Whole(double number) {
    return std::to_wstring(static_cast<unsigned long long>(std::max(number, 0.0)));
}

}  // namespace

std::wstring ProgressLine::Text(std::wstring_view job, double done, double total, double rate) {
    std::wstring text(job);
    text += L": " + Whole(done);
    if (total > 0) text += L" of " + Whole(total) + L" (" + Whole(100 * done / total) + L" %)";
    if (rate > 0) text += L", " + Whole(rate) + L" a second";
    return text;
}

void ProgressLine::Show(std::wstring_view job, double done, double total) {
    const ULONGLONG now = GetTickCount64();
    // A job that begins anew, or another one inside it, counts from its own beginning.
    if (job != job_ || done < done_) {
        job_ = job;
        started_ = now;
        first_ = done;
    }
    done_ = done;
    if (!output_.isConsole()) return;
    const double seconds = static_cast<double>(now - started_) / 1000;
    std::wstring text = Text(job, done, total, seconds > 0 ? (done - first_) / seconds : 0);
    const std::size_t width = text.size();
    if (width < width_) text.append(width_ - width, L' ');
    output_.Write(L"\r" + text);
    width_ = width;
}

void ProgressLine::Finish(bool endedByUser) {
    if (width_ > 0) output_.Write(L"\r" + std::wstring(width_, L' ') + L"\r");
    if (endedByUser) output_.WriteLine(job_ + L": ended after " + Whole(done_) + L" records");
    job_.clear();
    done_ = 0;
    width_ = 0;
}

}  // namespace zu::runner
