#pragma once

#include <algorithm>
#include <cstddef>
#include <random>
#include <string>
#include <string_view>

namespace zu::dbf {

/// Contents that fields of files have, canonical ones and all that writers and accidents leave there. The
/// same ones each time.
class FieldContents {
public:
    struct Kind {
        char type;
        int width;
        int decimals;
    };

    /// As many bytes as the field is wide.
    std::string Of(const Kind& kind) {
        const auto width = static_cast<std::size_t>(kind.width);
        std::string content;
        switch (kind.type) {
            case 'C':
                content = Characters(Below(width + 1), {"ab\"\", ;\xE9\x81\x00x'", 12});
                return Padded(content, width, Below(6) == 0 ? '\0' : ' ');
            case 'N':
                return Number(width, static_cast<std::size_t>(kind.decimals));
            case 'D':
                switch (Below(4)) {
                    case 0:
                        return Characters(8, "0123 /");
                    case 1:
                        return std::string(8, ' ');
                    default:
                        return Digits(Below(3) == 0 ? Below(300) : 1990 + Below(40), 4) +
                               Digits(Below(15), 2) + Digits(Below(34), 2);
                }
            default:
                return Characters(1, {"TtYyFfNn? \x00z", 12});
        }
    }

private:
    std::size_t Below(std::size_t limit) { return numbers_() % limit; }
    std::string Characters(std::size_t count, std::string_view choice) {
        std::string text;
        while (text.size() < count)
            text += choice[Below(choice.size())];
        return text;
    }
    static std::string Padded(std::string text, std::size_t width, char padding) {
        text.resize(width, padding);
        return text;
    }
    static std::string Digits(std::size_t number, std::size_t count) {
        std::string digits = std::to_string(number);
        return std::string(count - std::min(count, digits.size()), '0') + digits;
    }
    std::string Number(std::size_t width, std::size_t decimals) {
        switch (Below(5)) {
            case 0:
                return Characters(width, {"  --..,0019*+eE\x00", 16});
            case 1:
                return std::string(width, Below(2) == 0 ? '*' : ' ');
            case 2:  // the point somewhere else
                return Right(Characters(Below(width + 1), "0123456789.-"), width);
            default: {
                std::string text = Below(3) == 0 ? "-" : "";
                const std::size_t room =
                    width - std::min(width, decimals + (decimals != 0 ? 1 : 0) + text.size());
                text += Below(4) == 0 ? "0" : Characters(room == 0 ? 0 : 1 + Below(room), "0123456789");
                if (decimals != 0) text += "." + Characters(decimals, Below(2) == 0 ? "0" : "000123456789");
                return Right(text, width);
            }
        }
    }
    static std::string Right(const std::string& text, std::size_t width) {
        return text.size() > width ? text.substr(text.size() - width)
                                   : std::string(width - text.size(), ' ') + text;
    }

    std::mt19937 numbers_{7};
};

}  // namespace zu::dbf
