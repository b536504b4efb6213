#pragma once

#include "values/Date.h"

namespace vlm::sys {

class Clock {
public:
    virtual ~Clock() = default;
    virtual Date Today() const = 0;  // no time of day
};

/// The machine's local date.
class SystemClock : public Clock {
public:
    Date Today() const override;
};

class FixedClock : public Clock {
public:
    explicit FixedClock(Date today) : today_(today) {}
    Date Today() const override { return today_; }

private:
    Date today_;
};

}  // namespace vlm::sys
