#include "portable/textio/LineCutter.h"

#include <type_traits>
#include <utility>

#include "portable/text/ByteWords.h"

namespace zu::textio {

namespace {

template <class Char>
std::size_t FindIn(std::basic_string_view<Char> line, std::size_t from, Char wanted) noexcept {
    if constexpr (std::is_same_v<Char, char>) {
        const char* const end = line.data() + line.size();
        const char* const found = text::FindByte(line.data() + from, end, wanted);
        return found == end ? std::string_view::npos : static_cast<std::size_t>(found - line.data());
    } else {
        return line.find(wanted, from);
    }
}

}  // namespace

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
        const std::size_t found = FindIn<Char>(line_, position_, separator_.front());
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
    if constexpr (std::is_same_v<Char, char>) {
        if (!quoted && quoting_ && separator_.size() == 1) {
            // Most tokens: no quote before the separator.
            const char* const end = line_.data() + line_.size();
            const char* const found = text::FindEither(line_.data() + start, end, separator_.front(), quote_);
            if (found == end || *found == separator_.front()) {
                const auto at = static_cast<std::size_t>(found - line_.data());
                position_ = found == end ? at : at + 1;
                return line_.substr(start, at - start);
            }
        }
    }
    if (!quoted) {
        const View token = line_.substr(start, PassSeparator() - start);
        const bool plain = !quoting_ || FindIn<Char>(token, 0, quote_) == View::npos;
        return plain ? token : WithoutDoubledQuotes(token);
    }
    position_ = start;
    bool doubled = false;
    for (;;) {
        const std::size_t closing = FindIn<Char>(line_, position_, quote_);
        if (closing == View::npos) {
            position_ = line_.size();
            const View token = line_.substr(start);
            return doubled ? WithoutDoubledQuotes(token) : token;
        }
        position_ = closing + 1;
        if (position_ < line_.size() && line_[position_] == quote_) {
            ++position_;
            doubled = true;
            continue;
        }
        PassSeparator();
        const View token = line_.substr(start, closing - start);
        return doubled ? WithoutDoubledQuotes(token) : token;
    }
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
