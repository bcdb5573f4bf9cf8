#include "platform/Calendar.h"

#include <chrono>
#include <ctime>

namespace tavrel {

int weekdayOf(int year, int month, int day)
{
    const std::chrono::year_month_day date{std::chrono::year(year),
                                           std::chrono::month(static_cast<unsigned>(month)),
                                           std::chrono::day(static_cast<unsigned>(day))};
    const std::chrono::weekday weekday{std::chrono::sys_days(date)};
    return static_cast<int>(weekday.c_encoding()) + 1;
}

CalendarDate LocalCalendar::now() const
{
    const std::time_t moment = std::time(nullptr);
    std::tm local{};
    if (localtime_r(&moment, &local) == nullptr)
        return {};
    return {.year = local.tm_year + 1900,
            .month = local.tm_mon + 1,
            .day = local.tm_mday,
            .weekday = local.tm_wday + 1,
            .hour = local.tm_hour,
            .minute = local.tm_min,
            .second = local.tm_sec};
}

}  // namespace tavrel
