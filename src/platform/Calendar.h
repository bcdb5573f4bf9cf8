#pragma once

namespace tavrel {

/// A moment as the wall clock shows it: Gregorian calendar, local time.
struct CalendarDate {
    int year = 1970;
    int month = 1;    // 1 to 12.
    int day = 1;      // 1 to 31.
    int weekday = 1;  // 1 is Sunday, 7 is Saturday.
    int hour = 0;
    int minute = 0;
    int second = 0;

    bool operator==(const CalendarDate&) const = default;
};

/// The day of the week of a date, from 1 for Sunday.
int weekdayOf(int year, int month, int day);

/// Tells the date and the time of day.
class Calendar {
public:
    virtual ~Calendar() = default;
    virtual CalendarDate now() const = 0;
};

/// The machine's clock in the user's time zone.
class LocalCalendar final : public Calendar {
public:
    CalendarDate now() const override;
};

/// A calendar that stands at one moment.
class FixedCalendar final : public Calendar {
public:
    explicit FixedCalendar(CalendarDate date = {}) : date_(date) {}
    CalendarDate now() const override { return date_; }

private:
    CalendarDate date_;
};

}  // namespace tavrel
