#pragma once

#include <chrono>

namespace tavrel {

/// A point in time, counted in whole nanoseconds from an arbitrary start.
using TimePoint = std::chrono::time_point<std::chrono::steady_clock, std::chrono::nanoseconds>;

/// The time that the engines measure intervals with. Never goes back.
class Clock {
public:
    virtual ~Clock() = default;
    virtual TimePoint now() const = 0;
};

/// The machine's steady clock.
class SteadyClock final : public Clock {
public:
    TimePoint now() const override { return std::chrono::steady_clock::now(); }
};

/// A clock that stands still until it is moved on; starts at 0.
class SimulatedClock final : public Clock {
public:
    TimePoint now() const override { return now_; }
    void advance(std::chrono::nanoseconds by) { now_ += by; }

private:
    TimePoint now_{};
};

}  // namespace tavrel
