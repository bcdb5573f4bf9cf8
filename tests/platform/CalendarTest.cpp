#include "platform/Calendar.h"

#include <array>
#include <ctime>
#include <gtest/gtest.h>

namespace tavrel {
namespace {

TEST(Calendar, KnowsTheDaysOfTheWeek)
{
    EXPECT_EQ(weekdayOf(1970, 1, 1), 5);
    EXPECT_EQ(weekdayOf(2026, 11, 1), 1);
    EXPECT_EQ(weekdayOf(2026, 11, 7), 7);
    EXPECT_EQ(weekdayOf(2024, 2, 29), 5);
}

TEST(Calendar, AnyNumbersHaveSomeDay)
{
    for (const auto& [year, month, day] : {std::array{0, 0, 0}, std::array{9999, 99, 99},
                                           std::array{-1, -1, -1}, std::array{2023, 2, 31}}) {
        const int weekday = weekdayOf(year, month, day);
        EXPECT_GE(weekday, 1);
        EXPECT_LE(weekday, 7);
    }
}

TEST(Calendar, MissingPartsHaveTheirDefaults)
{
    EXPECT_EQ(FixedCalendar().now(), CalendarDate{});
    EXPECT_EQ(CalendarDate{}.year, 1970);
    EXPECT_EQ(CalendarDate{}.month, 1);
    EXPECT_EQ(CalendarDate{}.weekday, 1);
}

TEST(Calendar, TellsTheLocalTimeOfTheMachine)
{
    const std::time_t before = std::time(nullptr);
    const CalendarDate date = LocalCalendar().now();
    const std::time_t after = std::time(nullptr);
    std::tm local{};
    local.tm_year = date.year - 1900;
    local.tm_mon = date.month - 1;
    local.tm_mday = date.day;
    local.tm_hour = date.hour;
    local.tm_min = date.minute;
    local.tm_sec = date.second;
    local.tm_isdst = -1;
    const std::time_t told = std::mktime(&local);
    EXPECT_GE(told, before - 3600);  // An hour that the clocks run through twice.
    EXPECT_LE(told, after + 3600);
    EXPECT_EQ(date.weekday, weekdayOf(date.year, date.month, date.day));
}

}  // namespace
}  // namespace tavrel
