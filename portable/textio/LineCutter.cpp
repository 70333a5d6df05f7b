#include "portable/textio/LineCutter.h"

#include <utility>

namespace zu::textio {

template <class Char>
LineCutter<Char>::LineCutter(int preset, std::basic_string<Char> separator, std::basic_string<Char> quote)
    : preset_(preset),
      separator_(std::move(separator)),
      quoting_(!quote.empty()),
      quote_(quote.empty() ? Char() : quote.front()) {}

template <class Char>
auto LineCutter<Char>::Next(std::size_t width) -> View {
    if (preset_ == kDelimited) return NextDelimited();
    if (preset_ == kFixed) return NextFixed(width);
    return {};
}

template <class Char>
auto LineCutter<Char>::NextFixed(std::size_t width) noexcept -> View {
    if (isAtEnd()) return {};
    const View token = line_.substr(position_, width);
    position_ = width > line_.size() - position_ ? line_.size() : position_ + width;
    return token;
}

template <class Char>
std::size_t LineCutter<Char>::PassSeparator() noexcept {
    if (separator_.size() == 1) {
        const std::size_t found = line_.find(separator_.front(), position_);
        if (found != View::npos) {
            position_ = found + 1;
            return found;
        }
    } else if (!separator_.empty()) {
        std::size_t matched = 0;
        for (std::size_t at = position_; at < line_.size(); ++at) {
            matched = line_[at] == separator_[matched] ? matched + 1 : 0;
            if (matched == separator_.size()) {
                position_ = at + 1;
                return position_ - matched;
            }
        }
    }
    position_ = line_.size();
    return position_;
}

template <class Char>
auto LineCutter<Char>::NextDelimited() -> View {
    if (isAtEnd()) return {};
    const bool quoted = quoting_ && line_[position_] == quote_;
    const std::size_t start = position_ + (quoted ? 1 : 0);
    std::size_t end = View::npos;
    if (quoted) {
        position_ = start;
        for (;;) {
            const std::size_t closing = line_.find(quote_, position_);
            if (closing == View::npos) {
                position_ = line_.size();
                end = position_;
                break;
            }
            position_ = closing + 1;
            if (position_ < line_.size() && line_[position_] == quote_) {
                ++position_;
                continue;
            }
            end = closing;
            PassSeparator();
            break;
        }
    } else {
        end = PassSeparator();
    }
    const View token = line_.substr(start, end - start);
    return quoting_ ? WithoutDoubledQuotes(token) : token;
}

template <class Char>
auto LineCutter<Char>::WithoutDoubledQuotes(View token) -> View {
    const Char pair[] = {quote_, quote_};
    std::size_t at = token.find(View(pair, 2));
    if (at == View::npos) return token;
    token_.clear();
    while (at != View::npos) {
        token_ += token.substr(0, at + 1);
        token.remove_prefix(at + 2);
        at = token.find(View(pair, 2));
    }
    token_ += token;
    return token_;
}

template class LineCutter<char>;
template class LineCutter<char16_t>;

}  // namespace zu::textio
