#include "host/expression/Clock.h"

#include <ctime>

#include "portable/calendar/Calendar.h"

namespace zu::expression {

DateValue LocalNow() {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
#ifdef _WIN32
    localtime_s(&local, &now);
#else
    localtime_r(&now, &local);
#endif
    DateValue value;
    value.hasTime = true;
    value.julianDay = calendar::ToJulianDay({local.tm_year + 1900, local.tm_mon + 1, local.tm_mday});
    value.milliseconds = ((local.tm_hour * 60 + local.tm_min) * 60 + local.tm_sec) * 1000;
    return value;
}

}  // namespace zu::expression
