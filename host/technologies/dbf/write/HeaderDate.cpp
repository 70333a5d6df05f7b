#include "host/technologies/dbf/write/HeaderDate.h"

#include <chrono>

namespace zu::dbf::write {

calendar::Date Today() noexcept {
    constexpr std::int32_t kUnixEpoch = 2440588;  // 1970-01-01 as a Julian day
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    const auto days = std::chrono::duration_cast<std::chrono::hours>(now).count() / 24;
    return calendar::FromJulianDay(kUnixEpoch + static_cast<std::int32_t>(days));
}

std::array<std::byte, 3> HeaderDate(const DbfVersion& version, const calendar::Date& date) noexcept {
    const bool foxPro = version.visualFoxPro || version.memo == MemoFormat::Fpt;
    return {static_cast<std::byte>(foxPro ? date.year % 100 : date.year - 1900),
            static_cast<std::byte>(date.month), static_cast<std::byte>(date.day)};
}

}  // namespace zu::dbf::write
